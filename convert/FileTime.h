#pragma once

#include <QString>

#include <optional>

#include <time.h>

// When a file's content was last changed, as exactly as its volume keeps it. Any thread; both may
// hang on a dead share.

/// Nothing where it cannot be read.
[[nodiscard]] std::optional<timespec> modificationTime(const QString& path);

/// Behind a symbolic link it is the file's. False, with the reason in errno, where it cannot be
/// set.
[[nodiscard]] bool setModificationTime(const QString& path, timespec time);
