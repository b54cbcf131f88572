#include "update/HostLookup.h"

#include <QUrl>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <netdb.h>

int resolveWithSystem(const std::string& host) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int code = getaddrinfo(host.c_str(), nullptr, &hints, &found);
    if (code == 0)
        freeaddrinfo(found);
    return code;
}

/// Outlives the lookup for as long as its thread runs.
struct HostLookup::Shared {
    std::mutex mutex;
    HostLookup* owner = nullptr; ///< nullptr once nobody waits
};

HostLookup::HostLookup(HostResolver resolver, QObject* parent)
    : QObject(parent), resolver_(std::move(resolver)) {}

HostLookup::~HostLookup() {
    if (!shared_)
        return;
    const std::lock_guard lock(shared_->mutex);
    shared_->owner = nullptr;
}

void HostLookup::start(const QString& host) {
    shared_ = std::make_shared<Shared>();
    shared_->owner = this;
    const auto work = [shared = shared_, resolver = resolver_,
                       name = QUrl::toAce(host).toStdString()] {
        int code = EAI_FAIL;
        try {
            code = resolver(name);
        } catch (...) {
            code = EAI_FAIL;
        }
        const std::lock_guard lock(shared->mutex);
        HostLookup* const owner = shared->owner;
        if (owner)
            QMetaObject::invokeMethod(
                owner, [owner, code] { Q_EMIT owner->finished(code); }, Qt::QueuedConnection);
    };
    try {
        std::thread(work).detach();
    } catch (const std::system_error&) {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT finished(EAI_MEMORY); }, Qt::QueuedConnection);
    }
}
