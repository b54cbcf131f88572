#pragma once

#include "platform/MainThreadCalls.h"

#include <QObject>

#include <chrono>
#include <thread>

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

    /// Waits at least `atLeast` and until `done` answers true: the window repaints and closures
    /// run, user input is left for later. `done` is asked on the main thread, after every wake and
    /// every closure. Throws Cancelled when the program closes meanwhile.
    void waitUntil(const std::function<bool()>& done,
                   std::chrono::milliseconds atLeast = std::chrono::milliseconds(0));
    /// Waits `time` as above.
    void waitFor(std::chrono::milliseconds time);
    /// Runs `work`, which may hang for a while, on a thread of its own, and waits for its result
    /// as above. What it throws is thrown here. A thread that still hangs when the program closes
    /// is left behind: `work` must own what it uses.
    template <typename Work> auto waitForResult(Work work) -> std::invoke_result_t<Work&> {
        using Result = std::invoke_result_t<Work&>;
        struct Shared {
            std::mutex mutex;
            std::optional<Result> result;
            std::exception_ptr thrown;
            bool done = false;
        };
        const auto shared = std::make_shared<Shared>();
        std::thread([shared, work = std::move(work), wakeUp = waker()]() mutable {
            std::optional<Result> result;
            std::exception_ptr thrown;
            try {
                result.emplace(work());
            } catch (...) {
                thrown = std::current_exception();
            }
            {
                const std::lock_guard lock(shared->mutex);
                shared->result = std::move(result);
                shared->thrown = thrown;
                shared->done = true;
            }
            wakeUp();
        }).detach();
        waitUntil([&] {
            const std::lock_guard lock(shared->mutex);
            return shared->done;
        });
        if (shared->thrown)
            std::rethrow_exception(shared->thrown);
        return std::move(*shared->result);
    }

    /// The program closes: closures that have not begun are dropped and every wait ends.
    void close();

Q_SIGNALS:
    /// The last wait is over.
    void waitOver();

private:
    struct Waker;

    /// Does what wake() does, and nothing once this object is gone. Any thread.
    [[nodiscard]] std::function<void()> waker() const;
    bool event(QEvent* event) override;

    std::shared_ptr<Waker> waker_;
    MainThreadCalls calls_;
    class QEventLoop* innermost_ = nullptr;
    int waits_ = 0;
};
