#include "bench/LoopClock.h"

#include <dlfcn.h>
#include <poll.h>
#include <pthread.h>
#include <time.h>

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
long turnCount = 0;
LoopClock::Gap longest;

double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

int timedPoll(pollfd* descriptors, unsigned count, int timeout) {
    if (!pthread_equal(pthread_self(), mainThread))
        return realPoll(descriptors, count, timeout);
    if (isTurning) {
        const double gap = now(CLOCK_MONOTONIC) - turnBegan;
        if (gap > longest.milliseconds)
            longest = {gap, now(CLOCK_THREAD_CPUTIME_ID) - cpuAtBegin};
    }
    const int result = realPoll(descriptors, count, timeout);
    isTurning = true;
    ++turnCount;
    turnBegan = now(CLOCK_MONOTONIC);
    cpuAtBegin = now(CLOCK_THREAD_CPUTIME_ID);
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
