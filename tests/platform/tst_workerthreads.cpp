#include "TestProgram.h"
#include "platform/ChildProbe.h"
#include "platform/MainThreadCalls.h"
#include "platform/NoMoreThreads.h"
#include "platform/WorkerThreads.h"

#include <QCoreApplication>
#include <QTest>

#include <atomic>
#include <future>
#include <system_error>
#include <thread>

#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 20s;

bool isReady(std::future<void>& future) {
    return future.wait_for(patience) == std::future_status::ready;
}

} // namespace

/// The threads that wait for slow things, and how they are let go.
class TestWorkerThreads final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bodyRunsOnAThreadOfItsOwn();
    void countsThoseThatRun();
    void whatABodyHoldsGoesBeforeItCounts();
    void sleepTakesItsTime();
    void closeEndsASleep();
    void closeEndsEverySleep();
    void noSleepAfterClosing();
    void closingTwiceIsHarmless();
    void cancelledEndsAThreadQuietly();
    void oneThatCannotBeMadeDoesNotCount();
    void waitForAllWithoutAny();
    void waitForAllHasALimit();
    void oneThatHangsIsLeftBehind();
    void destructionEndsASleep();
};

void TestWorkerThreads::bodyRunsOnAThreadOfItsOwn() {
    WorkerThreads workers;
    std::promise<std::thread::id> id;
    workers.start([&] { id.set_value(std::this_thread::get_id()); });
    auto future = id.get_future();
    QVERIFY(future.wait_for(patience) == std::future_status::ready);
    QVERIFY(future.get() != std::this_thread::get_id());
    QVERIFY(workers.waitForAll(patience));
}

void TestWorkerThreads::countsThoseThatRun() {
    WorkerThreads workers;
    QCOMPARE(workers.runningCount(), 0);
    std::promise<void> go;
    const std::shared_future<void> gone = go.get_future().share();
    for (int i = 0; i < 50; ++i)
        workers.start([gone] { gone.wait(); });
    QCOMPARE(workers.runningCount(), 50);
    go.set_value();
    QVERIFY(workers.waitForAll(patience));
    QCOMPARE(workers.runningCount(), 0);
}

void TestWorkerThreads::whatABodyHoldsGoesBeforeItCounts() {
    for (int i = 0; i < 100; ++i) {
        WorkerThreads workers;
        auto held = std::make_shared<int>(0);
        const std::weak_ptr<int> watched = held;
        workers.start([held = std::move(held)] { ++*held; });
        QVERIFY(workers.waitForAll(patience));
        QVERIFY(watched.expired());
    }
}

void TestWorkerThreads::sleepTakesItsTime() {
    WorkerThreads workers;
    const auto before = std::chrono::steady_clock::now();
    workers.sleep(40ms);
    QVERIFY(std::chrono::steady_clock::now() - before >= 40ms);
    workers.sleep(0ms);
}

void TestWorkerThreads::closeEndsASleep() {
    WorkerThreads workers;
    std::promise<void> cancelled;
    workers.start([&] {
        try {
            workers.sleep(1h);
        } catch (const Cancelled&) {
            cancelled.set_value();
            throw;
        }
    });
    auto future = cancelled.get_future();
    QVERIFY(future.wait_for(30ms) == std::future_status::timeout);
    workers.close();
    QVERIFY(isReady(future));
    QVERIFY(workers.waitForAll(patience));
}

void TestWorkerThreads::closeEndsEverySleep() {
    WorkerThreads workers;
    std::atomic<int> woken = 0;
    for (int i = 0; i < 20; ++i) {
        workers.start([&] {
            try {
                workers.sleep(1h);
            } catch (const Cancelled&) {
                ++woken;
            }
        });
    }
    workers.close();
    QVERIFY(workers.waitForAll(patience));
    QCOMPARE(woken.load(), 20);
}

void TestWorkerThreads::noSleepAfterClosing() {
    WorkerThreads workers;
    workers.close();
    QVERIFY_THROWS_EXCEPTION(Cancelled, workers.sleep(1h));
    QVERIFY_THROWS_EXCEPTION(Cancelled, workers.sleep(0ms));
}

void TestWorkerThreads::closingTwiceIsHarmless() {
    WorkerThreads workers;
    workers.close();
    workers.close();
    QVERIFY(workers.waitForAll(0ms));
}

void TestWorkerThreads::cancelledEndsAThreadQuietly() {
    WorkerThreads workers;
    for (int i = 0; i < 20; ++i)
        workers.start([] { throw Cancelled(); });
    QVERIFY(workers.waitForAll(patience));
}

void TestWorkerThreads::oneThatCannotBeMadeDoesNotCount() {
    WorkerThreads workers;
    {
        const NoMoreThreads none;
        QVERIFY_THROWS_EXCEPTION(std::system_error, workers.start([] {}));
    }
    QCOMPARE(workers.runningCount(), 0);
    QVERIFY(workers.waitForAll(0ms));
    workers.start([] {});
    QVERIFY(workers.waitForAll(patience));
}

void TestWorkerThreads::waitForAllWithoutAny() {
    const WorkerThreads workers;
    QVERIFY(workers.waitForAll(0ms));
}

void TestWorkerThreads::waitForAllHasALimit() {
    WorkerThreads workers;
    std::promise<void> go;
    workers.start([gone = go.get_future().share()] { gone.wait(); });
    const auto before = std::chrono::steady_clock::now();
    QVERIFY(!workers.waitForAll(40ms));
    QVERIFY(std::chrono::steady_clock::now() - before >= 40ms);
    go.set_value();
    QVERIFY(workers.waitForAll(patience));
}

void TestWorkerThreads::oneThatHangsIsLeftBehind() {
    std::promise<void> go;
    std::promise<void> over;
    {
        WorkerThreads workers;
        workers.start([gone = go.get_future().share(), &over] {
            gone.wait();
            over.set_value();
        });
        workers.close();
        QVERIFY(!workers.waitForAll(20ms));
    }
    go.set_value();
    auto future = over.get_future();
    QVERIFY(isReady(future));
}

void TestWorkerThreads::destructionEndsASleep() {
    for (int i = 0; i < 50; ++i) {
        auto workers = std::make_unique<WorkerThreads>();
        std::atomic<pid_t> sleeper = 0;
        std::promise<void> cancelled;
        workers->start([&cancelled, &sleeper, pool = workers.get()] {
            sleeper = ::gettid();
            try {
                pool->sleep(1h);
            } catch (const Cancelled&) {
                cancelled.set_value();
            }
        });
        // Nothing else can make it wait from there on.
        QTRY_VERIFY(sleeper != 0 && stateOfProcess(sleeper) == 'S');
        workers.reset();
        auto future = cancelled.get_future();
        QVERIFY(isReady(future));
    }
}

REELSHIFT_TEST(tst_workerthreads, TestWorkerThreads, QCoreApplication)
#include "tst_workerthreads.moc"
