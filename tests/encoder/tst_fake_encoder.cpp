#include "TestProgram.h"
#include "encoder/ScriptedMovie.h"

#include <QCoreApplication>
#include <QProcess>
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
    void termFinishesTheFile();
    void ignoredTermNeedsKill();
    void secondStartTakesItsOwnSteps();
    void encoderBesideAnotherIsNoted();
    void splitTextArrivesWhole();

private:
    QString path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    static QByteArray finish(QProcess& process);
    static void start(QProcess& process, const QStringList& arguments);

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
