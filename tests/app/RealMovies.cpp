#include "app/RealMovies.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr int longestRun = 60000; // milliseconds

QStringList words(const char* text) {
    return QString::fromLatin1(text).split(u' ');
}

} // namespace

RealMovies::RealMovies()
    : ffmpeg_(QStandardPaths::findExecutable(QStringLiteral("ffmpeg"))),
      ffprobe_(QStandardPaths::findExecutable(QStringLiteral("ffprobe"))) {
    if (ffmpeg_.isEmpty() || ffprobe_.isEmpty()) {
        missing_ = QStringLiteral("ffmpeg or ffprobe is not installed");
        return;
    }
    const auto encoders = run(ffmpeg_, words("-v error -hide_banner -encoders"));
    if (!encoders || !encoders->contains("libx265"))
        missing_ = QStringLiteral("this ffmpeg cannot make HEVC movies");
}

bool RealMovies::make(const QString& path, const Wish& wish) const {
    const QString length = wish.source.section(QStringLiteral("duration="), -1);
    QStringList arguments = words("-v error -y -f lavfi -i") << wish.source;
    if (!wish.audio.isEmpty())
        arguments << words("-f lavfi -i")
                  << QStringLiteral("sine=sample_rate=48000:duration=") + length
                  << QStringLiteral("-c:a") << wish.audio;
    arguments << words("-c:v libx265 -preset ultrafast -x265-params log-level=error -tag:v hvc1")
              << words("-pix_fmt yuv420p") << wish.more << path;
    const bool isMade = run(ffmpeg_, arguments).has_value();
    if (!isMade) // half a movie is none for the next test either
        QFile::remove(path);
    return isMade;
}

bool RealMovies::repeat(const QString& movie, int times, const QString& path) const {
    return run(ffmpeg_, words("-v error -y -stream_loop")
                            << QString::number(times - 1) << QStringLiteral("-i") << movie
                            << words("-c copy") << path)
        .has_value();
}

std::optional<MovieFacts> RealMovies::factsOf(const QString& path) const {
    const auto report =
        run(ffprobe_, words("-v error -show_streams -show_format -of json") << path);
    if (!report)
        return std::nullopt;
    const QJsonObject root = QJsonDocument::fromJson(*report).object();
    MovieFacts facts;
    for (const auto& each : root[QStringLiteral("streams")].toArray()) {
        const QJsonObject stream = each.toObject();
        const QString kind = stream[QStringLiteral("codec_type")].toString();
        const QString codec = stream[QStringLiteral("codec_name")].toString();
        if (kind == QStringLiteral("video") && facts.videoCodec.isEmpty()) {
            facts.videoCodec = codec;
            facts.size = QString::number(stream[QStringLiteral("width")].toInt()) + u'x' +
                         QString::number(stream[QStringLiteral("height")].toInt());
            facts.pixelFormat = stream[QStringLiteral("pix_fmt")].toString();
            facts.level = stream[QStringLiteral("level")].toInt();
            facts.seconds = stream[QStringLiteral("duration")].toString().toDouble();
        } else if (kind == QStringLiteral("audio") && facts.audioCodec.isEmpty()) {
            facts.audioCodec = codec;
        }
    }
    if (!facts.audioCodec.isEmpty()) {
        facts.audioHash =
            run(ffmpeg_, words("-v error -i") << path << words("-map 0:a:0 -c copy -f hash -"))
                .value_or(QByteArray());
    }
    return facts;
}

std::optional<QByteArray> RealMovies::run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(longestRun) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    return process.readAllStandardOutput();
}
