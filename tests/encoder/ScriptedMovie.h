#pragma once

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QString>
#include <QStringList>

#include <utility>

/// Writes a movie that tells the fake encoder how to behave (README.md of this folder has the
/// commands). Any thread; owned by the test that needs the movie.
///
///     const QString path = ScriptedMovie(folder, QStringLiteral("a.mp4"))
///                              .probe(QStringLiteral("hevc"), QStringLiteral("1920x1080"))
///                              .encode({"create", "header", "progress 5", "wait-file go",
///                                       "write 4096", "summary 10"})
///                              .write();
class ScriptedMovie final {
public:
    ScriptedMovie(const QString& folder, const QString& name)
        : path_(QDir(folder).filePath(name)) {}

    [[nodiscard]] const QString& path() const { return path_; }

    /// What the report says; "none" leaves a stream out. Without a call: HEVC, 640x480, 10 s, AAC.
    ScriptedMovie& probe(const QString& video, const QString& size = QStringLiteral("640x480"),
                         const QString& duration = QStringLiteral("00:00:10.00"),
                         const QString& audio = QStringLiteral("aac")) {
        probe_ = QStringLiteral("report video=\"") + video + QStringLiteral("\" size=\"") + size +
                 QStringLiteral("\" duration=\"") + duration + QStringLiteral("\" audio=\"") +
                 audio + QStringLiteral("\"\n");
        return *this;
    }

    /// The steps of a probe in full, e.g. one that never ends.
    ScriptedMovie& probeSteps(std::initializer_list<const char*> steps) {
        probe_ = joined(steps);
        return *this;
    }

    /// The steps of an encode; without a call: three positions, 4096 bytes and a full summary.
    ScriptedMovie& encode(std::initializer_list<const char*> steps) {
        encode_ = QStringLiteral("[encode]\n") + joined(steps);
        return *this;
    }
    ScriptedMovie& encode(const QStringList& steps) {
        encode_ = QStringLiteral("[encode]\n") + steps.join(QLatin1Char('\n')) + QLatin1Char('\n');
        return *this;
    }

    /// The steps of the `start`th encoder on this movie (1 is the first); the others take encode().
    ScriptedMovie& encodeAt(int start, std::initializer_list<const char*> steps) {
        numbered_ += QStringLiteral("[encode ") + QString::number(start) + QStringLiteral("]\n") +
                     joined(steps);
        return *this;
    }

    /// Writes the movie, over an older one at once as a whole, and gives its path ("" on failure).
    QString write() const {
        QString text = QStringLiteral("#scripted movie\n");
        if (!probe_.isEmpty())
            text += QStringLiteral("[probe]\n") + probe_;
        text += encode_ + numbered_;
        QSaveFile file(path_);
        const QByteArray bytes = text.toUtf8();
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            return {};
        return path_;
    }

private:
    static QString joined(std::initializer_list<const char*> steps) {
        QString text;
        for (const char* step : steps)
            text += QString::fromUtf8(step) + QLatin1Char('\n');
        return text;
    }

    QString path_;
    QString probe_;
    QString encode_;
    QString numbered_;
};

/// One start of the fake encoder, as its log has it.
struct EncoderStart {
    qint64 pid = 0;
    QStringList arguments;
};

/// Links the fake encoder into a resource folder as "ffmpeg" and gives the log of every start
/// through that link, the ones without arguments too. "" where it cannot.
[[nodiscard]] inline QString installFakeEncoder(const QString& resourceFolder) {
    const QString link = QDir(resourceFolder).filePath(QStringLiteral("ffmpeg"));
    const QString log = link + QStringLiteral(".log");
    QFile::remove(link);
    QFile file(log);
    if (!QDir().mkpath(resourceFolder) ||
        !QFile::link(QStringLiteral(REELSHIFT_FAKE_ENCODER), link) ||
        !file.open(QIODevice::WriteOnly))
        return {};
    return log;
}

/// Makes the encoder of that folder behave as a release, e.g. "7.1" or "7.1 without-x264".
[[nodiscard]] inline bool setEncoderRelease(const QString& folder, const QString& release) {
    QFile file(QDir(folder).filePath(QStringLiteral("ffmpeg.release")));
    return file.open(QIODevice::WriteOnly) && file.write(release.toUtf8()) >= 0;
}

[[nodiscard]] inline QList<EncoderStart> readEncoderStarts(const QString& log) {
    QList<EncoderStart> starts;
    QFile file(log);
    if (!file.open(QIODevice::ReadOnly))
        return starts;
    const QStringList lines =
        QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        QStringList fields = line.split(QLatin1Char('\t'));
        EncoderStart start;
        start.pid = fields.takeFirst().toLongLong();
        start.arguments = fields;
        starts.append(std::move(start));
    }
    return starts;
}
