#pragma once

#include "platform/HeldInput.h"
#include "platform/Mailbox.h"
#include "platform/MainThreadCalls.h"
#include "platform/WorkerThreads.h"

#include <QObject>

#include <chrono>

/// The main thread as the others see it: closures run on it from its event loop, and its own
/// waits leave that loop turning. Main thread unless said otherwise; owned by the controller.
class MainThread final : public QObject {
    Q_OBJECT

public:
    explicit MainThread(QObject* parent = nullptr);
    ~MainThread() override;
    Q_DISABLE_COPY_MOVE(MainThread)

    /// Any thread.
    [[nodiscard]] bool isClosing() const { return calls_.isClosing(); }
    /// Whether a wait is on: what the user asks for meanwhile is put off.
    [[nodiscard]] bool isWaiting() const { return waits_ > 0; }

    /// See MainThreadCalls::onMainThread. Any thread.
    template <typename F> auto onMainThread(F&& f) { return calls_.onMainThread(f); }
    /// Lets a wait look at its condition again. Any thread.
    void wake();
    /// Does what wake() does, and nothing once this object is gone. Any thread.
    [[nodiscard]] std::function<void()> waker() const;

    /// Waits at least `atLeast` and until `done` answers true: the window repaints and closures
    /// run, user input is left for later (HeldInput), but for the wish to close a window. `done` is
    /// asked on the main thread, after every wake and every closure. Throws Cancelled when the
    /// program closes meanwhile.
    void waitUntil(const std::function<bool()>& done,
                   std::chrono::milliseconds atLeast = std::chrono::milliseconds(0));
    /// Waits `time` as above.
    void waitFor(std::chrono::milliseconds time);
    /// Runs `work`, which may hang for a while, on a thread of its own, and waits for its result
    /// as above. What it throws is thrown here. A thread that still hangs when the program closes
    /// is left behind: `work` must own what it uses. Throws std::system_error where no thread can
    /// be had.
    template <typename Work> auto waitForResult(Work work) -> std::invoke_result_t<Work&> {
        const auto shared = startHelper(std::move(work));
        waitUntil([&] {
            const std::lock_guard lock(shared->mutex);
            return shared->done;
        });
        return shared->take();
    }
    /// The same until `isGivenUp` answers true, which is asked like `done`: then there is no
    /// result, and the thread is left behind.
    template <typename Work>
    auto waitForResultUnless(const std::function<bool()>& isGivenUp, Work work)
        -> std::optional<std::invoke_result_t<Work&>> {
        const auto shared = startHelper(std::move(work));
        const auto isDone = [&] {
            const std::lock_guard lock(shared->mutex);
            return shared->done;
        };
        waitUntil([&] { return isGivenUp() || isDone(); });
        if (!isDone())
            return std::nullopt;
        return shared->take();
    }
    /// The same with the event loop standing still, so that nothing else happens meanwhile, and
    /// never longer than `limit`: then there is no result, and the thread is left behind.
    template <typename Work>
    auto resultWithin(std::chrono::milliseconds limit, Work work)
        -> std::optional<std::invoke_result_t<Work&>> {
        const auto shared = startHelper(std::move(work));
        std::unique_lock lock(shared->mutex);
        if (!shared->changed.wait_for(lock, limit, [&] { return shared->done; }))
            return std::nullopt;
        return shared->take();
    }
    /// Whether every thread of the two above has come to its end, in this time at the latest.
    [[nodiscard]] bool waitForHelpers(std::chrono::milliseconds limit) const {
        return helpers_.waitForAll(limit);
    }

    /// The program closes: closures that have not begun are dropped and every wait ends.
    void close();

Q_SIGNALS:
    /// The last wait is over.
    void waitOver();

private:
    template <typename Result> struct HelpersAnswer {
        std::mutex mutex;
        std::condition_variable changed;
        std::optional<Result> result;
        std::exception_ptr thrown;
        bool done = false;

        Result take() {
            if (thrown)
                std::rethrow_exception(thrown);
            return std::move(*result);
        }
    };

    template <typename Work> auto startHelper(Work work) {
        using Result = std::invoke_result_t<Work&>;
        const auto shared = std::make_shared<HelpersAnswer<Result>>();
        helpers_.start([shared, work = std::make_shared<Work>(std::move(work)), wakeUp = waker()] {
            std::optional<Result> result;
            std::exception_ptr thrown;
            try {
                result.emplace((*work)());
            } catch (...) {
                thrown = std::current_exception();
            }
            {
                const std::lock_guard lock(shared->mutex);
                shared->result = std::move(result);
                shared->thrown = thrown;
                shared->done = true;
                shared->changed.notify_all();
            }
            wakeUp();
        });
        return shared;
    }
    void wokenUp();

    /// For a worker that hangs in the kernel and returns late.
    const std::shared_ptr<Mailbox<MainThread>> mailbox_;
    MainThreadCalls calls_;
    WorkerThreads helpers_;
    HeldInput input_;
    class QEventLoop* innermost_ = nullptr;
    int waits_ = 0;
};
