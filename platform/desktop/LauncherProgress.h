#pragma once

#include "platform/desktop/MessageBus.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

/// The bar on the program's icon in the dock or task bar. Main thread; owned by main().
class LauncherProgress {
public:
    LauncherProgress() = default;
    virtual ~LauncherProgress() = default;
    Q_DISABLE_COPY_MOVE(LauncherProgress)

    /// 0.0 to 1.0. Both return at once.
    virtual void show(double share) = 0;
    virtual void hide() = 0;
};

/// By signals on the session bus that docks listen to; where there are none nothing is shown.
class DesktopLauncherProgress final : public QObject, public LauncherProgress {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultRest{250};

    /// `rest` is the least time between two signals.
    explicit DesktopLauncherProgress(QString busAddress = sessionBusAddress(),
                                     std::chrono::milliseconds rest = defaultRest,
                                     QObject* parent = nullptr);

    void show(double share) override;
    void hide() override;

private:
    void restIsOver();
    void send(double share, bool visible);

    const QString busAddress_;
    QTimer rest_;
    std::optional<double> waiting_;   ///< what is to be shown when the rest is over
    std::unique_ptr<MessageBus> bus_; ///< a dock forgets the bar of one that has left the bus
};
