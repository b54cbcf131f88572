#include "launcher/ErrorStreamFilter.h"

#include "system/Process.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace {

constexpr int out = STDERR_FILENO;

/// False when nobody reads any more.
bool writeAll(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(out, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd waited{out, POLLOUT, 0};
            ::poll(&waited, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

class Filter final {
public:
    Filter(ReportRewriter rewriter, int in, int encoderEnd, pid_t encoder)
        : rewriter_(std::move(rewriter)), in_(in), encoderEnd_(encoderEnd), encoder_(encoder) {}

    void run();

private:
    [[nodiscard]] bool encoderHasEnded() const;
    void waitForSomething();
    /// False at the end of the stream, or when nobody reads any more.
    bool passOn(std::size_t most);
    void passOnTheRest();

    ReportRewriter rewriter_;
    const int in_;
    const int encoderEnd_; ///< readable when it has ended; -1 without pidfds
    const pid_t encoder_;
    bool isReadable_ = false;
    bool isReaderGone_ = false;
    std::array<char, 65536> bytes_{};
};

void Filter::run() {
    for (;;) {
        waitForSomething();
        if (isReaderGone_)
            return;
        // Asked before the stream is read: what an ended encoder has said is in the pipe by now.
        if (encoderHasEnded()) {
            passOnTheRest();
            return;
        }
        if (isReadable_ && !passOn(bytes_.size()))
            return;
    }
}

bool Filter::encoderHasEnded() const {
    if (encoderEnd_ < 0)
        return ::getppid() != encoder_;
    pollfd end{encoderEnd_, POLLIN, 0};
    return ::poll(&end, 1, 0) > 0;
}

void Filter::waitForSomething() {
    std::array<pollfd, 3> waited{pollfd{in_, POLLIN, 0}, pollfd{encoderEnd_, POLLIN, 0},
                                 pollfd{out, 0, 0}};
    const int ready =
        ::poll(waited.data(), waited.size(), encoderEnd_ < 0 ? pollIntervalWithoutPidFds : -1);
    isReadable_ = ready > 0 && waited[0].revents != 0;
    isReaderGone_ = ready > 0 && (waited[2].revents & (POLLERR | POLLNVAL)) != 0;
}

bool Filter::passOn(std::size_t most) {
    const ssize_t got = ::read(in_, bytes_.data(), std::min(most, bytes_.size()));
    if (got < 0)
        return errno == EINTR || errno == EAGAIN;
    if (got == 0) {
        writeAll(rewriter_.finish());
        return false;
    }
    return writeAll(rewriter_.add({bytes_.data(), static_cast<std::size_t>(got)}));
}

void Filter::passOnTheRest() {
    int left = 0;
    while (::ioctl(in_, FIONREAD, &left) == 0 && left > 0) {
        if (!passOn(static_cast<std::size_t>(left)))
            return;
    }
    writeAll(rewriter_.finish());
}

void ignoreWhatIsMeantForTheEncoder() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGTTIN, SIGTTOU, SIGPIPE})
        ::signal(number, SIG_IGN);
}

void letGoOfEverythingBut(int in, int encoderEnd) {
    const int nothing = ::open("/dev/null", O_RDWR);
    (void)setStandardStreams(nothing, nothing, -1);
    const unsigned first = static_cast<unsigned>(std::min(in, encoderEnd < 0 ? in : encoderEnd));
    const unsigned second = static_cast<unsigned>(std::max(in, encoderEnd));
    ::syscall(SYS_close_range, STDERR_FILENO + 1U, first - 1, 0U);
    if (second > first + 1)
        ::syscall(SYS_close_range, first + 1, second - 1, 0U);
    ::syscall(SYS_close_range, second + 1, ~0U, 0U);
    if (::chdir("/") != 0)
        return; // only keeps a volume busy
}

} // namespace

bool startErrorStreamFilter(ReportRewriter rewriter) {
    Pipe said = Pipe::open();
    if (!said.isOpen())
        return false;
    const pid_t encoder = ::getpid();
    const Descriptor encoderEnd = openPidFd(encoder);
    const pid_t pid = ::fork();
    if (pid < 0)
        return false;
    if (pid > 0)
        return setStandardStreams(-1, -1, said.writeEnd.number());
    ignoreWhatIsMeantForTheEncoder();
    ::prctl(PR_SET_NAME, "reelshift-words");
    said.writeEnd.close();
    letGoOfEverythingBut(said.readEnd.number(), encoderEnd.number());
    Filter(std::move(rewriter), said.readEnd.number(), encoderEnd.number(), encoder).run();
    ::_exit(0);
}
