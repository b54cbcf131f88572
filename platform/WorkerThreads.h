#pragma once

#include <chrono>
#include <functional>
#include <memory>

/// The threads that wait for slow things, each for one task. They are released when the program
/// closes and waited for once, with a limit: one that hangs in the kernel is left behind, so what a
/// thread uses after a call that can hang must be its own. Any thread; owned by the controller.
class WorkerThreads final {
public:
    WorkerThreads();
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

    [[nodiscard]] int runningCount() const;

    /// Runs `body` on a thread of its own. Cancelled ends it quietly; a failure that it throws is
    /// logged. Throws std::system_error where the computer has no thread left.
    void start(std::function<void()> body);
    /// Waits on a worker thread; throws Cancelled when the program closes meanwhile.
    void sleep(std::chrono::milliseconds time) const;
    /// Ends every sleep().
    void close();
    /// False when some still run after `limit`.
    [[nodiscard]] bool waitForAll(std::chrono::milliseconds limit) const;

private:
    struct Shared;

    std::shared_ptr<Shared> shared_;
};
