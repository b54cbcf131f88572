#pragma once

#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Calls of the C library that look at a path, replaced in whatever links this: each asks reach(),
// which is the includer's own, before it goes on. To be included once in a program or library.

/// Returns when the path can be reached. Any thread.
static void reach(const char* path);

template <typename Function> static Function* original(const char* name) {
    // POSIX lets a pointer to a function come out of dlsym.
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the library's are reserved.
extern "C" {

int stat(const char* path, struct stat* result) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, struct stat*)>("stat");
    return next(path, result);
}

int lstat(const char* path, struct stat* result) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, struct stat*)>("lstat");
    return next(path, result);
}

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* result) noexcept {
    reach(path);
    static auto* const next =
        original<int(int, const char*, int, unsigned, struct statx*)>("statx");
    return next(folder, path, flags, mask, result);
}

int access(const char* path, int mode) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, int)>("access");
    return next(path, mode);
}

int mkdir(const char* path, mode_t mode) noexcept {
    reach(path);
    static auto* const next = original<int(const char*, mode_t)>("mkdir");
    return next(path, mode);
}

int unlink(const char* path) noexcept {
    reach(path);
    static auto* const next = original<int(const char*)>("unlink");
    return next(path);
}

// The third argument is only looked at with O_CREAT, and is an int then.
int open64(const char* path, int flags, ...) {
    reach(path);
    va_list rest;
    va_start(rest, flags);
    const int mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, int) : 0;
    va_end(rest);
    static auto* const next = original<int(const char*, int, ...)>("open64");
    return next(path, flags, mode);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
