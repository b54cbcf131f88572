// Preloaded into the real program by tests: while the file REELSHIFT_SHARE_HANGS exists, every call
// of the C library that looks at a path in the folder REELSHIFT_SHARE hangs, in whatever thread and
// in the encoders, too, as it does in the kernel where a share's server has gone. A process that
// hangs can still be killed.

#include "platform/ReachedCalls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

constexpr timespec interval{0, 10'000'000};

bool isDead(const char* path) {
    static const char* const folder = std::getenv("REELSHIFT_SHARE");
    static const char* const mark = std::getenv("REELSHIFT_SHARE_HANGS");
    return folder && mark && path && std::strncmp(path, folder, std::strlen(folder)) == 0 &&
           ::syscall(SYS_faccessat, AT_FDCWD, mark, F_OK) == 0;
}

} // namespace

static void reach(const char* path) {
    const int before = errno;
    while (isDead(path))
        ::nanosleep(&interval, nullptr);
    errno = before;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the library's are reserved.
extern "C" {

int stat64(const char* path, struct stat64* result) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, struct stat64*)>("stat64");
    return next(path, result);
}

int lstat64(const char* path, struct stat64* result) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, struct stat64*)>("lstat64");
    return next(path, result);
}

int statvfs64(const char* path, struct statvfs64* result) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, struct statvfs64*)>("statvfs64");
    return next(path, result);
}

int rename(const char* path, const char* other) noexcept {
    reach(path);
    reach(other);
    static auto* const next = original<int(const char*, const char*)>("rename");
    return next(path, other);
}

int renameat2(int from, const char* path, int to, const char* other, unsigned flags) noexcept {
    reach(path);
    reach(other);
    static auto* const next =
        original<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return next(from, path, to, other, flags);
}

ssize_t readlink(const char* path, char* result, size_t size) noexcept {
    reach(path);
    static auto* const next = original<ssize_t(const char*, char*, size_t)>("readlink");
    return next(path, result, size);
}

char* realpath(const char* path, char* result) noexcept {
    reach(path);
    static auto* const next = original<char*(const char*, char*)>("realpath");
    return next(path, result);
}

DIR* opendir(const char* path) {
    reach(path);
    static auto* const next = original<DIR*(const char*)>("opendir");
    return next(path);
}

// The third argument is only looked at with O_CREAT or O_TMPFILE, and is an int then.
int open(const char* path, int flags, ...) {
    reach(path);
    va_list rest;
    va_start(rest, flags);
    const int mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, int) : 0;
    va_end(rest);
    static auto* const next = original<int(const char*, int, ...)>("open");
    return next(path, flags, mode);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
