#include "update/DeadResolver.h"

#include <condition_variable>
#include <mutex>
#include <string_view>

#include <dlfcn.h>
#include <netdb.h>

namespace {

// Never destroyed: a look-up may go on until the very end of the program.
struct Resolver {
    std::mutex mutex;
    std::condition_variable changed;
    bool dead = false;
    int hanging = 0;
};

Resolver& resolver() {
    static auto* const instance = new Resolver;
    return *instance;
}

/// False when nobody answered.
bool ask() {
    Resolver& it = resolver();
    std::unique_lock lock(it.mutex);
    if (!it.dead)
        return true;
    ++it.hanging;
    it.changed.notify_all();
    it.changed.wait(lock, [&] { return !it.dead; });
    --it.hanging;
    it.changed.notify_all();
    return false;
}

} // namespace

DeadResolver::DeadResolver() {
    const std::lock_guard lock(resolver().mutex);
    resolver().dead = true;
}

DeadResolver::~DeadResolver() {
    Resolver& it = resolver();
    std::unique_lock lock(it.mutex);
    it.dead = false;
    it.changed.notify_all();
    it.changed.wait(lock, [&] { return it.hanging == 0; });
}

int DeadResolver::hangingCalls() {
    const std::lock_guard lock(resolver().mutex);
    return resolver().hanging;
}

void DeadResolver::waitUntilAsked() {
    Resolver& it = resolver();
    std::unique_lock lock(it.mutex);
    it.changed.wait(lock, [&] { return it.hanging > 0; });
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the library's are reserved.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    const bool isNumber = hints && (hints->ai_flags & AI_NUMERICHOST) != 0;
    if (!isNumber && !ask())
        return EAI_AGAIN;
    // Such names exist nowhere, and no name server is to be asked.
    if (name && std::string_view(name).ends_with(".invalid"))
        return EAI_NONAME;
    // POSIX lets a pointer to a function come out of dlsym.
    static auto* const next =
        reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name, service, hints, result);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
