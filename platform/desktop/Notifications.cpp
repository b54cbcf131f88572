#include "platform/desktop/Notifications.h"

#include "platform/desktop/DesktopLog.h"
#include "platform/desktop/ProgramId.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QThread>

#include <memory>
#include <utility>

namespace {

constexpr int lifetimeOfTheDesktop = -1;

QDBusMessage notifyCall(const QString& summary, const QString& body) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    const QString program = QStringLiteral("reelshift");
    // The body may hold markup.
    message << QCoreApplication::applicationName() << 0U << program << summary
            << body.toHtmlEscaped() << QStringList()
            << QVariantMap{{QStringLiteral("desktop-entry"), programId}} << lifetimeOfTheDesktop;
    return message;
}

} // namespace

DesktopNotifications::DesktopNotifications(QString busAddress,
                                           std::chrono::milliseconds answerLimit, QObject* parent)
    : QObject(parent), busAddress_(std::move(busAddress)), answerLimit_(answerLimit) {}

void DesktopNotifications::notify(const QString& summary, const QString& body) {
    Q_ASSERT(thread() == QThread::currentThread());
    if (!busAddress_.isEmpty() && !(bus_ && bus_->isConnected()))
        bus_ = std::make_unique<MessageBus>(busAddress_);
    if (!bus_ || !bus_->isConnected())
        return;
    auto* const watcher =
        new QDBusPendingCallWatcher(bus_->callLater(notifyCall(summary, body), answerLimit_), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher] {
        if (watcher->isError())
            qCInfo(lcDesktop) << "the desktop shows no notification:" << watcher->error().message();
        watcher->deleteLater();
    });
}
