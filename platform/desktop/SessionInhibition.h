#pragma once

#include "platform/desktop/Inhibition.h"
#include "platform/desktop/MessageBus.h"

#include <chrono>
#include <memory>
#include <optional>

/// What the user's session has against sleep, idleness and its own end: the desktop portal, and
/// where that has none, the screen saver. Both end it by themselves when the program's connection
/// ends.
class SessionInhibition final : public Inhibition {
    Q_OBJECT

public:
    SessionInhibition(QString busAddress, QString reason, std::chrono::milliseconds answerLimit,
                      QObject* parent = nullptr);

    void ask() override;
    void giveBack() override;

private:
    using Taker = void (SessionInhibition::*)(const QDBusMessage& answer);

    /// Who asks: GNOME's session refuses those that it cannot name.
    void registerWithPortal();
    void takeRegistration(const QDBusMessage& answer);
    void askPortal();
    void takeFromPortal(const QDBusMessage& answer);
    void askScreenSaver();
    void takeFromScreenSaver(const QDBusMessage& answer);
    /// Notes how it is to be given back.
    void take(const QDBusMessage& undoing);
    void refuse(const QString& why);
    void call(const QDBusMessage& message, Taker taker);

    const QString busAddress_;
    const QString reason_;
    const std::chrono::milliseconds answerLimit_;
    std::unique_ptr<MessageBus> bus_;
    std::optional<QDBusMessage> undoing_; ///< the call that ends it, once it is granted
    bool isAwaited_ = false;
    bool isWanted_ = true;
};
