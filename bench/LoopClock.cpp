#include "bench/LoopClock.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <time.h>
#include <unistd.h>

namespace {

// GPollFD is laid out as pollfd is; the headers of GLib are not needed for this alone.
using PollFunction = int (*)(pollfd* descriptors, unsigned count, int timeout);
using DefaultContext = void* (*)();
using SetPoll = void (*)(void* context, PollFunction function);
using GetPoll = PollFunction (*)(void* context);

PollFunction realPoll = nullptr;
pthread_t mainThread;
bool isTurning = false;
double turnBegan = 0;
double cpuAtBegin = 0;
double queuedAtBegin = 0;
long turnCount = 0;
LoopClock::Gap longest;

double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Milliseconds that the calling thread was ready and did not run.
double queued() {
    static const int file = open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    std::array<char, 128> text{};
    if (file < 0 || pread(file, text.data(), text.size() - 1, 0) <= 0)
        return 0;
    const char* const second = std::strchr(text.data(), ' ');
    return second ? std::strtod(second, nullptr) / 1e6 : 0;
}

int timedPoll(pollfd* descriptors, unsigned count, int timeout) {
    if (!pthread_equal(pthread_self(), mainThread))
        return realPoll(descriptors, count, timeout);
    if (isTurning) {
        const double gap = now(CLOCK_MONOTONIC) - turnBegan;
        if (gap > longest.milliseconds)
            longest = {gap, now(CLOCK_THREAD_CPUTIME_ID) - cpuAtBegin, queued() - queuedAtBegin};
    }
    const int result = realPoll(descriptors, count, timeout);
    isTurning = true;
    ++turnCount;
    turnBegan = now(CLOCK_MONOTONIC);
    cpuAtBegin = now(CLOCK_THREAD_CPUTIME_ID);
    queuedAtBegin = queued();
    return result;
}

template <typename Function> Function symbol(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

} // namespace

bool LoopClock::start() {
    const auto defaultContext = symbol<DefaultContext>("g_main_context_default");
    const auto getPoll = symbol<GetPoll>("g_main_context_get_poll_func");
    const auto setPoll = symbol<SetPoll>("g_main_context_set_poll_func");
    if (!defaultContext || !getPoll || !setPoll)
        return false;
    mainThread = pthread_self();
    realPoll = getPoll(defaultContext());
    setPoll(defaultContext(), timedPoll);
    return true;
}

LoopClock::Gap LoopClock::takeLongest(long& turns) {
    turns = turnCount;
    turnCount = 0;
    const Gap result = longest;
    longest = {};
    return result;
}
