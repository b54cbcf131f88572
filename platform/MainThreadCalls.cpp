#include "platform/MainThreadCalls.h"

#include <utility>

struct MainThreadCalls::Call {
    enum class State { Queued, Begun, Returned, Dropped };

    std::function<void()> closure;
    State state = State::Queued;
    std::exception_ptr thrown;
};

MainThreadCalls::MainThreadCalls(std::function<void()> wake)
    : mainThread_(std::this_thread::get_id()), wake_(std::move(wake)) {}

MainThreadCalls::~MainThreadCalls() {
    close();
    std::unique_lock lock(mutex_);
    finished_.wait(lock, [&] { return callers_ == 0; });
}

bool MainThreadCalls::isClosing() const {
    const std::lock_guard lock(mutex_);
    return closing_;
}

void MainThreadCalls::runAndWait(std::function<void()> closure) {
    const auto call = std::make_shared<Call>();
    call->closure = std::move(closure);
    {
        const std::lock_guard lock(mutex_);
        if (closing_)
            throw Cancelled();
        queue_.push_back(call);
        ++callers_;
    }
    wake_();
    std::unique_lock lock(mutex_);
    finished_.wait(lock, [&] {
        return call->state == Call::State::Returned || call->state == Call::State::Dropped;
    });
    const bool dropped = call->state == Call::State::Dropped;
    if (--callers_ == 0)
        finished_.notify_all();
    lock.unlock();
    // From here on this object may be gone.
    if (dropped)
        throw Cancelled();
    if (call->thrown)
        std::rethrow_exception(std::exchange(call->thrown, nullptr));
}

void MainThreadCalls::runPending() {
    for (;;) {
        std::shared_ptr<Call> call;
        {
            const std::lock_guard lock(mutex_);
            if (queue_.empty())
                return;
            call = std::move(queue_.front());
            queue_.pop_front();
            call->state = Call::State::Begun;
        }
        std::exception_ptr thrown;
        try {
            call->closure();
        } catch (...) {
            thrown = std::current_exception();
        }
        const std::lock_guard lock(mutex_);
        call->thrown = std::move(thrown);
        call->state = Call::State::Returned;
        finished_.notify_all();
    }
}

void MainThreadCalls::close() {
    const std::lock_guard lock(mutex_);
    closing_ = true;
    for (const auto& call : queue_)
        call->state = Call::State::Dropped;
    queue_.clear();
    finished_.notify_all();
}
