// Loaded (LD_PRELOAD) into the program and into all that it starts, to see where the time of a job
// goes. Nothing that is traced is built for it.
//
//     REELSHIFT_BENCH_TRACE=FILE    a line per event: NANOSECONDS PROCESS THREAD EVENT DETAIL
//
// Noted are programs as they begin and end, what they become or fork, the children whose end is
// taken, and the calls in which a thread is held: each with its end and how long it lasted, where
// that is worth a line. What runs is what is not held.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

namespace {

constexpr long long worthALine = 20'000; // ns

int file = -1;
bool isOurs = false; // what ffmpeg's threads wait for is its own business
int (*realExecv)(const char*, char* const*) = nullptr;
pid_t (*realFork)() = nullptr;
pid_t (*realWaitpid)(pid_t, int*, int) = nullptr;
int (*realFsync)(int) = nullptr;
int (*realPoll)(pollfd*, nfds_t, int) = nullptr;
int (*realWait)(pthread_cond_t*, pthread_mutex_t*) = nullptr;
int (*realClockWait)(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*) = nullptr;

long long now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

// Also between vfork and exec, and while other threads do the same: one write, nothing allocated.
[[gnu::format(printf, 1, 2)]] void note(const char* format, ...) {
    if (file < 0)
        return;
    char line[512];
    int length = std::snprintf(line, sizeof line, "%lld %ld %ld ", now(),
                               static_cast<long>(::syscall(SYS_getpid)),
                               static_cast<long>(::syscall(SYS_gettid)));
    va_list details;
    va_start(details, format);
    length += std::vsnprintf(line + length, sizeof line - static_cast<size_t>(length) - 1, format,
                             details);
    va_end(details);
    if (length > static_cast<int>(sizeof line) - 2)
        length = sizeof line - 2;
    line[length++] = '\n';
    [[maybe_unused]] const ssize_t written = ::write(file, line, static_cast<size_t>(length));
}

template <typename Call> auto held(const char* what, Call call) {
    if (!isOurs)
        return call();
    const long long begin = now();
    const auto result = call();
    const long long lasted = now() - begin;
    if (lasted >= worthALine)
        note("held %lld %s", lasted, what);
    return result;
}

template <typename Function> void find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

// Before all others, because these may be called by their beginnings.
[[gnu::constructor(101)]] void begin() {
    find(realExecv, "execv");
    find(realFork, "fork");
    find(realWaitpid, "waitpid");
    find(realFsync, "fsync");
    find(realPoll, "poll");
    find(realWait, "pthread_cond_wait");
    find(realClockWait, "pthread_cond_clockwait");
    if (const char* const path = std::getenv("REELSHIFT_BENCH_TRACE"))
        file = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    char program[256] = {};
    [[maybe_unused]] const ssize_t length =
        ::readlink("/proc/self/exe", program, sizeof program - 1);
    isOurs = std::strstr(program, "reelshift") != nullptr;
    note("begins %s", program);
}

[[gnu::destructor]] void end() {
    note("ends");
}

} // namespace

extern "C" {

int execv(const char* program, char* const* arguments) {
    note("becomes %s", program);
    return realExecv(program, arguments);
}

pid_t fork() {
    const pid_t pid = realFork();
    if (pid == 0)
        note("forked");
    return pid;
}

void _exit(int status) {
    end();
    ::syscall(SYS_exit_group, status);
    __builtin_unreachable();
}

pid_t waitpid(pid_t pid, int* status, int options) {
    const pid_t ended = held("waitpid", [&] { return realWaitpid(pid, status, options); });
    if (ended > 0)
        note("reaped %ld", static_cast<long>(ended));
    return ended;
}

int fsync(int descriptor) {
    return held("fsync", [&] { return realFsync(descriptor); });
}

int poll(pollfd* descriptors, nfds_t count, int timeout) {
    return held("poll", [&] { return realPoll(descriptors, count, timeout); });
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    return held("wait", [&] { return realWait(condition, mutex); });
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                           const timespec* until) {
    return held("timed wait", [&] { return realClockWait(condition, mutex, clock, until); });
}

} // extern "C"
