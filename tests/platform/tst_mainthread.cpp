#include "TestProgram.h"
#include "platform/MainThread.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

template <typename F> bool isCancelled(F&& f) {
    try {
        f();
    } catch (const Cancelled&) {
        return true;
    }
    return false;
}

} // namespace

class tst_MainThread : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void waitsAtLeastTheTime();
    void waitsForTheConditionToo();
    void conditionThatHoldsAlready();
    void wakeOfAnotherThread();
    void closuresRunInsideAWait();
    void timersRunInsideAWait();
    void resultOfAnotherThread();
    void failureOfAnotherThread();
    void nestedWaits();
    void conditionOfTheOuterWaitDuringTheInner();
    void waitOverComesOnce();
    void closeEndsTheWait();
    void closeEndsNestedWaits();
    void closeLeavesAHangingThreadBehind();
    void aLimitedWaitStandsStill();
    void aLimitedWaitLeavesAHangingThreadBehind();
    void nothingWaitsAfterClosing();
    void quittingEndsTheWait();
    void callersAreReleasedOnDestruction();
    void lateWakeIsHarmless();
};

void tst_MainThread::waitsAtLeastTheTime() {
    MainThread mainThread;
    QElapsedTimer clock;
    clock.start();
    mainThread.waitFor(60ms);
    QVERIFY(clock.elapsed() >= 60);
    QVERIFY(!mainThread.isWaiting());
}

void tst_MainThread::waitsForTheConditionToo() {
    MainThread mainThread;
    QElapsedTimer clock;
    clock.start();
    bool done = false;
    QTimer::singleShot(80, [&] {
        done = true;
        mainThread.wake();
    });
    mainThread.waitUntil([&] { return done; }, 20ms);
    QVERIFY(done);
    QVERIFY(clock.elapsed() >= 80);

    // The other way round: an early condition does not shorten the time.
    clock.start();
    mainThread.waitUntil([] { return true; }, 60ms);
    QVERIFY(clock.elapsed() >= 60);
}

void tst_MainThread::conditionThatHoldsAlready() {
    MainThread mainThread;
    int asked = 0;
    mainThread.waitUntil([&] {
        ++asked;
        return true;
    });
    QCOMPARE(asked, 1);
}

void tst_MainThread::wakeOfAnotherThread() {
    MainThread mainThread;
    std::atomic<int> count = 0;
    std::thread worker([&] {
        while (++count < 100)
            mainThread.wake();
        mainThread.wake();
    });
    mainThread.waitUntil([&] { return count >= 100; });
    worker.join();
    QCOMPARE(count.load(), 100);
}

void tst_MainThread::closuresRunInsideAWait() {
    MainThread mainThread;
    const auto main = std::this_thread::get_id();
    int ran = 0;
    bool waiting = false;
    std::thread worker([&] {
        for (int call = 0; call < 100; ++call) {
            const auto thread = mainThread.onMainThread([&] {
                ++ran;
                waiting = mainThread.isWaiting();
                return std::this_thread::get_id();
            });
            QCOMPARE(thread, main);
        }
    });
    // No wake: every closure lets the condition be asked again.
    mainThread.waitUntil([&] { return ran == 100; });
    worker.join();
    QVERIFY(waiting);
}

void tst_MainThread::timersRunInsideAWait() {
    MainThread mainThread;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        if (++ticks == 5)
            mainThread.wake();
    });
    timer.start(1);
    mainThread.waitUntil([&] { return ticks >= 5; });
    QVERIFY(ticks >= 5);
}

void tst_MainThread::resultOfAnotherThread() {
    MainThread mainThread;
    const auto main = std::this_thread::get_id();
    QVERIFY(mainThread.waitForResult([] { return std::this_thread::get_id(); }) != main);
    QCOMPARE(mainThread.waitForResult([] { return QStringLiteral("read"); }),
             QStringLiteral("read"));
    QCOMPARE(*mainThread.waitForResult(
                 [number = std::make_unique<int>(5)]() mutable { return std::move(number); }),
             5);
}

void tst_MainThread::failureOfAnotherThread() {
    MainThread mainThread;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, mainThread.waitForResult([]() -> int {
        throw std::out_of_range("row");
    }));
    QVERIFY(!mainThread.isWaiting());
}

void tst_MainThread::nestedWaits() {
    MainThread mainThread;
    QStringList order;
    bool over = false;
    std::thread worker([&] {
        mainThread.onMainThread([&] {
            order << QStringLiteral("inner begins");
            mainThread.waitFor(30ms);
            order << QStringLiteral("inner ends");
            over = true;
        });
    });
    mainThread.waitUntil([&] { return over; });
    order << QStringLiteral("outer ends");
    worker.join();
    QCOMPARE(order, QStringList({QStringLiteral("inner begins"), QStringLiteral("inner ends"),
                                 QStringLiteral("outer ends")}));
}

void tst_MainThread::conditionOfTheOuterWaitDuringTheInner() {
    MainThread mainThread;
    bool outer = false;
    bool inner = false;
    QTimer::singleShot(0, &mainThread, [&] {
        // Wakes the inner wait alone; the outer one must look again afterwards.
        QTimer::singleShot(5, &mainThread, [&] {
            outer = true;
            mainThread.wake();
        });
        mainThread.waitUntil([&] { return outer; }, 30ms);
        inner = true;
    });
    mainThread.waitUntil([&] { return outer; });
    QVERIFY(inner);
}

