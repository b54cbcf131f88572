// Without Qt, so that the thread sanitizer sees every lock.

#include "platform/MainThreadCalls.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::atomic<int> failures = 0;

void check(bool good, const char* what, int line) {
    if (good)
        return;
    ++failures;
    std::fprintf(stderr, "FAIL line %d: %s\n", line, what);
}

#define CHECK(condition) check((condition), #condition, __LINE__)

/// The least that makes a main loop: it sleeps until it is woken.
class Loop {
public:
    void wake() {
        const std::lock_guard lock(mutex_);
        ++wakes_;
        woken_.notify_all();
    }

    /// Runs what is handed over until `done`; every change of `done` must be followed by a wake.
    void runUntil(MainThreadCalls& calls, const std::function<bool()>& done) {
        for (;;) {
            seen_ = wakes();
            // Also before the first sleep: the loop outside may have seen the wake already.
            calls.runPending();
            if (done())
                return;
            waitForWakes(seen_ + 1);
        }
    }

    /// Sleeps until that many wakes have come, counted from the beginning.
    void waitForWakes(int count) {
        std::unique_lock lock(mutex_);
        woken_.wait(lock, [&] { return wakes_ >= count; });
    }

private:
    int wakes() {
        const std::lock_guard lock(mutex_);
        return wakes_;
    }

    std::mutex mutex_;
    std::condition_variable woken_;
    int wakes_ = 0;
    int seen_ = 0;
};

/// A main thread and its workers.
class Program {
public:
    Program() : calls([this] { loop.wake(); }) {}

    void start(std::function<void()> work) {
        ++running_;
        workers_.emplace_back([this, work = std::move(work)] {
            work();
            --running_;
            loop.wake();
        });
    }

    /// Runs the main loop until every worker is done.
    void run() {
        loop.runUntil(calls, [&] { return running_ == 0; });
        for (std::thread& worker : workers_)
            worker.join();
        workers_.clear();
    }

    Loop loop;
    MainThreadCalls calls;

private:
    std::atomic<int> running_ = 0;
    std::vector<std::thread> workers_;
};

template <typename F> bool isCancelled(F&& f) {
    try {
        f();
    } catch (const Cancelled&) {
        return true;
    }
    return false;
}

void onTheMainThreadItself() {
    Program program;
    CHECK(program.calls.isMainThread());
    // At once: no loop runs here.
    CHECK(program.calls.onMainThread([] { return 7; }) == 7);
}

void returnsWhatTheClosureReturns() {
    Program program;
    const auto mainThread = std::this_thread::get_id();
    program.start([&] {
        CHECK(!program.calls.isMainThread());
        CHECK(program.calls.onMainThread([] { return std::this_thread::get_id(); }) == mainThread);
        CHECK(program.calls.onMainThread([] { return std::string(1000, 'x'); }).size() == 1000);
        CHECK(*program.calls.onMainThread([] { return std::make_unique<int>(5); }) == 5);
        bool ran = false;
        program.calls.onMainThread([&] { ran = true; });
        CHECK(ran);
    });
    program.run();
}

void throwsWhatTheClosureThrows() {
    Program program;
    program.start([&] {
        std::string caught;
        try {
            program.calls.onMainThread([]() -> int { throw std::out_of_range("row 7"); });
        } catch (const std::out_of_range& failure) {
            caught = failure.what();
        }
        CHECK(caught == "row 7");
        CHECK(isCancelled([&] { program.calls.onMainThread([] { throw Cancelled(); }); }));
        // The main thread is none the worse for it.
        CHECK(program.calls.onMainThread([] { return 1; }) == 1);
    });
    program.run();
}

void keepsTheOrderOfTheQueue() {
    Program program;
    std::vector<int> order;
    for (int number = 1; number <= 5; ++number) {
        program.start(
            [&, number] { program.calls.onMainThread([&, number] { order.push_back(number); }); });
        program.loop.waitForWakes(number);
    }
    program.run();
    CHECK((order == std::vector{1, 2, 3, 4, 5}));
}

