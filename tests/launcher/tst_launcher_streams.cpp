#include "TestProgram.h"
#include "launcher/LaunchedEncoder.h"
#include "launcher/LauncherScene.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <signal.h>

/// What becomes of an encoder's words and of the signals that it gets, with a filter behind it.
class TestLauncherStreams final : public QObject, private LauncherScene {
    Q_OBJECT

private Q_SLOTS:
    void init() { installEncoder(); }
    void cleanup() { removeFolder(); }

    void passesOnAtOnce();
    void theStopIsTheEncodersAlone();
    void signalsToTheGroupAreTheEncodersAlone();
    void endsWithItsEncoder_data();
    void endsWithItsEncoder();
    void aGrandchildDoesNotHoldTheStream();
    void aReaderThatGoesAway();
    void aReaderThatDoesNotRead();
    void aStreamThatDoesNotBlock();
    void diesWithTheProgram_data();
    void diesWithTheProgram();
};

void TestLauncherStreams::passesOnAtOnce() {
    LaunchedEncoder encoder(
        system(), job({"print one", "wait-file 1", "print  two\\nframe=  1 f", "wait-file 2",
                       "print ps= 1 size= 1kB time=0\\r", "wait-file 3", "summary 10"}));
    QVERIFY(encoder.waitFor("one"));
    touch(QStringLiteral("1"));
    QVERIFY(encoder.waitFor(" two\nframe=  1 f"));
    touch(QStringLiteral("2"));
    QVERIFY(encoder.waitFor("ps= 1 size= 1kB time=0\r"));
    touch(QStringLiteral("3"));
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), 0);
    QVERIFY(encoder.said().contains(quality));
}

void TestLauncherStreams::theStopIsTheEncodersAlone() {
    LaunchedEncoder encoder(system(), job({"progress 1", "wait-file go", "summary 10"}));
    QVERIFY(encoder.waitFor("time=00:00:01.00"));
    const pid_t filter = encoder.filter();
    QVERIFY(filter > 0);
    QCOMPARE(::kill(encoder.pid(), SIGSTOP), 0);
    QTRY_COMPARE(stateOfProcess(encoder.pid()), 'T');
    QCOMPARE(stateOfProcess(filter), 'S');
    touch(QStringLiteral("go"));
    QCOMPARE(::kill(encoder.pid(), SIGCONT), 0);
    QVERIFY(encoder.readToEnd());
    QVERIFY(encoder.said().contains(quality));
    QCOMPARE(encoder.waitForEnd(), 0);
    QVERIFY(isGone(filter));
}

void TestLauncherStreams::signalsToTheGroupAreTheEncodersAlone() {
    LaunchedEncoder encoder(system(), job({"progress 1", "hang"}));
    QVERIFY(encoder.waitFor("time=00:00:01.00"));
    const pid_t filter = encoder.filter();
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP})
        QCOMPARE(::kill(filter, number), 0);
    QCOMPARE(::kill(encoder.pid(), SIGTERM), 0);
    QVERIFY(encoder.readToEnd());
    // Asked to end it says its last report all the same.
    QVERIFY(encoder.said().contains(quality));
    QVERIFY(encoder.said().endsWith("Exiting normally, received signal 15.\n"));
    QCOMPARE(encoder.waitForEnd(), 255);
    QVERIFY(isGone(filter));
}

void TestLauncherStreams::endsWithItsEncoder_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("crashed") << SIGSEGV;
}

void TestLauncherStreams::endsWithItsEncoder() {
    QFETCH(const int, number);
    LaunchedEncoder encoder(system(),
                            job({"progress 1", "print last words", "touch said", "hang"}));
    QVERIFY(encoder.waitFor("time=00:00:01.00"));
    QTRY_VERIFY(QFile::exists(path(QStringLiteral("said"))));
    const pid_t filter = encoder.filter();
    QCOMPARE(::kill(encoder.pid(), number), 0);
    QVERIFY(encoder.readToEnd());
    QVERIFY(encoder.said().endsWith("last words"));
    QCOMPARE(encoder.waitForEnd(), -number);
    QVERIFY(isGone(filter));
}

