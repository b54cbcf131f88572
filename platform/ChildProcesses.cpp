#include "platform/ChildProcesses.h"

#include "platform/ChildProcess.h"
#include "system/Process.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <future>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds longestSuspend{500};

// Some launchers leave it ignored to what they start: the kernel then keeps no exit status.
void keepExitStatuses() {
    struct sigaction action {};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

// The program's own handlers would run in the child until it is another program.
void forgetHandlers() {
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN &&
            action.sa_handler != SIG_DFL)
            ::signal(number, SIG_DFL);
    }
}

// Between vfork and exec, in the memory of this program: only calls that are safe there, and
// nothing is written that anybody else reads.
[[noreturn]] void becomeProgram(const char* program, char* const* arguments, pid_t parent,
                                int errorStream, int failureReport) {
    if (!endWithParent(parent))
        ::_exit(127);
    forgetHandlers();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    const int nullDevice = ::open("/dev/null", O_RDONLY);
    if (nullDevice >= 0 && setStandardStreams(nullDevice, -1, errorStream)) {
        if (nullDevice > STDERR_FILENO)
            ::close(nullDevice);
        ::execv(program, arguments);
    }
    const int failure = errno;
    [[maybe_unused]] const ssize_t written = ::write(failureReport, &failure, sizeof failure);
    ::_exit(127);
}

} // namespace

ChildProcesses::ChildProcesses() : wakeFd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    keepExitStatuses();
    thread_ = std::thread([this] { run(); });
}

ChildProcesses::~ChildProcesses() {
    post([this] {
        finishing_ = true;
        for (const auto& child : live_)
            ::kill(child->pid_, SIGKILL);
    });
    thread_.join();
    ::close(wakeFd_);
}

std::shared_ptr<ChildProcess> ChildProcesses::launch(const QString& program,
                                                     const QStringList& arguments,
                                                     std::function<void()> onEnd) {
    const std::shared_ptr<ChildProcess> child(new ChildProcess(*this, std::move(onEnd)));
    postAndWait([&] { start(child, program, arguments); });
    return child;
}

int ChildProcesses::liveCount() const {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(live_.size());
}

void ChildProcesses::run() {
    std::optional<Clock::time_point> deadline;
    for (;;) {
        runCommands();
        reapEnded();
        if (finishing_) {
            deadline = deadline.value_or(Clock::now() + longestGoodbye);
            if (live_.empty() || Clock::now() >= *deadline)
                return;
        }
        waitForSomething();
    }
}

void ChildProcesses::post(Command command) {
    {
        const std::lock_guard lock(mutex_);
        commands_.push_back(std::move(command));
    }
    const uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeFd_, &one, sizeof one);
}

void ChildProcesses::postAndWait(const Command& command) {
    // A callback of this thread may ask for a signal itself.
    if (std::this_thread::get_id() == thread_.get_id()) {
        command();
        return;
    }
    std::promise<void> done;
    post([&] {
        command();
        done.set_value();
    });
    done.get_future().wait();
}

void ChildProcesses::runCommands() {
    for (;;) {
        Command command;
        {
            const std::lock_guard lock(mutex_);
            if (commands_.empty())
                return;
            command = std::move(commands_.front());
            commands_.pop_front();
        }
        command();
    }
}

void ChildProcesses::waitForSomething() {
    std::vector<pollfd> waited{{wakeFd_, POLLIN, 0}};
    int limit = finishing_ ? pollIntervalWithoutPidFds : -1;
    for (const auto& child : live_) {
        if (child->pidFd_ >= 0)
            waited.push_back({child->pidFd_, POLLIN, 0});
        else
            limit = pollIntervalWithoutPidFds;
    }
    ::poll(waited.data(), waited.size(), limit);
    if (waited.front().revents != 0) {
        uint64_t count = 0;
        [[maybe_unused]] const ssize_t got = ::read(wakeFd_, &count, sizeof count);
    }
}

void ChildProcesses::start(const std::shared_ptr<ChildProcess>& child, const QString& program,
                           const QStringList& arguments) {
    const QByteArray programName = QFile::encodeName(program);
    std::vector<QByteArray> texts{programName};
    for (const QString& argument : arguments)
        texts.push_back(QFile::encodeName(argument));
    std::vector<char*> argv;
    for (QByteArray& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);

    Pipe errorStream = Pipe::open();
    Pipe failureReport = Pipe::open();
    if (!errorStream.isOpen() || !failureReport.isOpen()) {
        child->setEnd({ProcessEnd::How::FailedToStart, errno});
        return;
    }
    const pid_t parent = ::getpid();
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    // To copy the tables of this program's memory would take longer than all else, the longer the
    // more movies are in the list, and slow the window down afterwards.
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.vfork)
    const pid_t pid = ::vfork();
    if (pid == 0)
        becomeProgram(programName.constData(), argv.data(), parent, errorStream.writeEnd.number(),
                      failureReport.writeEnd.number());
    const int startFailure = errno;
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (pid < 0) {
        child->setEnd({ProcessEnd::How::FailedToStart, startFailure});
        return;
    }
    failureReport.writeEnd.close();
    int failure = 0;
    ssize_t got = 0;
    do {
        got = ::read(failureReport.readEnd.number(), &failure, sizeof failure);
    } while (got < 0 && errno == EINTR);
    if (got == sizeof failure) {
        ::waitpid(pid, nullptr, 0);
        child->setEnd({ProcessEnd::How::FailedToStart, failure});
        return;
    }
    child->pid_ = pid;
    child->pidFd_ = openPidFd(pid).release();
    child->readEnd_ = errorStream.readEnd.release();
    ::fcntl(child->readEnd_, F_SETFL, O_NONBLOCK);
    const std::lock_guard lock(mutex_);
    live_.push_back(child);
}

void ChildProcesses::reapEnded() {
    const std::vector<std::shared_ptr<ChildProcess>> children = live_;
    for (const auto& child : children)
        reapIfEnded(*child);
}

bool ChildProcesses::reapIfEnded(ChildProcess& child) {
    if (child.end())
        return true;
    int status = 0;
    if (::waitpid(child.pid_, &status, WNOHANG) != child.pid_)
        return false;
    // Kept until the end has been told: it may be the last reference.
    std::shared_ptr<ChildProcess> kept;
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(live_.begin(), live_.end(),
                                        [&](const auto& each) { return each.get() == &child; });
        if (found != live_.end()) {
            kept = std::move(*found);
            live_.erase(found);
        }
    }
    if (WIFSIGNALED(status))
        child.setEnd({ProcessEnd::How::Killed, WTERMSIG(status)});
    else
        child.setEnd({ProcessEnd::How::Exited, WEXITSTATUS(status)});
    return true;
}

bool ChildProcesses::suspend(ChildProcess& child) {
    if (reapIfEnded(child))
        return false;
    ::kill(child.pid_, SIGSTOP);
    // The signal is not the stop: the process may come to its end before it obeys.
    const auto deadline = Clock::now() + longestSuspend;
    while (Clock::now() < deadline) {
        siginfo_t info{};
        const int result = ::waitid(P_PID, static_cast<id_t>(child.pid_), &info,
                                    WSTOPPED | WEXITED | WNOHANG | WNOWAIT);
        if (result == 0 && info.si_pid == child.pid_) {
            if (info.si_code == CLD_STOPPED)
                return true;
            return !reapIfEnded(child);
        }
        ::poll(nullptr, 0, 1);
    }
    return true;
}

bool ChildProcesses::signal(ChildProcess& child, int number) {
    return !reapIfEnded(child) && ::kill(child.pid_, number) == 0;
}
