#pragma once

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
    /// Opens a file or a folder with the system's handler; false when there is none.
    std::function<bool(const QUrl& file)> openFile = openWithSystem;
    std::function<std::optional<SystemVersion>()> systemVersion = currentSystemVersion;
    /// A server that says nothing for so long has failed.
    std::chrono::seconds silenceLimit{30};
    /// The whole server document must be there by then.
    std::chrono::milliseconds documentLimit = std::chrono::seconds(60);
    /// A file with the authorities whose servers are trusted; empty for the system's.
    QString certificates;

    [[nodiscard]] static QString standardDownloadsFolder();
    [[nodiscard]] static bool openWithSystem(const QUrl& file);
};
