#include "TestProgram.h"
#include "convert/Recordings.h"
#include "encoder/ScriptedMovie.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <signal.h>

/// Does the fake encoder do what the tests that lean on it take for granted?
class TestFakeEncoder final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(folder_.isValid()); }
    void withoutArgumentsPrintsTheUsage();
    void probeReportsTheScriptedMovie();
    void probeOfSomethingElseIsInvalidData();
    void encodeWithoutStepsConverts();
    void existingOutputIsNotOverwritten();
    void speaksAsRecorded_data();
    void speaksAsRecorded();
    void endsAsRecorded_data() { speaksAsRecorded_data(); }
    void endsAsRecorded();
    void firstReportsWithoutAPosition();
    void termFinishesTheFile();
    void ignoredTermNeedsKill();
    void secondStartTakesItsOwnSteps();
    void encoderBesideAnotherIsNoted();
    void splitTextArrivesWhole();

private:
    QString path(const char* name) const { return folder_.filePath(QLatin1StringView(name)); }
    static QByteArray finish(QProcess& process);
    static void start(QProcess& process, const QStringList& arguments);

    struct Told {
        QByteArray text;
        int status = -1;
    };
    /// What the program that behaves as the row's release says.
    Told tellAsRelease(const QStringList& arguments);
    Told tellAsRelease(const QString& movie, const QString& output);

    QTemporaryDir folder_;
};

void TestFakeEncoder::start(QProcess& process, const QStringList& arguments) {
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QStringLiteral(REELSHIFT_FAKE_ENCODER), arguments);
    QVERIFY(process.waitForStarted());
}

QByteArray TestFakeEncoder::finish(QProcess& process) {
    process.waitForFinished();
    return process.readAllStandardError();
}

void TestFakeEncoder::withoutArgumentsPrintsTheUsage() {
    QProcess process;
    start(process, {});
    const QByteArray text = finish(process);
    QVERIFY(text.startsWith("ffmpeg version 5.1.9"));
    QVERIFY(text.endsWith("run 'man ffmpeg'\n"));
    QCOMPARE(process.exitCode(), 1);
}

void TestFakeEncoder::probeReportsTheScriptedMovie() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("p.mp4"))
                              .probe(QStringLiteral("h264"), QStringLiteral("1920x1080"),
                                     QStringLiteral("N/A"), QStringLiteral("none"))
                              .write();
    QProcess process;
    start(process, {QStringLiteral("-i"), movie});
    const QByteArray text = finish(process);
    QVERIFY(text.contains(QByteArray("from '" + movie.toUtf8() + "':\n")));
    QVERIFY(text.contains("  Duration: N/A, "));
    QVERIFY(text.contains(": Video: h264 (Main)"));
    QVERIFY(text.contains(", 1920x1080 ["));
    QVERIFY(!text.contains("Audio"));
    QCOMPARE(process.exitCode(), 1);
}

void TestFakeEncoder::probeOfSomethingElseIsInvalidData() {
    QProcess process;
    start(process, {QStringLiteral("-i"), QStringLiteral("/proc/self/cmdline")});
    QVERIFY(finish(process).endsWith("Invalid data found when processing input\n"));
    QProcess second;
    start(second, {QStringLiteral("-i"), path("missing.mp4")});
    QVERIFY(finish(second).endsWith("missing.mp4: No such file or directory\n"));
    QCOMPARE(second.exitCode(), 1);
}

void TestFakeEncoder::encodeWithoutStepsConverts() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("e.mp4")).write();
    QProcess process;
    start(process, {QStringLiteral("-psnr"), QStringLiteral("-i"), movie, path("e-out.mp4")});
    const QByteArray text = finish(process);
    QVERIFY(text.contains(" time=00:00:05.00 "));
    QVERIFY(text.contains("LPSNR=Y:inf U:inf V:inf *:inf size="));
    QVERIFY(text.indexOf("time=00:00:10.00") > text.indexOf("LPSNR="));
    QCOMPARE(QFileInfo(path("e-out.mp4")).size(), 4096);
    QCOMPARE(process.exitCode(), 0);
}

void TestFakeEncoder::existingOutputIsNotOverwritten() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("o.mp4"))
                              .encode({"write-text new", "summary 10"})
                              .write();
    const QString output = path("o-out.mp4");
    QFile older(output);
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write("older");
    older.close();

    QProcess refused;
    start(refused, {QStringLiteral("-i"), movie, output});
    QVERIFY(
        finish(refused).endsWith("already exists. Overwrite? [y/N] Not overwriting - exiting\n"));
    QCOMPARE(refused.exitCode(), 1);
    QCOMPARE(QFileInfo(output).size(), 5);

    QProcess replaced;
    start(replaced, {QStringLiteral("-y"), QStringLiteral("-i"), movie, output});
    finish(replaced);
    QCOMPARE(replaced.exitCode(), 0);
    QCOMPARE(QFileInfo(output).size(), 3);
}

