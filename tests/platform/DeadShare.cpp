#include "platform/DeadShare.h"

#include "platform/ReachedCalls.h"

#include <QFile>

#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>

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

} // namespace

static void reach(const char* path) {
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
