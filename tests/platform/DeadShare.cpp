#include "platform/DeadShare.h"

#include <QFile>

#include <condition_variable>
#include <cstdarg>
#include <mutex>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Never destroyed: calls come until the very end of the program.
struct Share {
    std::mutex mutex;
    std::condition_variable changed;
    std::string folder; ///< empty: every server answers
    int hanging = 0;
};

Share& share() {
    static auto* const instance = new Share;
    return *instance;
}

void reach(const char* path) {
    if (!path || *path != '/')
        return;
    Share& dead = share();
    std::unique_lock lock(dead.mutex);
    const auto isDead = [&] {
        return !dead.folder.empty() && std::string_view(path).starts_with(dead.folder);
    };
    if (!isDead())
        return;
    ++dead.hanging;
    dead.changed.wait(lock, [&] { return !isDead(); });
    --dead.hanging;
}

template <typename Function> Function* original(const char* name) {
    // POSIX lets a pointer to a function come out of dlsym.
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

DeadShare::DeadShare(const QString& folder) {
    const std::lock_guard lock(share().mutex);
    share().folder = QFile::encodeName(folder).toStdString();
}

DeadShare::~DeadShare() {
    Share& dead = share();
    const std::lock_guard lock(dead.mutex);
    dead.folder.clear();
    dead.changed.notify_all();
}

int DeadShare::hangingCalls() {
    const std::lock_guard lock(share().mutex);
    return share().hanging;
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
