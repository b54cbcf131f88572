#pragma once

#include "update/HostLookup.h"
#include "update/SystemVersion.h"

#include <QString>

#include <chrono>
#include <functional>
#include <optional>

class QUrl;

/// What the update check works with; a test brings its own.
struct UpdateSettings {
    QString baseUrl; ///< of the update server
    QString version; ///< the program's own, four parts
    QString downloadsFolder = standardDownloadsFolder();
    /// Opens a file with the system's handler; false when there is none.
    std::function<bool(const QUrl& file)> openFile = openWithSystem;
    HostResolver resolveHost = resolveWithSystem;
    std::function<std::optional<SystemVersion>()> systemVersion = currentSystemVersion;
    /// A server that says nothing for so long has failed.
    std::chrono::milliseconds silenceLimit = std::chrono::seconds(30);
    /// The whole server document must be there by then.
    std::chrono::milliseconds documentLimit = std::chrono::seconds(60);

    [[nodiscard]] static QString standardDownloadsFolder();
    [[nodiscard]] static bool openWithSystem(const QUrl& file);
};