void TestFakeEncoder::speaksAsRecorded_data() {
    QTest::addColumn<int>("unused");
    for (const char* release : Recordings::releases)
        QTest::newRow(release) << 0;
}

TestFakeEncoder::Told TestFakeEncoder::tellAsRelease(const QStringList& arguments) {
    const QString folder = path("release");
    if (installFakeEncoder(folder).isEmpty() ||
        !setEncoderRelease(folder, QString::fromLatin1(QTest::currentDataTag())))
        return {};
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(folder + QStringLiteral("/ffmpeg"), arguments);
    Told told;
    told.text = finish(process);
    told.status = process.exitCode();
    return told;
}

TestFakeEncoder::Told TestFakeEncoder::tellAsRelease(const QString& movie, const QString& output) {
    QStringList arguments{QStringLiteral("-i"), movie, output};
    if (QByteArray(QTest::currentDataTag()) == "5.1.9")
        arguments.prepend(QStringLiteral("-psnr"));
    return tellAsRelease(arguments);
}

namespace {

/// Lines without the numbers, addresses and paths in them.
QSet<QString> kindsOfLines(const QByteArray& text) {
    static const QRegularExpression path(QStringLiteral("/[^:'\n]*\\.(mp4|mov|mkv)"));
    static const QRegularExpression number(QStringLiteral("0x[0-9a-f]+|-?[0-9]+(\\.[0-9]+)?"));
    static const QRegularExpression counters(QStringLiteral(" dup=.* drop=[0-9]*"));
    QSet<QString> kinds;
    QString shown = QString::fromUtf8(text).replace(u'\r', u'\n');
    for (const QString& line : shown.replace(path, QStringLiteral("FILE")).split(u'\n')) {
        QString kind = line;
        kinds << kind.remove(counters).replace(number, QStringLiteral("1")).remove(u' ');
    }
    return kinds;
}

} // namespace

// Every line is one that the real one said, apart from numbers and names.
void TestFakeEncoder::speaksAsRecorded() {
    const QByteArray release = QTest::currentDataTag();
    QSet<QString> real;
    const QDir folder(QStringLiteral(REELSHIFT_RECORDINGS "/") + QLatin1StringView(release));
    for (const QString& file : folder.entryList({QStringLiteral("*.txt")}, QDir::Files))
        real += kindsOfLines(Recordings::contents(folder.filePath(file)));

    const auto movie = [&](const QString& name, std::initializer_list<const char*> steps) {
        return ScriptedMovie(folder_.path(), name).encode(steps).write();
    };
    const QString full = movie(QStringLiteral("full.mp4"),
                               {"create", "first-report", "progress 1", "progress 2", "damage",
                                "write-failure No space left on device", "summary 3"});
    const QString index = movie(QStringLiteral("index.mp4"),
                                {"create", "progress 1", "index-failure No space left on device"});
    QFile noMovie(path("noise.mp4"));
    QVERIFY(noMovie.open(QIODevice::WriteOnly) && noMovie.write("noise") > 0);
    noMovie.close();
    QByteArray said;
    for (const QString& source : {full, index, full, path("gone.mp4"), path("noise.mp4")})
        said += tellAsRelease(source, path("said.mp4")).text;
    said += tellAsRelease({}).text + tellAsRelease({QStringLiteral("-psnr")}).text;

    const QSet<QString> banner = kindsOfLines(tellAsRelease({}).text);
    const QSet<QString> report = kindsOfLines(tellAsRelease({QStringLiteral("-i"), full}).text);
    QSet<QString> kinds = kindsOfLines(said) - report;
    kinds -= banner - real; // the libraries' versions are those of one release
    QVERIFY(kinds.size() > 10);
    for (const QString& kind : kinds)
        QVERIFY2(real.contains(kind), qPrintable(kind));
}

void TestFakeEncoder::endsAsRecorded() {
    const QByteArray release = QTest::currentDataTag();
    const QString index =
        ScriptedMovie(folder_.path(), QStringLiteral("index.mp4"))
            .encode({"create", "progress 1", "index-failure No space left on device"})
            .write();
    const QString output = folder_.filePath(QLatin1StringView(release) + QStringLiteral(".mp4"));
    QFile noMovie(path("noise.mp4"));
    QVERIFY(noMovie.open(QIODevice::WriteOnly) && noMovie.write("noise") > 0);
    noMovie.close();
    const auto recorded = [&](const char* name) { return Recordings::status(release, name); };
    QCOMPARE(tellAsRelease(index, output).status, recorded("index-full"));
    QCOMPARE(tellAsRelease(index, output).status, recorded("existing-output"));
    QCOMPARE(tellAsRelease(path("gone.mp4"), output).status, recorded("no-source"));
    QCOMPARE(tellAsRelease(path("noise.mp4"), output).status, recorded("not-a-movie"));
    QCOMPARE(tellAsRelease({QStringLiteral("-i"), path("noise.mp4")}).status,
             recorded("probe-no-movie"));
    QCOMPARE(tellAsRelease({QStringLiteral("-i"), index}).status, recorded("probe"));
    QCOMPARE(tellAsRelease({}).status, recorded("usage"));
    QCOMPARE(
        tellAsRelease({QStringLiteral("-psnr"), QStringLiteral("-i"), path("gone.mp4")}).status,
        recorded("with-psnr"));
}

