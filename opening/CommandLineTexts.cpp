#include "opening/CommandLineTexts.h"

#include "platform/LocalizedStrings.h"

namespace {

const QString program = QStringLiteral("reelshift");

QString option(const char* names, const char* id) {
    constexpr int column = 17;
    return QStringLiteral("  ") + QString::fromLatin1(names).leftJustified(column) +
           getLocalString(id) + u'\n';
}

} // namespace

QString helpText() {
    return getLocalString("IDS_CMD_USAGE").arg(QStringLiteral("reelshift [MOVIE...]")) + u'\n' +
           getLocalString("IDS_TXT_APP_DESCRIPTION") + QStringLiteral("\n\n") +
           option("MOVIE", "IDS_CMD_MOVIE") + option("-h, --help", "IDS_CMD_HELP") +
           option("-v, --version", "IDS_CMD_VERSION");
}

QString versionText(const QString& version) {
    return program + u' ' + version + u'\n';
}

QString mistakeText(const QString& mistake) {
    return program + QStringLiteral(": ") +
           (mistake.startsWith(u'-') ? getLocalString("IDS_CMD_UNKNOWN_OPTION").arg(mistake)
                                     : mistake) +
           u'\n' + getLocalString("IDS_CMD_SEE_HELP").arg(QStringLiteral("reelshift --help")) +
           u'\n';
}

QString noDisplayText() {
    return program + QStringLiteral(": ") + getLocalString("IDS_CMD_NO_DISPLAY") + u'\n';
}
