#pragma once

#include "platform/desktop/MessageBus.h"

#include <QObject>

#include <chrono>
#include <memory>

/// Tells the user something while the window is not in front. Main thread; owned by main().
class Notifications {
public:
    Notifications() = default;
    virtual ~Notifications() = default;
    Q_DISABLE_COPY_MOVE(Notifications)

    /// Plain texts. Returns at once.
    virtual void notify(const QString& summary, const QString& body) = 0;
};

/// The desktop's notifications, over the session bus; where there are none nothing is told.
class DesktopNotifications final : public QObject, public Notifications {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultAnswerLimit{10'000};

    explicit DesktopNotifications(QString busAddress = sessionBusAddress(),
                                  std::chrono::milliseconds answerLimit = defaultAnswerLimit,
                                  QObject* parent = nullptr);

    void notify(const QString& summary, const QString& body) override;

private:
    const QString busAddress_;
    const std::chrono::milliseconds answerLimit_;
    /// GNOME takes the notifications of a program away when it has left the bus.
    std::unique_ptr<MessageBus> bus_;
};
