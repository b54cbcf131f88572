#include "TestProgram.h"
#include "platform/ChildProbe.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <signal.h>

/// No encoder goes on when the program was killed.
class TestChildProcessOrphans final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void childDiesWithTheProgram_data();
    void childDiesWithTheProgram();
};

void TestChildProcessOrphans::childDiesWithTheProgram_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("number");
    QTest::newRow("running, killed") << QStringLiteral("running") << SIGKILL;
    QTest::newRow("suspended, killed") << QStringLiteral("suspended") << SIGKILL;
    QTest::newRow("running, crashed") << QStringLiteral("running") << SIGABRT;
    QTest::newRow("suspended, crashed") << QStringLiteral("suspended") << SIGABRT;
}

void TestChildProcessOrphans::childDiesWithTheProgram() {
    QFETCH(const QString, mode);
    QFETCH(const int, number);
    QProcess host;
    // The child has the host's standard output: it must not hold up the end of the host.
    host.setProcessChannelMode(QProcess::SeparateChannels);
    host.start(QStringLiteral(REELSHIFT_CHILDPROCESS_HOST), {mode});
    QVERIFY(host.waitForStarted());
    QTRY_VERIFY(host.canReadLine());
    const pid_t child = host.readLine().trimmed().toInt();
    QVERIFY(child > 0);
    QVERIFY(!isDead(child));
    if (mode == u"suspended")
        QCOMPARE(stateOfProcess(child), 'T');
    QCOMPARE(::kill(static_cast<pid_t>(host.processId()), number), 0);
    QTRY_VERIFY(isDead(child));
    QVERIFY(host.state() == QProcess::NotRunning || host.waitForFinished());
    QCOMPARE(host.exitStatus(), QProcess::CrashExit);
}

REELSHIFT_TEST(tst_childprocess_orphans, TestChildProcessOrphans, QCoreApplication)
#include "tst_childprocess_orphans.moc"