void TestFakeEncoder::firstReportsWithoutAPosition() {
    const QString folder = path("late");
    QVERIFY(!installFakeEncoder(folder).isEmpty());
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("late.mp4"))
                              .encode({"create", "first-report", "progress 1", "summary 10"})
                              .write();
    for (const char* release : {"5.1", "6.1", "7.0", "7.1", "9.0"}) {
        QVERIFY(setEncoderRelease(folder, QString::fromLatin1(release)));
        QProcess process;
        process.start(folder + QStringLiteral("/ffmpeg"),
                      {QStringLiteral("-y"), QStringLiteral("-i"), movie, path("late-out.mp4")});
        const QByteArray text = finish(process);
        const qsizetype first = text.indexOf("time=");
        QVERIFY(first > 0);
        QCOMPARE(text.sliced(first).startsWith("time=N/A"), release[0] >= '7');
        QCOMPARE(text.indexOf("overhead:") < text.lastIndexOf("frame="), release[0] >= '6');
    }
}

void TestFakeEncoder::termFinishesTheFile() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("t.mp4"))
                              .encode({"create", "progress 3.25", "touch ready", "hang"})
                              .write();
    QProcess process;
    start(process, {QStringLiteral("-i"), movie, path("t-out.mp4")});
    QTRY_VERIFY(QFile::exists(path("ready")));
    process.terminate();
    const QByteArray text = finish(process);
    QVERIFY(text.contains("LPSNR="));
    QVERIFY(text.contains("time=00:00:03.25"));
    QVERIFY(text.endsWith("Exiting normally, received signal 15.\n"));
    QCOMPARE(process.exitCode(), 255);
}

void TestFakeEncoder::ignoredTermNeedsKill() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("i.mp4"))
                              .encode({"ignore-term", "touch deaf", "wait-file go", "exit 7"})
                              .write();
    QProcess process;
    start(process, {QStringLiteral("-i"), movie, path("i-out.mp4")});
    QTRY_VERIFY(QFile::exists(path("deaf")));
    process.terminate();
    QFile go(path("go"));
    QVERIFY(go.open(QIODevice::WriteOnly));
    finish(process);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 7);
}

void TestFakeEncoder::secondStartTakesItsOwnSteps() {
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("n.mp4"))
                              .encode({"exit 3"})
                              .encodeAt(2, {"exit 4"})
                              .write();
    for (const int expected : {3, 4, 3}) {
        QProcess process;
        start(process, {QStringLiteral("-i"), movie, path("n-out.mp4")});
        finish(process);
        QCOMPARE(process.exitCode(), expected);
    }
}

void TestFakeEncoder::encoderBesideAnotherIsNoted() {
    const QString log = installFakeEncoder(folder_.filePath(QStringLiteral("share")));
    const QString link = folder_.filePath(QStringLiteral("share/ffmpeg"));
    const QString movie = ScriptedMovie(folder_.path(), QStringLiteral("l.mp4"))
                              .encode({"alone lock", "touch first", "wait-file over"})
                              .write();
    const QStringList arguments{QStringLiteral("-i"), movie, path("l-out.mp4")};
    QProcess first;
    first.start(link, arguments);
    QTRY_VERIFY(QFile::exists(path("first")));
    QCOMPARE(QFileInfo(path("lock")).size(), 0);
    QProcess second;
    second.start(link, arguments);
    QTRY_VERIFY(QFileInfo(path("lock")).size() > 0);
    QFile over(path("over"));
    QVERIFY(over.open(QIODevice::WriteOnly));
    finish(first);
    finish(second);
    const QList<EncoderStart> starts = readEncoderStarts(log);
    QCOMPARE(starts.size(), 2);
    QCOMPARE(starts.at(0).arguments, arguments);
    QVERIFY(starts.at(0).pid != starts.at(1).pid);
}

void TestFakeEncoder::splitTextArrivesWhole() {
    const QString movie =
        ScriptedMovie(folder_.path(), QStringLiteral("s.mp4"))
            .encode({"loop 2", "split 3 time=\\xc3\\xa9 1\\r\\n", "end", "flood 200000", "abort"})
            .write();
    QProcess process;
    start(process, {QStringLiteral("-i"), movie, path("s-out.mp4")});
    const QByteArray text = finish(process);
    QCOMPARE(text.count("time=\xc3\xa9 1\r\n"), 2);
    QVERIFY(text.size() > 200000);
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
}

REELSHIFT_TEST(tst_fake_encoder, TestFakeEncoder, QCoreApplication)
#include "tst_fake_encoder.moc"
