#include "convert/TimeLeftText.h"

#include "platform/LocalizedStrings.h"

#include <QStringList>

#include <cmath>

namespace {

constexpr int minute = 60;
constexpr int hour = 60 * minute;
constexpr double longest = 1000.0 * hour;

void addLine(QStringList& lines, const char* key, std::optional<double> seconds) {
    const QString duration = seconds ? durationText(*seconds) : QString();
    if (!duration.isEmpty())
        lines += getLocalString(key).arg(duration);
}

} // namespace

QString durationText(double seconds) {
    if (!(seconds >= 0 && seconds < longest))
        return {};
    const int whole = static_cast<int>(std::ceil(seconds));
    if (whole < minute)
        return getLocalString("IDS_TXT_LEFT_SECONDS").arg(whole);
    const int minutes = (whole + minute / 2) / minute;
    if (minutes < hour / minute)
        return getLocalString("IDS_TXT_LEFT_MINUTES").arg(minutes);
    return getLocalString("IDS_TXT_LEFT_HOURS").arg(minutes * minute / hour).arg(minutes % minute);
}

QString timeLeftOfRunText(const TimeLeft& time, std::optional<double> waitingLength) {
    QStringList lines;
    addLine(lines, "IDS_TXT_LEFT_RUN", time.ofRun(waitingLength));
    return lines.join(QString());
}

QString timeLeftText(const TimeLeft& time, std::optional<double> waitingLength) {
    QStringList lines;
    addLine(lines, "IDS_TXT_LEFT_MOVIE", time.ofMovie());
    addLine(lines, "IDS_TXT_LEFT_RUN", time.ofRun(waitingLength));
    return lines.join(u'\n');
}
