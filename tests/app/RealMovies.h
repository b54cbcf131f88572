#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// What ffprobe says about a movie.
struct MovieFacts final {
    QString videoCodec;
    QString size; ///< WIDTHxHEIGHT
    QString pixelFormat;
    int level = 0;
    double seconds = 0.0; ///< of the video stream
    QString audioCodec;   ///< empty without sound
    QByteArray audioHash; ///< of the sound's packets
};

/// Makes movies with the installed ffmpeg and looks into finished ones. Any thread.
class RealMovies final {
public:
    RealMovies();

    /// Empty where ffmpeg, ffprobe and an HEVC encoder are all there; else what is missing.
    [[nodiscard]] const QString& missing() const { return missing_; }
    [[nodiscard]] const QString& ffmpeg() const { return ffmpeg_; }

    struct Wish {
        QString source = QStringLiteral("testsrc2=size=640x480:rate=25:duration=2");
        QString audio = QStringLiteral("aac");
        QStringList more = {}; ///< further options for the output
    };
    /// False where the movie could not be made.
    [[nodiscard]] bool make(const QString& path, const Wish& wish) const;
    /// The same movie this many times in a row; false where it could not be made.
    [[nodiscard]] bool repeat(const QString& movie, int times, const QString& path) const;
    /// Nothing where ffprobe cannot read it.
    [[nodiscard]] std::optional<MovieFacts> factsOf(const QString& path) const;

private:
    [[nodiscard]] static std::optional<QByteArray> run(const QString& program,
                                                       const QStringList& arguments);

    QString ffmpeg_;
    QString ffprobe_;
    QString missing_;
};
