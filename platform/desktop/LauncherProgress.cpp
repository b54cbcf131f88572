#include "platform/desktop/LauncherProgress.h"

#include "platform/desktop/ProgramId.h"

#include <QThread>

#include <algorithm>
#include <utility>

DesktopLauncherProgress::DesktopLauncherProgress(QString busAddress, std::chrono::milliseconds rest,
                                                 QObject* parent)
    : QObject(parent), busAddress_(std::move(busAddress)) {
    rest_.setSingleShot(true);
    rest_.setInterval(rest);
    connect(&rest_, &QTimer::timeout, this, &DesktopLauncherProgress::restIsOver);
}

void DesktopLauncherProgress::show(double share) {
    Q_ASSERT(thread() == QThread::currentThread());
    if (!bus_ && !busAddress_.isEmpty())
        bus_ = std::make_unique<MessageBus>(busAddress_);
    waiting_ = share;
    if (!rest_.isActive())
        restIsOver();
}

void DesktopLauncherProgress::restIsOver() {
    if (!waiting_)
        return;
    send(*std::exchange(waiting_, std::nullopt), true);
    rest_.start();
}

void DesktopLauncherProgress::hide() {
    Q_ASSERT(thread() == QThread::currentThread());
    waiting_.reset();
    rest_.stop();
    if (bus_)
        send(0, false);
}

void DesktopLauncherProgress::send(double share, bool visible) {
    if (!bus_ || !bus_->isConnected())
        return;
    QDBusMessage message = QDBusMessage::createSignal(
        QStringLiteral("/com/canonical/unity/launcherentry/reelshift"),
        QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    message << QString(u"application://" + programId + u".desktop")
            << QVariantMap{{QStringLiteral("progress"), std::clamp(share, 0.0, 1.0)},
                           {QStringLiteral("progress-visible"), visible}};
    bus_->send(message);
}
