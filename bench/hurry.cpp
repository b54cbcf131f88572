// Part of the probe: every wait of one second ends sooner where REELSHIFT_BENCH_SECOND says so, to
// see what a run of many movies costs besides its demanded waits. For the thread that waited the
// second is over: its clock goes ahead by what it was spared.

#include <cerrno>
#include <cstdlib>

#include <dlfcn.h>
#include <pthread.h>
#include <time.h>

namespace {

using ClockWait = int (*)(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*);
using GetTime = int (*)(clockid_t, timespec*);

constexpr long long second = 1'000'000'000;
constexpr long long tolerance = second / 20;

thread_local long long ahead = 0;

template <typename Function> Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int realTime(clockid_t clock, timespec* time) {
    static const auto real = next<GetTime>("clock_gettime");
    return real(clock, time);
}

long long nanoseconds(const timespec& time) {
    return time.tv_sec * second + time.tv_nsec;
}

timespec fromNanoseconds(long long time) {
    return {time / second, time % second};
}

/// 0 where waits are left as they are.
long long hurriedSecond() {
    static const long long wanted = [] {
        const char* const text = std::getenv("REELSHIFT_BENCH_SECOND");
        return text ? std::atoll(text) * 1'000'000 : 0;
    }();
    return wanted;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const int result = realTime(clock, time);
    if (clock == CLOCK_MONOTONIC && ahead > 0)
        *time = fromNanoseconds(nanoseconds(*time) + ahead);
    return result;
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                           const timespec* until) {
    static const auto real = next<ClockWait>("pthread_cond_clockwait");
    const long long hurried = clock == CLOCK_MONOTONIC ? hurriedSecond() : 0;
    if (hurried == 0)
        return real(condition, mutex, clock, until);
    timespec now{};
    realTime(clock, &now);
    const long long end = nanoseconds(*until) - ahead;
    const long long left = end - nanoseconds(now);
    const bool isSecond = left > second - tolerance && left < second + tolerance;
    const timespec sooner = fromNanoseconds(isSecond ? nanoseconds(now) + hurried : end);
    const int result = real(condition, mutex, clock, &sooner);
    if (isSecond && result == ETIMEDOUT)
        ahead += left - hurried;
    return result;
}

} // extern "C"
