#include "opening/StartupTokens.h"

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* idVariable = "DESKTOP_STARTUP_ID";
const QString tokenKey = QStringLiteral("activation-token");
const QString idKey = QStringLiteral("desktop-startup-id");

} // namespace

StartupTokens StartupTokens::look() {
    return {qEnvironmentVariable(tokenVariable), qEnvironmentVariable(idVariable)};
}

StartupTokens StartupTokens::fromPlatformData(const QVariantMap& data) {
    return {data.value(tokenKey).toString(), data.value(idKey).toString()};
}

void StartupTokens::addTo(QVariantMap& platformData) const {
    if (!activationToken.isEmpty())
        platformData.insert(tokenKey, activationToken);
    if (!startupId.isEmpty())
        platformData.insert(idKey, startupId);
}
