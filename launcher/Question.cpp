#include "launcher/Question.h"

#include "launcher/Exec.h"
#include "system/Process.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestAnswer = 1 << 20;
// No step of the patience is longer: what goes beyond it is the time of a stopped process.
constexpr std::chrono::milliseconds step{100};

[[noreturn]] void answer(const std::string& program, const Arguments& arguments, pid_t asker,
                         const Pipe& answers, Streams streams) {
    const bool isAskerAlive = endWithParent(asker);
    const Descriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
    const int errors = streams == Streams::Both ? answers.writeEnd.number() : nothing.number();
    if (isAskerAlive && nothing.isOpen() &&
        setStandardStreams(nothing.number(), answers.writeEnd.number(), errors))
        becomeProgram(program, arguments);
    ::_exit(127);
}

/// False when the patience is at its end.
bool waitForMore(int fd, Clock::duration& patience) {
    while (patience > Clock::duration::zero()) {
        const auto before = Clock::now();
        pollfd waited{fd, POLLIN, 0};
        if (::poll(&waited, 1, static_cast<int>(step.count())) > 0)
            return true;
        patience -= std::min<Clock::duration>(Clock::now() - before, step);
    }
    return false;
}

std::string readFor(Clock::duration patience, int fd) {
    std::string text;
    std::array<char, 16384> bytes;
    while (text.size() < longestAnswer && waitForMore(fd, patience)) {
        const ssize_t got = ::read(fd, bytes.data(), bytes.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        text.append(bytes.data(), static_cast<std::size_t>(got));
    }
    return text;
}

} // namespace

std::string answerOf(const std::string& program, const Arguments& arguments,
                     std::chrono::milliseconds limit, Streams streams) {
    Pipe answers = Pipe::open();
    if (!answers.isOpen())
        return {};
    const pid_t asker = ::getpid();
    const pid_t pid = ::fork();
    if (pid == 0)
        answer(program, arguments, asker, answers, streams);
    if (pid < 0)
        return {};
    answers.writeEnd.close();
    std::string text = readFor(limit, answers.readEnd.number());
    // At the end of its answer it is about to leave by itself, and nobody waits for how it does.
    ::kill(pid, SIGKILL);
    while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    return text;
}
