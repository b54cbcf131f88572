#include "TestProgram.h"
#include "media/ProbeReport.h"
#include "media/ReportBlanking.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

/// The reading of reports on what the installed ffmpeg prints about movies made for it here.
class TestRealProbe final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void probe_data();
    void probe();
    void conversion_data();
    void conversion();

private:
    QByteArray run(const QStringList& arguments);
    QByteArray launch(const QStringList& arguments);
    QByteArray saidBy(const QString& program, const QStringList& arguments);
    QString movieAs(const QString& name);

    QString ffmpeg_;
    QTemporaryDir folder_;
    int status_ = -1;
};

namespace {

const QByteArray freeText = R"(;FFMETADATA1
title=Holiday Video
artist=trial and error
comment=Stream #0:0: Video: h264, 720x576\
  Duration: 99:99:99.99, Audio: mp3, x\
Output #0, mp4, to 'y':\
time=00:00:00.00 LPSNR= Invalid
[CHAPTER]
TIMEBASE=1/1000
START=0
END=400
title=Audio, Duration: 00:00
)";

void addNames() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("clip");
    QTest::newRow("in Videos") << QStringLiteral("Videos/Holiday Video, Audio, Duration: 1");
    QTest::newRow("markers") << QStringLiteral("time=1 LPSNR= error Invalid");
    QTest::newRow("quote and colon") << QStringLiteral("it's': Video, \"1\"");
    QTest::newRow("line ends") << QStringLiteral("new\nframe=1 error\rVideo, x");
    QTest::newRow("header inside") << QStringLiteral("a':\n  Metadata:\n  Duration: b");
    QTest::newRow("control characters") << QStringLiteral("\x01\x1b\tVideo,\x7f");
    QTest::newRow("other letters") << QStringLiteral("été 日本 Video, \U0001F3AC");
}

} // namespace

void TestRealProbe::initTestCase() {
    ffmpeg_ = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg_.isEmpty())
        QSKIP("ffmpeg is not installed");
    QVERIFY(folder_.isValid());
    QFile meta(folder_.filePath(QStringLiteral("free-text")));
    QVERIFY(meta.open(QIODevice::WriteOnly));
    meta.write(freeText);
    meta.close();
    const QString list = QStringLiteral(
        "-v error -f lavfi -i testsrc2=size=640x480:rate=25:duration=0.4 "
        "-f lavfi -i sine=duration=0.4 -i FREE -map 0 -map 1 -map_metadata 2 -map_chapters 2 "
        "-c:v libx265 -preset ultrafast -x265-params log-level=error -c:a aac -y MOVIE");
    QStringList arguments = list.split(u' ');
    arguments.replaceInStrings(QStringLiteral("FREE"), meta.fileName());
    arguments.replaceInStrings(QStringLiteral("MOVIE"),
                               folder_.filePath(QStringLiteral("movie.mp4")));
    const QByteArray messages = run(arguments);
    if (messages.contains("Unknown encoder"))
        QSKIP("this ffmpeg cannot make HEVC movies");
    QVERIFY2(status_ == 0, messages.constData());
    // Matroska holds any text at all for a stream's language.
    const QStringList matroska{QStringLiteral("-v"),
                               QStringLiteral("error"),
                               QStringLiteral("-i"),
                               folder_.filePath(QStringLiteral("movie.mp4")),
                               QStringLiteral("-map"),
                               QStringLiteral("0:v"),
                               QStringLiteral("-map"),
                               QStringLiteral("0:a"),
                               QStringLiteral("-c"),
                               QStringLiteral("copy"),
                               QStringLiteral("-metadata:s:v:0"),
                               QStringLiteral("language=x): Audio: mp3, error"),
                               QStringLiteral("-metadata:s:a:0"),
                               QStringLiteral("language=Video, 1x1"),
                               folder_.filePath(QStringLiteral("movie.mkv"))};
    const QByteArray mkvMessages = run(matroska);
    QVERIFY2(status_ == 0, mkvMessages.constData());
}