void tst_MainThread::waitOverComesOnce() {
    MainThread mainThread;
    QSignalSpy over(&mainThread, &MainThread::waitOver);
    QTimer::singleShot(0, &mainThread, [&] {
        mainThread.waitFor(5ms);
        QVERIFY(mainThread.isWaiting());
        QCOMPARE(over.count(), 0);
    });
    mainThread.waitFor(30ms);
    QCOMPARE(over.count(), 1);
}

void tst_MainThread::closeEndsTheWait() {
    MainThread mainThread;
    QSignalSpy over(&mainThread, &MainThread::waitOver);
    QTimer::singleShot(5, &mainThread, [&] { mainThread.close(); });
    QVERIFY(isCancelled([&] { mainThread.waitUntil([] { return false; }); }));
    QVERIFY(mainThread.isClosing());
    QVERIFY(!mainThread.isWaiting());
    QCOMPARE(over.count(), 1);
}

void tst_MainThread::closeEndsNestedWaits() {
    MainThread mainThread;
    bool inner = false;
    QTimer::singleShot(0, &mainThread, [&] {
        QTimer::singleShot(0, &mainThread, [&] { mainThread.close(); });
        inner = isCancelled([&] { mainThread.waitFor(1h); });
    });
    const bool outer = isCancelled([&] { mainThread.waitUntil([] { return false; }, 1h); });
    QVERIFY(inner);
    QVERIFY(outer);
}

void tst_MainThread::closeLeavesAHangingThreadBehind() {
    struct Share {
        std::mutex mutex;
        std::condition_variable changed;
        bool answers = false;
        bool left = false;
    };
    const auto share = std::make_shared<Share>();
    {
        MainThread mainThread;
        QTimer::singleShot(5, &mainThread, [&] { mainThread.close(); });
        QVERIFY(isCancelled([&] {
            mainThread.waitForResult([share] {
                std::unique_lock lock(share->mutex);
                share->changed.wait(lock, [&] { return share->answers; });
                share->left = true;
                share->changed.notify_all();
                return 1;
            });
        }));
    }
    // It comes back after the main thread's object has gone.
    std::unique_lock lock(share->mutex);
    share->answers = true;
    share->changed.notify_all();
    share->changed.wait(lock, [&] { return share->left; });
}

void tst_MainThread::aLimitedWaitStandsStill() {
    MainThread mainThread;
    bool turned = false;
    QTimer::singleShot(0, &mainThread, [&] { turned = true; });
    const auto number = mainThread.resultWithin(20s, [] {
        std::this_thread::sleep_for(20ms);
        return 5;
    });
    QVERIFY(!turned);
    QCOMPARE(number, std::optional(5));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)mainThread.resultWithin(20s, []() -> int {
        throw std::out_of_range("row");
    }));
    QVERIFY(mainThread.waitForHelpers(20s));
}

void tst_MainThread::aLimitedWaitLeavesAHangingThreadBehind() {
    MainThread mainThread;
    const auto answers = std::make_shared<std::promise<void>>();
    const auto hanging = mainThread.resultWithin(5ms, [answers] {
        answers->get_future().wait();
        return 1;
    });
    QVERIFY(!hanging);
    QVERIFY(!mainThread.waitForHelpers(5ms));
    answers->set_value();
    QVERIFY(mainThread.waitForHelpers(20s));
}

void tst_MainThread::nothingWaitsAfterClosing() {
    MainThread mainThread;
    mainThread.close();
    QVERIFY(isCancelled([&] { mainThread.waitFor(1h); }));
    QVERIFY(isCancelled([&] { mainThread.waitUntil([] { return true; }); }));
}

void tst_MainThread::quittingEndsTheWait() {
    // Without close(): no loop can run any more, and the wait must not spin.
    MainThread mainThread;
    bool cancelled = false;
    QTimer::singleShot(0, &mainThread, [&] {
        QTimer::singleShot(0, &mainThread, [] { QCoreApplication::exit(); });
        cancelled = isCancelled([&] { mainThread.waitUntil([] { return false; }, 1h); });
    });
    QCoreApplication::exec();
    QVERIFY(cancelled);
    QVERIFY(!mainThread.isWaiting());
}

void tst_MainThread::callersAreReleasedOnDestruction() {
    auto mainThread = std::make_unique<MainThread>();
    std::atomic<bool> cancelled = false;
    std::atomic<bool> called = false;
    std::thread worker([&, main = mainThread.get()] {
        // Handled while the loop still turns, so that the second call is known to come soon.
        main->onMainThread([&] { called = true; });
        cancelled = isCancelled([&] {
            for (;;)
                main->onMainThread([] {});
        });
    });
    QTRY_VERIFY(called);
    mainThread->close();
    worker.join();
    mainThread.reset();
    QVERIFY(cancelled);
}

void tst_MainThread::lateWakeIsHarmless() {
    int handled = 0;
    {
        MainThread mainThread;
        mainThread.wake();
        ++handled;
    }
    QCoreApplication::processEvents();
    QCOMPARE(handled, 1);
}

REELSHIFT_TEST(tst_mainthread, tst_MainThread, QCoreApplication)
#include "tst_mainthread.moc"
