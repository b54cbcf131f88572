#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

/// Thrown where the program is closing: in a thread whose closure was dropped before it began, by
/// a wait of the main thread, and by a box that went without an answer. Not a std::exception, so
/// that no handler for failures takes it for one.
struct Cancelled final {};

/// Hands closures of other threads to the main thread and keeps the callers waiting until they
/// have returned. Knows nothing of an event loop: `wake` must see to it that the main thread calls
/// `runPending` soon. Made on the main thread.
class MainThreadCalls final {
public:
    explicit MainThreadCalls(std::function<void()> wake);
    /// Closes, and waits until every caller that was kept waiting has gone.
    ~MainThreadCalls();
    MainThreadCalls(const MainThreadCalls&) = delete;
    MainThreadCalls& operator=(const MainThreadCalls&) = delete;

    [[nodiscard]] bool isMainThread() const { return std::this_thread::get_id() == mainThread_; }
    /// Any thread.
    [[nodiscard]] bool isClosing() const;

    /// Calls `f` on the main thread and returns what it returns; at once when called there. A
    /// closure that began is waited for, and what it throws is thrown here. Throws Cancelled when
    /// the program closes before it began. Any thread.
    template <typename F> auto onMainThread(F&& f) -> std::invoke_result_t<F&> {
        using Result = std::invoke_result_t<F&>;
        if (isMainThread())
            return f();
        if constexpr (std::is_void_v<Result>) {
            runAndWait([&f] { f(); });
        } else {
            std::optional<Result> result;
            runAndWait([&f, &result] { result.emplace(f()); });
            return std::move(*result);
        }
    }

    /// Runs what is queued, also from within a closure that runs a loop of its own. Main thread.
    void runPending();
    /// From now on nothing begins any more: queued closures are dropped. Any thread.
    void close();

private:
    struct Call;

    void runAndWait(std::function<void()> closure);

    const std::thread::id mainThread_;
    const std::function<void()> wake_;
    mutable std::mutex mutex_;
    std::condition_variable finished_;
    std::deque<std::shared_ptr<Call>> queue_;
    int callers_ = 0;
    bool closing_ = false;
};
