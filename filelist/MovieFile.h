#pragma once

#include "platform/desktop/VolumeInfo.h"

#include <QString>
#include <QtGlobal>

#include <ctime>
#include <optional>

/// By what a file is known to be the same as before, with the same content.
struct FileIdentity final {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;        ///< bytes
    qint64 seconds = 0;     ///< of the last change, since 1970
    qint64 nanoseconds = 0; ///< of that second

    [[nodiscard]] bool operator==(const FileIdentity&) const = default;
};

/// A file that is to be added, and what it lies on.
struct MovieFile final {
    std::optional<FileIdentity> identity; ///< nothing where there is no such file
    VolumeFacts volume;
};

/// Blocks; on a dead network share as long as the kernel does. Where the file is the same as at an
/// earlier look its volume is not asked for again. Any thread.
[[nodiscard]] MovieFile lookAtMovieFile(const QString& path, VolumeInfo& volumes,
                                        const std::optional<MovieFile>& before = std::nullopt);
