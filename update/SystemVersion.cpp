#include "update/SystemVersion.h"

#include <QStringList>
#include <QSysInfo>

std::optional<SystemVersion> parseSystemVersion(const QString& release) {
    const QStringList parts = release.split(u'.');
    if (parts.size() < 2)
        return std::nullopt;
    bool majorIsNumber = false;
    bool minorIsNumber = false;
    const SystemVersion version{parts[0].toInt(&majorIsNumber), parts[1].toInt(&minorIsNumber)};
    if (!majorIsNumber || !minorIsNumber)
        return std::nullopt;
    return version;
}

std::optional<SystemVersion> currentSystemVersion() {
    return parseSystemVersion(QSysInfo::productVersion());
}
