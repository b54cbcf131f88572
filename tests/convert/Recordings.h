#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <stdexcept>

/// What ffmpeg 5.1 wrote while it converted (recordings/README.md), as it came.
namespace Recordings {

inline QByteArray contents(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("a recording is missing: " + path.toStdString());
    return file.readAll();
}

inline QByteArray bytes(const char* name) {
    return contents(QStringLiteral(REELSHIFT_RECORDINGS "/%1.txt").arg(QLatin1StringView(name)));
}

/// A report that the tests of the probe have too.
inline QByteArray reportBytes(const char* name) {
    return contents(QStringLiteral(REELSHIFT_REPORTS "/%1.txt").arg(QLatin1StringView(name)));
}

} // namespace Recordings
