#include "TestProgram.h"
#include "platform/QuitSignals.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <cerrno>
#include <memory>

#include <signal.h>
#include <unistd.h>

namespace {

bool hasUsualMeaning(int number) {
    struct sigaction action {};
    ::sigaction(number, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

} // namespace

/// The signals that close the program in good order.
class TestQuitSignals final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachSignalReachesTheMainLoop_data();
    void eachSignalReachesTheMainLoop();
    void signalOfAnotherProcess();
    void manySignalsAtOnce();
    void handlerKeepsErrno();
    void interruptedCallsGoOn();
    void usualMeaningComesBack();
    void oneAfterTheOther();
};

void TestQuitSignals::eachSignalReachesTheMainLoop_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestQuitSignals::eachSignalReachesTheMainLoop() {
    QFETCH(const int, number);
    QuitSignals listener;
    QSignalSpy asked(&listener, &QuitSignals::quitAsked);
    QCOMPARE(::raise(number), 0);
    // Never in the middle of what is being done.
    QCOMPARE(asked.count(), 0);
    QTRY_COMPARE(asked.count(), 1);
    QCOMPARE(::raise(number), 0);
    QTRY_COMPARE(asked.count(), 2);
}

void TestQuitSignals::signalOfAnotherProcess() {
    QuitSignals listener;
    QSignalSpy asked(&listener, &QuitSignals::quitAsked);
    QCOMPARE(QProcess::execute(QStringLiteral("/bin/kill"),
                               {QStringLiteral("-TERM"), QString::number(::getpid())}),
             0);
    QTRY_COMPARE(asked.count(), 1);
}

void TestQuitSignals::manySignalsAtOnce() {
    QuitSignals listener;
    QSignalSpy asked(&listener, &QuitSignals::quitAsked);
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(::raise(i % 2 == 0 ? SIGTERM : SIGINT), 0);
    QTRY_VERIFY(asked.count() > 0);
    QTest::qWait(0);
    QCOMPARE(asked.count(), 1);
}

void TestQuitSignals::handlerKeepsErrno() {
    const QuitSignals listener;
    // More than the pipe behind it takes, so that its write fails.
    for (int i = 0; i < 70'000; ++i) {
        errno = ENOTTY;
        ::raise(SIGTERM);
        if (errno != ENOTTY)
            QFAIL("the handler has changed errno");
    }
}

void TestQuitSignals::interruptedCallsGoOn() {
    const QuitSignals listener;
    struct sigaction action {};
    QCOMPARE(::sigaction(SIGTERM, nullptr, &action), 0);
    QVERIFY((action.sa_flags & SA_RESTART) != 0);
}

void TestQuitSignals::usualMeaningComesBack() {
    {
        const QuitSignals listener;
        for (const int number : {SIGTERM, SIGINT, SIGHUP})
            QVERIFY(!hasUsualMeaning(number));
    }
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        QVERIFY(hasUsualMeaning(number));
}

void TestQuitSignals::oneAfterTheOther() {
    for (int i = 0; i < 20; ++i) {
        const auto listener = std::make_unique<QuitSignals>();
        QSignalSpy asked(listener.get(), &QuitSignals::quitAsked);
        QCOMPARE(::raise(SIGHUP), 0);
        QTRY_COMPARE(asked.count(), 1);
    }
    // One that was not heard any more is not heard by the next.
    auto first = std::make_unique<QuitSignals>();
    QCOMPARE(::raise(SIGHUP), 0);
    first = nullptr;
    const QuitSignals second;
    QSignalSpy asked(&second, &QuitSignals::quitAsked);
    QTest::qWait(0);
    QCOMPARE(asked.count(), 0);
}

REELSHIFT_TEST(tst_quitsignals, TestQuitSignals, QCoreApplication)
#include "tst_quitsignals.moc"
