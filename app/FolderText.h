#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A longer file is not read: no path is that long.
inline constexpr qsizetype maximumFolderText = 64 * 1024;

/// The folder that the content of a folder file names: all of it, white space and a byte-order mark
/// included. Nothing where it is empty, too long, not UTF-8 to its last byte or holds a null
/// character. Whether the folder exists is not looked at. Pure.
[[nodiscard]] std::optional<QString> folderInText(const QByteArray& content);
