#include "platform/ChildProcess.h"

#include "platform/ChildProcesses.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

int millisecondsUntil(std::optional<Clock::time_point> deadline) {
    if (!deadline)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

enum class PipeState { Data, Empty, EndOfStream };

PipeState readAvailable(int fd, QByteArray& buffer, qsizetype most) {
    std::array<char, 65536> chunk;
    qsizetype taken = 0;
    while (taken < most) {
        const auto wanted = std::min<qsizetype>(most - taken, chunk.size());
        const ssize_t got = ::read(fd, chunk.data(), static_cast<size_t>(wanted));
        if (got > 0) {
            buffer.append(chunk.data(), got);
            taken += got;
        } else if (got == 0) {
            return taken > 0 ? PipeState::Data : PipeState::EndOfStream;
        } else if (errno != EINTR) {
            break;
        }
    }
    return taken > 0 ? PipeState::Data : PipeState::Empty;
}

} // namespace

ChildProcess::ChildProcess(ChildProcesses& owner, std::function<void()> onEnd)
    : owner_(owner), onEnd_(std::move(onEnd)), wakeFd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

ChildProcess::~ChildProcess() {
    for (const int fd : {pidFd_, readEnd_, wakeFd_}) {
        if (fd >= 0)
            ::close(fd);
    }
}

std::optional<ProcessEnd> ChildProcess::end() const {
    const std::lock_guard lock(mutex_);
    return end_;
}

std::optional<ProcessEnd> ChildProcess::waitForEnd(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    ended_.wait_for(lock, limit, [this] { return end_.has_value(); });
    return end_;
}

ChildProcess::Read ChildProcess::read(QByteArray& buffer,
                                      std::optional<std::chrono::milliseconds> limit) {
    const auto deadline = limit ? std::optional(Clock::now() + *limit) : std::nullopt;
    for (;;) {
        // Asked before the pipe is read: what an ended process said is in the pipe by now.
        if (end())
            return readLastWords(buffer);
        if (readEnd_ >= 0 && !endOfStream_) {
            const PipeState state = readAvailable(readEnd_, buffer, largestRead);
            if (state == PipeState::Data)
                return Read::Data;
            endOfStream_ = state == PipeState::EndOfStream;
        }

        std::array<pollfd, 2> waited{pollfd{wakeFd_, POLLIN, 0},
                                     pollfd{endOfStream_ ? -1 : readEnd_, POLLIN, 0}};
        const int ready = ::poll(waited.data(), waited.size(), millisecondsUntil(deadline));
        if (ready == 0)
            return Read::TimedOut;
        if (ready > 0 && waited[0].revents != 0) {
            drainWakeups();
            if (!end())
                return Read::Woken;
        }
    }
}

// All of it as one piece, so that a grandchild that goes on speaking is not listened to any longer.
ChildProcess::Read ChildProcess::readLastWords(QByteArray& buffer) {
    if (!lastWordsUntil_)
        lastWordsUntil_ = Clock::now() + lastWords;
    const qsizetype before = buffer.size();
    while (readEnd_ >= 0 && !endOfStream_ && buffer.size() - before < largestRead) {
        const qsizetype most = largestRead - (buffer.size() - before);
        const PipeState state = readAvailable(readEnd_, buffer, most);
        endOfStream_ = state == PipeState::EndOfStream;
        if (state != PipeState::Empty)
            continue;
        pollfd waited{readEnd_, POLLIN, 0};
        if (::poll(&waited, 1, millisecondsUntil(lastWordsUntil_)) == 0)
            endOfStream_ = true;
    }
    // What a full read leaves is more than a pipe holds, or a grandchild's.
    endOfStream_ = true;
    return buffer.size() > before ? Read::Data : Read::Ended;
}

void ChildProcess::wakeReader() {
    const uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeFd_, &one, sizeof one);
}

void ChildProcess::drainWakeups() const {
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = ::read(wakeFd_, &count, sizeof count);
}

bool ChildProcess::suspend() {
    bool suspended = false;
    owner_.postAndWait([&] { suspended = owner_.suspend(*this); });
    return suspended;
}

void ChildProcess::resume() {
    owner_.postAndWait([this] { owner_.signal(*this, SIGCONT); });
}

bool ChildProcess::terminate() {
    bool sent = false;
    owner_.postAndWait([&] { sent = owner_.signal(*this, SIGTERM); });
    return sent;
}

bool ChildProcess::interrupt() {
    bool sent = false;
    owner_.postAndWait([&] { sent = owner_.signal(*this, SIGINT); });
    return sent;
}

bool ChildProcess::kill() {
    bool sent = false;
    owner_.postAndWait([&] { sent = owner_.signal(*this, SIGKILL); });
    return sent;
}

void ChildProcess::setEnd(ProcessEnd end) {
    {
        const std::lock_guard lock(mutex_);
        if (end_)
            return;
        end_ = end;
        ended_.notify_all();
    }
    wakeReader();
    if (onEnd_)
        onEnd_();
}