void TestLauncherStreams::aGrandchildDoesNotHoldTheStream() {
    LaunchedEncoder encoder(system(), job({"grandchild 25000", "summary 10"}));
    QVERIFY(encoder.readToEnd()); // within 20 s
    QVERIFY(encoder.said().contains(quality));
    QCOMPARE(encoder.waitForEnd(), 0);
}

void TestLauncherStreams::aReaderThatGoesAway() {
    LaunchedEncoder encoder(system(),
                            job({"progress 1", "wait-file go", "flood 1000000", "summary 10"}));
    QVERIFY(encoder.waitFor("time=00:00:01.00"));
    const pid_t filter = encoder.filter();
    encoder.closeReadEnd();
    QVERIFY(isGone(filter));
    touch(QStringLiteral("go"));
    // As when it writes to the closed stream itself.
    QCOMPARE(encoder.waitForEnd(), 0);
}

void TestLauncherStreams::aReaderThatDoesNotRead() {
    LaunchedEncoder encoder(system(), job({"flood 3000000", "summary 10"}));
    // Both pipes are full then, and nothing is gathered in between.
    QTRY_VERIFY(encoder.filter() > 0 && encoder.bytesWaiting() > 60000 &&
                stateOfProcess(encoder.pid()) == 'S' && stateOfProcess(encoder.filter()) == 'S');
    const pid_t filter = encoder.filter();
    QVERIFY(encoder.readToEnd());
    QVERIFY(encoder.said().size() > 3000000);
    QCOMPARE(encoder.said().count(quality), 1);
    QCOMPARE(encoder.waitForEnd(), 0);
    QVERIFY(isGone(filter));
}

void TestLauncherStreams::aStreamThatDoesNotBlock() {
    LaunchedEncoder encoder(system(), job({"flood 3000000", "summary 10"}),
                            LaunchedEncoder::Stream::NonBlocking);
    QTRY_VERIFY(encoder.bytesWaiting() > 60000);
    QVERIFY(encoder.readToEnd());
    QVERIFY(encoder.said().size() > 3000000);
    QCOMPARE(encoder.said().count(quality), 1);
    QCOMPARE(encoder.waitForEnd(), 0);
}

void TestLauncherStreams::diesWithTheProgram_data() {
    QTest::addColumn<QString>("mode");
    QTest::newRow("running") << QStringLiteral("running");
    QTest::newRow("suspended") << QStringLiteral("suspended");
}

void TestLauncherStreams::diesWithTheProgram() {
    QFETCH(const QString, mode);
    QProcess host;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), system());
    host.setProcessEnvironment(environment);
    // The stop comes to the launcher while it asks, or to the encoder; both end with the program.
    host.start(QStringLiteral(REELSHIFT_CHILDPROCESS_HOST),
               QStringList{mode, QStringLiteral(REELSHIFT_LAUNCHER)} +
                   job({"progress 1", "touch begun", "hang"}));
    QVERIFY(host.waitForStarted());
    QTRY_VERIFY(host.canReadLine());
    const pid_t encoder = host.readLine().trimmed().toInt();
    QVERIFY(encoder > 0);
    if (mode == u"running")
        QTRY_VERIFY(QFile::exists(path(QStringLiteral("begun"))));
    else
        QCOMPARE(stateOfProcess(encoder), 'T');
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(encoder));
    QVERIFY(children.open(QIODevice::ReadOnly));
    const QByteArrayList others = children.readAll().simplified().split(' ');
    host.kill();
    QVERIFY(isGone(encoder));
    for (const QByteArray& each : others)
        QVERIFY(each.isEmpty() || isGone(each.toInt()));
    QVERIFY(host.state() == QProcess::NotRunning || host.waitForFinished());
}

REELSHIFT_TEST(tst_launcher_streams, TestLauncherStreams, QCoreApplication)
#include "tst_launcher_streams.moc"