void TestRealProbe::probe_data() {
    addNames();
}

void TestRealProbe::probe() {
    QFETCH(QString, name);
    for (const char* suffix : {".mp4", ".mkv"}) {
        const QString movie = movieAs(name + QLatin1StringView(suffix));
        const QString report = QString::fromUtf8(run({QStringLiteral("-i"), movie}));
        QVERIFY(report.contains(QLatin1StringView("Holiday Video")));

        const QString text = blankReport(report, {movie});

        QCOMPARE(text.size(), report.size());
        QVERIFY(!text.contains(QLatin1StringView("Holiday")));
        QVERIFY(!text.contains(QLatin1StringView("error")));
        const QString duration = probedDuration(text).value_or(QString());
        QVERIFY2(duration.startsWith(QLatin1StringView("00:00:00.4")), qPrintable(duration));
        QVERIFY(probedAudio(text)->isWanted);
        QVERIFY(probedVideo(text)->isWanted);
        QCOMPARE(pictureSize(text), (PictureSize{640, 480}));
    }
}

void TestRealProbe::conversion_data() {
    addNames();
}

void TestRealProbe::conversion() {
    QFETCH(QString, name);
    const QString movie = movieAs(name + QStringLiteral(".mkv"));
    const QString output = movie + QStringLiteral("_HQ_error_Invalid.mp4");
    const QStringList arguments{QStringLiteral("-psnr"),
                                QStringLiteral("-i"),
                                movie,
                                QStringLiteral("-codec:v"),
                                QStringLiteral("libx264"),
                                QStringLiteral("-preset"),
                                QStringLiteral("ultrafast"),
                                QStringLiteral("-acodec"),
                                QStringLiteral("copy"),
                                output};

    const QString report = QString::fromUtf8(launch(arguments));
    QVERIFY2(status_ == 0, qPrintable(report));
    const QString text = blankReport(report, {movie, output});

    QCOMPARE(text.size(), report.size());
    for (const char* marker : {"error", "Invalid", "av_interleaved_write_frame"})
        QVERIFY2(!text.contains(QLatin1StringView(marker)), marker);
    const qsizetype frames = report.lastIndexOf(QLatin1StringView("frame="));
    QCOMPARE(text.sliced(frames), report.sliced(frames));

    // Asked for a second time it says that the file is there, with its path; the later releases
    // end with 0 all the same.
    const QString refused = blankReport(QString::fromUtf8(launch(arguments)), {movie, output});
    QVERIFY(!refused.contains(QLatin1StringView("LPSNR=")));
    QVERIFY(refused.contains(QLatin1StringView("already exists")));
    QVERIFY(!refused.contains(QLatin1StringView("error")));
}

QByteArray TestRealProbe::run(const QStringList& arguments) {
    return saidBy(ffmpeg_, arguments);
}

QByteArray TestRealProbe::launch(const QStringList& arguments) {
    return saidBy(QStringLiteral(REELSHIFT_LAUNCHER), arguments);
}

QByteArray TestRealProbe::saidBy(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    status_ = process.waitForFinished() ? process.exitCode() : -1;
    return process.readAllStandardError();
}

/// The movie of this container under a name of the test's own.
QString TestRealProbe::movieAs(const QString& name) {
    const QString path = folder_.filePath(name);
    const QString kind = path.endsWith(QLatin1StringView(".mkv")) ? QStringLiteral("movie.mkv")
                                                                  : QStringLiteral("movie.mp4");
    QDir(folder_.path()).mkpath(QFileInfo(path).path());
    if (!QFile::exists(path) && !QFile::copy(folder_.filePath(kind), path))
        qFatal("the movie cannot be copied");
    return path;
}

REELSHIFT_TEST(test_real_probe, TestRealProbe, QCoreApplication)
#include "TestRealProbe.moc"
