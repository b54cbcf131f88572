#include "TestProgram.h"
#include "platform/ChildProbe.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"

#include <QCoreApplication>
#include <QTest>

#include <future>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/ioctl.h>

using namespace std::chrono_literals;
using Read = ChildProcess::Read;

namespace {

int bytesInPipe(const ChildProcess& child) {
    int bytes = 0;
    ::ioctl(child.readEnd(), FIONREAD, &bytes);
    return bytes;
}

} // namespace

/// Reading what a child says, and knowing when that was all.
class TestChildProcessReading final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { processes_ = std::make_unique<ChildProcesses>(); }
    void cleanup() { processes_.reset(); }
    void allThatWasSaidComesBeforeTheEnd();
    void endIsToldAgain();
    void dataIsAppended();
    void limitEndsARead();
    void limitOfNothingTakesWhatIsThere();
    void wakeEndsABlockedRead();
    void wakeBeforeTheReadIsKept();
    void wakesBeforeOneReadAreOne();
    void dataComesBeforeAWake();
    void endComesInsteadOfAWake();
    void wordsThatAreStillOnTheirWayAreRead();
    void grandchildDoesNotDelayTheEnd();
    void grandchildThatStillSpeaksDoesNotDelayTheEnd();
    void closedStreamIsNotTheEnd();
    void killWhileReading();
    void floodHoldsTheWriterUp();
    void oneReadIsBounded();
    void standardOutputIsNotRead();

private:
    [[nodiscard]] std::shared_ptr<ChildProcess> shell(const QString& script) {
        return processes_->launch(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }

    std::unique_ptr<ChildProcesses> processes_;
};

void TestChildProcessReading::allThatWasSaidComesBeforeTheEnd() {
    const auto child =
        shell(QStringLiteral("i=0; while [ $i -lt 5000 ]; do echo line $i >&2; i=$((i+1)); done"));
    QByteArray text;
    Read read = Read::Data;
    while ((read = child->read(text, longEnough)) == Read::Data)
        QVERIFY(!text.isEmpty());
    QCOMPARE(read, Read::Ended);
    QCOMPARE(text.count('\n'), 5000);
    QVERIFY(text.endsWith("line 4999\n"));
    QVERIFY(child->end());
}

void TestChildProcessReading::endIsToldAgain() {
    const auto child = shell(QStringLiteral("exit 0"));
    QByteArray text;
    for (int i = 0; i < 3; ++i)
        QCOMPARE(child->read(text), Read::Ended);
    child->wakeReader();
    QCOMPARE(child->read(text), Read::Ended);
    QVERIFY(text.isEmpty());
}

void TestChildProcessReading::dataIsAppended() {
    const auto child = shell(QStringLiteral("printf b >&2"));
    QByteArray text("a");
    QCOMPARE(child->read(text, longEnough), Read::Data);
    QCOMPARE(text, QByteArray("ab"));
    QCOMPARE(child->read(text, longEnough), Read::Ended);
}

void TestChildProcessReading::limitEndsARead() {
    const auto child = shell(QStringLiteral("exec sleep 300"));
    QByteArray text;
    const auto before = std::chrono::steady_clock::now();
    QCOMPARE(child->read(text, 60ms), Read::TimedOut);
    QVERIFY(std::chrono::steady_clock::now() - before >= 60ms);
    QCOMPARE(child->read(text, 0ms), Read::TimedOut);
    QCOMPARE(child->read(text, -5ms), Read::TimedOut);
    QVERIFY(text.isEmpty());
}

void TestChildProcessReading::limitOfNothingTakesWhatIsThere() {
    const auto child = shell(QStringLiteral("echo here >&2; exec sleep 300"));
    QTRY_COMPARE(bytesInPipe(*child), 5);
    QByteArray text;
    QCOMPARE(child->read(text, 0ms), Read::Data);
    QCOMPARE(text, QByteArray("here\n"));
}

void TestChildProcessReading::wakeEndsABlockedRead() {
    const auto child = shell(QStringLiteral("exec sleep 300"));
    auto read = std::async(std::launch::async, [&] {
        QByteArray text;
        return child->read(text);
    });
    QVERIFY(read.wait_for(30ms) == std::future_status::timeout);
    child->wakeReader();
    QVERIFY(read.wait_for(longEnough) == std::future_status::ready);
    QCOMPARE(read.get(), Read::Woken);
}

void TestChildProcessReading::wakeBeforeTheReadIsKept() {
    const auto child = shell(QStringLiteral("exec sleep 300"));
    child->wakeReader();
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Woken);
    QCOMPARE(child->read(text, 0ms), Read::TimedOut);
}

void TestChildProcessReading::wakesBeforeOneReadAreOne() {
    const auto child = shell(QStringLiteral("exec sleep 300"));
    for (int i = 0; i < 1000; ++i)
        child->wakeReader();
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Woken);
    QCOMPARE(child->read(text, 0ms), Read::TimedOut);
}

