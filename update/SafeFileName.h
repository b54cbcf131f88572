#pragma once

#include <QByteArray>
#include <QString>

class QUrl;

/// The name a server suggests for what it sends: the one of its Content-Disposition header, else
/// the last part of the address. Not yet safe. Pure.
[[nodiscard]] QString suggestedFileName(const QByteArray& contentDisposition, const QUrl& url);

/// Makes a file name of a name that came from outside: its last component without leading dots,
/// control and formatting characters, at most 255 bytes of UTF-8 with its suffix kept where that
/// fits and no character cut, and a name of our own where nothing is left. Pure.
[[nodiscard]] QString safeFileName(const QString& suggested);

/// The name with a number before its suffix, "setup (1).deb", no longer than a safe one. Pure.
[[nodiscard]] QString numberedFileName(const QString& name, int number);
