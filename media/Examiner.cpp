#include "media/Examiner.h"

#include "platform/WorkerThreads.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <system_error>

struct Examiner::Queue {
    Queue(const ProbeRunner& probeRunner, std::function<void()> onLook)
        : runner(probeRunner), lookIsOver(std::move(onLook)) {}

    const ProbeRunner& runner;
    const std::function<void()> lookIsOver;

    std::mutex mutex;
    std::condition_variable threadHasGone;
    std::deque<std::shared_ptr<Examination>> waiting;
    std::vector<std::shared_ptr<Examination>> running;
    int threads = 0;
    bool closed = false;

    // One after the other, until none waits.
    void work() {
        std::unique_lock lock(mutex);
        while (!closed && !waiting.empty()) {
            const std::shared_ptr<Examination> next = waiting.front();
            waiting.pop_front();
            running.push_back(next);
            lock.unlock();
            next->run(runner, lookIsOver);
            lock.lock();
            running.erase(std::find(running.begin(), running.end(), next));
        }
        --threads;
        threadHasGone.notify_all();
    }

    void forget(const std::shared_ptr<Examination>& examination) {
        examination->stop();
        const std::lock_guard lock(mutex);
        std::erase(waiting, examination);
    }

    void close() {
        const std::lock_guard lock(mutex);
        closed = true;
        waiting.clear();
        for (const auto& each : running)
            each->stop();
    }
};

Examiner::Examiner(WorkerThreads& workers, const ProbeRunner& runner,
                   std::function<void()> lookIsOver, int atOnce)
    : workers_(workers),
      atOnce_(std::max(atOnce, 1)),
      queue_(std::make_shared<Queue>(runner, std::move(lookIsOver))) {}

Examiner::~Examiner() {
    queue_->close();
    std::unique_lock lock(queue_->mutex);
    queue_->threadHasGone.wait_for(lock, longestGoodbye, [this] { return queue_->threads == 0; });
}

std::shared_ptr<const Examination> Examiner::examine(const QString& moviePath, bool twice,
                                                     Place place) {
    const auto examination = std::make_shared<Examination>(moviePath, twice);
    bool isThreadNeeded = false;
    {
        const std::lock_guard lock(queue_->mutex);
        queue_->waiting.insert(
            place == Place::First ? queue_->waiting.begin() : queue_->waiting.end(), examination);
        isThreadNeeded = queue_->threads < atOnce_;
        queue_->threads += isThreadNeeded ? 1 : 0;
    }
    if (isThreadNeeded) {
        try {
            workers_.start([queue = queue_] { queue->work(); });
        } catch (const std::system_error&) {
            const std::lock_guard lock(queue_->mutex);
            // The others will come to it.
            if (--queue_->threads == 0) {
                queue_->waiting.clear();
                throw;
            }
        }
    }
    return {examination.get(),
            [queue = queue_, examination](const Examination*) { queue->forget(examination); }};
}