void TestChildProcessReading::dataComesBeforeAWake() {
    const auto child = shell(QStringLiteral("echo here >&2; exec sleep 300"));
    QTRY_COMPARE(bytesInPipe(*child), 5);
    child->wakeReader();
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Data);
    QCOMPARE(child->read(text, longEnough), Read::Woken);
}

void TestChildProcessReading::endComesInsteadOfAWake() {
    const auto child = shell(QStringLiteral("echo last >&2"));
    QVERIFY(child->waitForEnd(longEnough));
    child->wakeReader();
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Data);
    QCOMPARE(text, QByteArray("last\n"));
    QCOMPARE(child->read(text, longEnough), Read::Ended);
}

void TestChildProcessReading::wordsThatAreStillOnTheirWayAreRead() {
    // As through a filter, which has passed on what it has read only after the end.
    const auto child =
        shell(QStringLiteral("{ sleep 0.3; echo first >&2; sleep 0.1; echo last >&2; } &"));
    QVERIFY(child->waitForEnd(longEnough));
    QByteArray text;
    const auto before = std::chrono::steady_clock::now();
    while (child->read(text, longEnough) == Read::Data) {
    }
    QCOMPARE(text, QByteArray("first\nlast\n"));
    QVERIFY(std::chrono::steady_clock::now() - before < ChildProcess::lastWords);
}

void TestChildProcessReading::grandchildDoesNotDelayTheEnd() {
    const auto child = shell(QStringLiteral("sleep 300 & echo $! >&2"));
    QByteArray text;
    Read read = Read::Data;
    while ((read = child->read(text, longEnough)) == Read::Data) {
    }
    QCOMPARE(read, Read::Ended);
    const pid_t grandchild = text.trimmed().toInt();
    QVERIFY(grandchild > 0);
    QVERIFY(!isDead(grandchild));
    ::kill(grandchild, SIGKILL);
    QTRY_VERIFY(isDead(grandchild));
}

void TestChildProcessReading::grandchildThatStillSpeaksDoesNotDelayTheEnd() {
    // It dies of the closed pipe when the child is let go.
    const auto child = shell(QStringLiteral("yes >&2 &"));
    QVERIFY(child->waitForEnd(longEnough));
    QTRY_VERIFY(bytesInPipe(*child) > 0);
    QByteArray text;
    Read read = Read::Data;
    for (int reads = 0; read == Read::Data && reads < 3; ++reads)
        read = child->read(text, longEnough);
    QCOMPARE(read, Read::Ended);
}

void TestChildProcessReading::closedStreamIsNotTheEnd() {
    const auto child = shell(QStringLiteral("echo last >&2; exec 2>&-; exec sleep 300"));
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Data);
    QCOMPARE(child->read(text, 100ms), Read::TimedOut);
    child->wakeReader();
    QCOMPARE(child->read(text, longEnough), Read::Woken);
    QVERIFY(child->kill());
    QCOMPARE(child->read(text, longEnough), Read::Ended);
    QCOMPARE(text, QByteArray("last\n"));
}

void TestChildProcessReading::killWhileReading() {
    const auto child = shell(QStringLiteral("exec sleep 300"));
    auto read = std::async(std::launch::async, [&] {
        QByteArray text;
        return child->read(text);
    });
    QVERIFY(read.wait_for(30ms) == std::future_status::timeout);
    QVERIFY(child->kill());
    QVERIFY(read.wait_for(longEnough) == std::future_status::ready);
    QCOMPARE(read.get(), Read::Ended);
}

void TestChildProcessReading::floodHoldsTheWriterUp() {
    const auto child = shell(QStringLiteral("exec yes >&2"));
    const int capacity = ::fcntl(child->readEnd(), F_GETPIPE_SZ);
    QVERIFY(capacity > 0);
    const auto isHeldUp = [&] {
        return stateOfProcess(child->processIdentifier()) == 'S' &&
               bytesInPipe(*child) > capacity - 8192;
    };
    // Full pipe, sleeping writer: nothing is taken out that nobody has asked for.
    QTRY_VERIFY(isHeldUp());
    QVERIFY(bytesInPipe(*child) <= capacity);
    QVERIFY(!child->end());
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), Read::Data);
    QTRY_VERIFY(isHeldUp());
    // One that is held up hears signals all the same.
    QVERIFY(child->terminate());
    QVERIFY(child->waitForEnd(longEnough));
}

void TestChildProcessReading::oneReadIsBounded() {
    const auto child = shell(QStringLiteral("exec yes >&2"));
    for (int i = 0; i < 50; ++i) {
        QByteArray text;
        QCOMPARE(child->read(text, longEnough), Read::Data);
        QVERIFY(text.size() <= ChildProcess::largestRead);
    }
}

void TestChildProcessReading::standardOutputIsNotRead() {
    const auto child = shell(QStringLiteral("echo out; echo err >&2"));
    QByteArray text;
    while (child->read(text, longEnough) == Read::Data) {
    }
    QCOMPARE(text, QByteArray("err\n"));
}

REELSHIFT_TEST(tst_childprocess_reading, TestChildProcessReading, QCoreApplication)
#include "tst_childprocess_reading.moc"
