#include "update/VersionComparison.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

namespace {

constexpr std::size_t partCount = 4;
using Version = std::array<int, partCount>;

int readInteger(QStringView part) {
    part = part.trimmed();
    const bool negative = part.startsWith(u'-');
    if (negative || part.startsWith(u'+'))
        part = part.sliced(1);
    const qint64 limit = negative ? -qint64{std::numeric_limits<int>::min()}
                                  : qint64{std::numeric_limits<int>::max()};
    qint64 value = 0;
    for (const QChar c : part) {
        if (c < u'0' || c > u'9')
            break;
        value = std::min(value * 10 + (c.unicode() - u'0'), limit);
    }
    return static_cast<int>(negative ? -value : value);
}

Version readVersion(const QString& text) {
    const QStringList parts = text.split(u'.');
    if (parts.size() < qsizetype{partCount})
        throw std::out_of_range("the version \"" + text.left(64).toStdString() +
                                "\" has fewer than four parts");
    Version version{};
    for (std::size_t i = 0; i < partCount; ++i)
        version[i] = readInteger(parts[static_cast<qsizetype>(i)]);
    return version;
}

} // namespace

bool isUpdateAvailable(const QString& local, const QString& server) {
    const Version l = readVersion(local);
    const Version s = readVersion(server);
    if (l[0] < s[0])
        return true;
    for (std::size_t i = 1; i < partCount; ++i) {
        if (l[i - 1] == s[i - 1] && l[i] < s[i])
            return true;
    }
    return false;
}
