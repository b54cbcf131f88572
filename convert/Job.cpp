#include "convert/Job.h"

#include "convert/ConvertLog.h"
#include "platform/MainThread.h"

#include <system_error>
#include <utility>

namespace {

constexpr auto longestRemoval = std::chrono::seconds(1);

} // namespace

Job::Job(JobOrder ordered, JobRow shown) : order(std::move(ordered)), row(std::move(shown)) {}

bool Job::hasFinished() const {
    const auto end = task_->end();
    return end && end->succeeded() && news.allowWholeFile();
}

void Job::launched(std::shared_ptr<ChildProcess> task) {
    task_ = std::move(task);
    life_.launched();
}

bool Job::suspend() {
    if (!task_->suspend()) {
        life_.suspendDidFail();
        return false;
    }
    life_.suspended();
    news.setSuspended(true);
    return true;
}

void Job::resume() {
    task_->resume();
    life_.resumed();
    news.setSuspended(false);
}

void Job::ask(EncoderLife::Request request) {
    if (life_.isSettled())
        return;
    life_.ask(request);
    news.askForEnd();
    if (task_)
        task_->wakeReader();
}

bool Job::tellToEnd() {
    task_->resume(); // a stopped process cannot obey
    return end(&ChildProcess::terminate);
}

bool Job::kill() {
    return end(&ChildProcess::kill);
}

void Job::interrupt() {
    end(&ChildProcess::interrupt);
}

bool Job::end(bool (ChildProcess::*signal)()) {
    const bool lives = (task_.get()->*signal)();
    if (lives)
        life_.toldToEnd();
    return lives;
}

void Job::removeUnfinishedOutput(MainThread& mainThread) {
    // Before its encoder a job has written nothing.
    if (!task_ || isOutputOutOfReach_ || hasFinished())
        return;
    const auto removal = [output = plan_.output] {
        output.remove();
        return true;
    };
    try {
        isOutputOutOfReach_ = !mainThread.resultWithin(longestRemoval, removal);
    } catch (const std::system_error&) {
        removal(); // no thread can be had: better late than never
    }
    if (isOutputOutOfReach_)
        qCWarning(lcConvert, "the partial output could not be deleted in time: %s",
                  qPrintable(plan_.output.path()));
}
