#include "launcher/Question.h"

#include "launcher/Process.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestAnswer = 1 << 20;

[[noreturn]] void answer(const std::string& program, const Arguments& arguments, pid_t asker,
                         const Pipe& answers) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const Descriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (::getppid() == asker && ::dup2(nothing.number(), STDIN_FILENO) >= 0 &&
        ::dup2(answers.writeEnd.number(), STDOUT_FILENO) >= 0 &&
        ::dup2(answers.writeEnd.number(), STDERR_FILENO) >= 0)
        becomeProgram(program, arguments);
    ::_exit(127);
}

std::string readUntil(Clock::time_point deadline, int fd) {
    std::string text;
    std::array<char, 16384> bytes;
    while (text.size() < longestAnswer) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd waited{fd, POLLIN, 0};
        const int ready = left.count() > 0 ? ::poll(&waited, 1, static_cast<int>(left.count())) : 0;
        if (ready < 0 && errno == EINTR)
            continue;
        const ssize_t got = ready > 0 ? ::read(fd, bytes.data(), bytes.size()) : 0;
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
                     std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    Pipe answers = Pipe::open();
    if (!answers.isOpen())
        return {};
    const pid_t asker = ::getpid();
    const pid_t pid = ::fork();
    if (pid == 0)
        answer(program, arguments, asker, answers);
    if (pid < 0)
        return {};
    answers.writeEnd.close();
    std::string text = readUntil(deadline, answers.readEnd.number());
    // At the end of its answer it is about to leave by itself, and nobody waits for how it does.
    ::kill(pid, SIGKILL);
    while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    return text;
}
