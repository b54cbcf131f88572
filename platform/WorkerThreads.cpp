#include "platform/WorkerThreads.h"

#include "platform/MainThreadCalls.h"
#include "platform/PlatformLog.h"

#include <QScopeGuard>

#include <condition_variable>
#include <mutex>
#include <thread>

struct WorkerThreads::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    int running = 0;
    bool closing = false;

    void threadEnded() {
        const std::lock_guard lock(mutex);
        --running;
        changed.notify_all();
    }
};

WorkerThreads::WorkerThreads() : shared_(std::make_shared<Shared>()) {}

WorkerThreads::~WorkerThreads() {
    close();
}

int WorkerThreads::runningCount() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->running;
}

void WorkerThreads::start(std::function<void()> body) {
    {
        const std::lock_guard lock(shared_->mutex);
        ++shared_->running;
    }
    auto startFailed = qScopeGuard([shared = shared_] { shared->threadEnded(); });
    std::thread([shared = shared_, body = std::move(body)]() mutable {
        try {
            body();
        } catch (const Cancelled&) {
        } catch (const std::exception& failure) {
            qCWarning(lcPlatform, "a thread ended early: %s", failure.what());
        }
        // What it captured goes before the thread counts as ended.
        body = nullptr;
        shared->threadEnded();
    }).detach();
    startFailed.dismiss();
}

void WorkerThreads::sleep(std::chrono::milliseconds time) const {
    // Kept: the sleeper may wake after this object is gone.
    const std::shared_ptr<Shared> shared = shared_;
    std::unique_lock lock(shared->mutex);
    if (shared->changed.wait_for(lock, time, [&] { return shared->closing; }))
        throw Cancelled();
}

void WorkerThreads::close() {
    const std::lock_guard lock(shared_->mutex);
    shared_->closing = true;
    shared_->changed.notify_all();
}

bool WorkerThreads::waitForAll(std::chrono::milliseconds limit) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->changed.wait_for(lock, limit, [this] { return shared_->running == 0; });
}
