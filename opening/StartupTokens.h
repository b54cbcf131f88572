#pragma once

#include <QString>
#include <QVariantMap>

/// What a launcher gives a program so that its window may come to the front: on Wayland a token, on
/// X11 an identifier. Each is good once.
struct StartupTokens {
    QString activationToken;
    QString startupId;

    /// Those of this process.
    [[nodiscard]] static StartupTokens look();
    [[nodiscard]] static StartupTokens fromPlatformData(const QVariantMap& data);
    void addTo(QVariantMap& platformData) const;
};
