#include "TestProgram.h"
#include "platform/ChildProbe.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <thread>
#include <vector>

#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace {

int openDescriptors() {
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size());
}

} // namespace

/// The owner of all children: many at a time, and what is left of them.
class TestChildProcesses final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { processes_ = std::make_unique<ChildProcesses>(); }
    void cleanup();
    void launchesFromManyThreads();
    void twoHundredLeaveNothingBehind();
    void failedStartsLeaveNothingBehind();
    void ownerTakesTheLivingAlong();

private:
    [[nodiscard]] std::shared_ptr<ChildProcess> shell(const QString& script,
                                                      std::function<void()> onEnd = {}) {
        return processes_->launch(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script},
                                  std::move(onEnd));
    }
    [[nodiscard]] std::shared_ptr<ChildProcess> sleeper(std::function<void()> onEnd) {
        return processes_->launch(QStringLiteral("/bin/sleep"), {QStringLiteral("300")},
                                  std::move(onEnd));
    }

    std::unique_ptr<ChildProcesses> processes_;
};

void TestChildProcesses::cleanup() {
    processes_.reset();
    // No test leaves a process or a zombie behind.
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

void TestChildProcesses::launchesFromManyThreads() {
    std::atomic<int> ended = 0;
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (int k = 0; k < 10; ++k) {
                const int status = i * 10 + k;
                const auto child = shell(QStringLiteral("exit %1").arg(status), [&] { ++ended; });
                const auto end = child->waitForEnd(longEnough);
                right += end && end->how == ProcessEnd::How::Exited && end->code == status ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(right.load(), 80);
    processes_.reset();
    QCOMPARE(ended.load(), 80);
}

void TestChildProcesses::twoHundredLeaveNothingBehind() {
    const int before = openDescriptors();
    for (int i = 0; i < 200; ++i) {
        const auto child = processes_->launch(QStringLiteral("/bin/true"), {});
        QVERIFY(child->waitForEnd(longEnough));
    }
    QTRY_COMPARE(processes_->liveCount(), 0);
    // The thread lets go of the last one a moment after it has told of its end.
    QTRY_COMPARE(openDescriptors(), before);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

void TestChildProcesses::failedStartsLeaveNothingBehind() {
    const int before = openDescriptors();
    for (int i = 0; i < 100; ++i)
        (void)processes_->launch(QStringLiteral("/no/such/program"), {});
    QTRY_COMPARE(openDescriptors(), before);
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

void TestChildProcesses::ownerTakesTheLivingAlong() {
    std::atomic<int> ends = 0;
    std::vector<pid_t> pids;
    {
        const auto running = sleeper([&] { ++ends; });
        const auto suspended = sleeper([&] { ++ends; });
        const auto deaf =
            shell(QStringLiteral("trap '' TERM INT HUP; exec sleep 300"), [&] { ++ends; });
        QVERIFY(suspended->suspend());
        for (const auto& child : {running, suspended, deaf})
            pids.push_back(child->processIdentifier());
        QCOMPARE(processes_->liveCount(), 3);
    }
    processes_.reset();
    QCOMPARE(ends.load(), 3);
    for (const pid_t pid : pids)
        QCOMPARE(stateOfProcess(pid), '\0');
}

REELSHIFT_TEST(tst_childprocesses, TestChildProcesses, QCoreApplication)
#include "tst_childprocesses.moc"
