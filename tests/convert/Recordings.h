#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QString>

#include <array>
#include <stdexcept>

/// What ffmpeg wrote while it converted (recordings/README.md), as it came.
namespace Recordings {

/// The releases that were recorded, the folders of the recordings.
inline constexpr std::array releases{"5.1.9", "7.1.5", "9.0.2"};

inline QByteArray contents(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("a recording is missing: " + path.toStdString());
    return file.readAll();
}

/// By a name like "5.1.9/finished".
inline QByteArray bytes(const QByteArray& name) {
    return contents(QStringLiteral(REELSHIFT_RECORDINGS "/%1.txt").arg(QLatin1StringView(name)));
}

/// The status with which it ended.
inline int status(const QByteArray& release, const QByteArray& name) {
    const QString path =
        QStringLiteral(REELSHIFT_RECORDINGS "/%1/statuses").arg(QLatin1StringView(release));
    for (const QByteArray& line : contents(path).split('\n')) {
        const QByteArrayList words = line.split(' ');
        if (words.size() == 2 && words[0] == name)
            return words[1].toInt();
    }
    throw std::runtime_error("no status of " + name.toStdString());
}

/// A report that the tests of the probe have too.
inline QByteArray reportBytes(const char* name) {
    return contents(QStringLiteral(REELSHIFT_REPORTS "/%1.txt").arg(QLatin1StringView(name)));
}

} // namespace Recordings