void manyHandOvers() {
    constexpr int threads = 8;
    constexpr int each = 1250;
    Program program;
    int sum = 0; // touched on the main thread alone, without a lock
    std::array<int, threads> last{};
    for (int thread = 0; thread < threads; ++thread) {
        program.start([&, thread] {
            for (int number = 1; number <= each; ++number) {
                const int before = program.calls.onMainThread([&] {
                    ++sum;
                    return std::exchange(last.at(static_cast<std::size_t>(thread)), number);
                });
                CHECK(before == number - 1);
            }
        });
    }
    program.run();
    CHECK(sum == threads * each);
}

void closingDropsWhatHasNotBegun() {
    Program program;
    bool ran = false;
    program.start(
        [&] { CHECK(isCancelled([&] { program.calls.onMainThread([&] { ran = true; }); })); });
    program.loop.waitForWakes(1);
    program.calls.close();
    program.run();
    CHECK(!ran);
    CHECK(program.calls.isClosing());
}

void closingWaitsForWhatHasBegun() {
    Program program;
    std::atomic<bool> returned = false;
    program.start([&] {
        std::string onTheCallersStack;
        const int result = program.calls.onMainThread([&] {
            program.loop.waitForWakes(2); // the second worker's closure is queued
            program.calls.close();
            CHECK(!returned);
            onTheCallersStack = "still there";
            return 5;
        });
        returned = true;
        CHECK(result == 5);
        CHECK(onTheCallersStack == "still there");
    });
    program.loop.waitForWakes(1);
    program.start(
        [&] { CHECK(isCancelled([&] { program.calls.onMainThread([] { CHECK(false); }); })); });
    program.run();
    CHECK(returned);
}

void nothingBeginsAfterClosing() {
    Program program;
    program.calls.close();
    program.start(
        [&] { CHECK(isCancelled([&] { program.calls.onMainThread([] { CHECK(false); }); })); });
    program.run();
    CHECK(program.calls.onMainThread([] { return 3; }) == 3);
}

void closureThatRunsALoop() {
    Program program;
    bool inner = false;
    program.start([&] {
        program.calls.onMainThread([&] {
            // What an open box does: the others are served meanwhile.
            program.loop.runUntil(program.calls, [&] { return inner; });
        });
        CHECK(inner);
    });
    program.loop.waitForWakes(1);
    program.start([&] { program.calls.onMainThread([&] { inner = true; }); });
    program.run();
}

void closingFromAnotherThread() {
    Program program;
    int ran = 0;
    std::atomic<int> returned = 0;
    for (int thread = 0; thread < 8; ++thread) {
        program.start([&] {
            CHECK(isCancelled([&] {
                for (;;) {
                    program.calls.onMainThread([&] { ++ran; });
                    ++returned;
                }
            }));
        });
    }
    program.start([&] {
        while (returned < 100)
            std::this_thread::yield();
        program.calls.close();
    });
    program.run();
    CHECK(ran >= 100);
    CHECK(ran == returned);
}

void destroyedUnderItsCallers() {
    Loop loop;
    std::vector<std::thread> workers;
    std::atomic<int> cancelled = 0;
    {
        MainThreadCalls calls([&] { loop.wake(); });
        for (int thread = 0; thread < 8; ++thread) {
            workers.emplace_back([&] {
                if (isCancelled([&] { calls.onMainThread([] { CHECK(false); }); }))
                    ++cancelled;
            });
        }
        loop.waitForWakes(8);
    }
    for (std::thread& worker : workers)
        worker.join();
    CHECK(cancelled == 8);
}

} // namespace

int main() {
    onTheMainThreadItself();
    returnsWhatTheClosureReturns();
    throwsWhatTheClosureThrows();
    keepsTheOrderOfTheQueue();
    manyHandOvers();
    closingDropsWhatHasNotBegun();
    closingWaitsForWhatHasBegun();
    nothingBeginsAfterClosing();
    closureThatRunsALoop();
    closingFromAnotherThread();
    destroyedUnderItsCallers();
    if (failures == 0)
        std::puts("all passed");
    return failures == 0 ? 0 : 1;
}
