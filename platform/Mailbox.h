#pragma once

#include <QMetaObject>
#include <QtGlobal>

#include <memory>
#include <mutex>
#include <utility>

/// Where threads leave answers for an object that may have gone before they come, as those of a
/// thread that hangs. Shared by the object and the threads: see make().
template <typename Owner>
class Mailbox final : public std::enable_shared_from_this<Mailbox<Owner>> {
public:
    /// `owner` is a QObject.
    [[nodiscard]] static std::shared_ptr<Mailbox> make(Owner& owner) {
        return std::shared_ptr<Mailbox>(new Mailbox(owner));
    }
    Q_DISABLE_COPY_MOVE(Mailbox)

    /// Calls `work` with the owner from the owner's event loop, unless the mailbox is closed by
    /// then. Any thread.
    template <typename Work> void post(Work work) {
        const std::lock_guard lock(mutex_);
        if (!owner_)
            return;
        QMetaObject::invokeMethod(
            owner_,
            [self = this->shared_from_this(), work = std::move(work)] {
                if (self->owner_)
                    work(*self->owner_);
            },
            Qt::QueuedConnection);
    }
    /// From now on nothing is delivered any more. The owner's thread, before the owner goes.
    void close() {
        const std::lock_guard lock(mutex_);
        owner_ = nullptr;
    }

private:
    explicit Mailbox(Owner& owner) : owner_(&owner) {}

    std::mutex mutex_;
    Owner* owner_; ///< written on its own thread alone
};
