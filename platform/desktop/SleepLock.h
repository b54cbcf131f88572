#pragma once

#include "platform/desktop/Inhibition.h"
#include "platform/desktop/MessageBus.h"

#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>

#include <chrono>
#include <memory>

/// A lock of the login manager (logind) against sleep and idleness. The lock is a file descriptor:
/// it is held until that is closed, also by the end of the program.
class SleepLock final : public Inhibition {
    Q_OBJECT

public:
    SleepLock(QString busAddress, QString reason, std::chrono::milliseconds answerLimit,
              QObject* parent = nullptr);

    void ask() override;
    void giveBack() override;

private:
    void take(const QDBusMessage& answer);
    void refuse(const QString& why);

    const QString busAddress_;
    const QString reason_;
    const std::chrono::milliseconds answerLimit_;
    std::unique_ptr<MessageBus> bus_;
    std::unique_ptr<QDBusPendingCallWatcher> answer_; ///< holds the descriptor too
    QDBusUnixFileDescriptor lock_;
    bool isWanted_ = true;
};
