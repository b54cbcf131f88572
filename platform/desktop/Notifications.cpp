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
    const auto bus = busAddress_.isEmpty() ? nullptr : std::make_shared<MessageBus>(busAddress_);
    if (!bus || !bus->isConnected())
        return;
    auto* const watcher =
        new QDBusPendingCallWatcher(bus->callLater(notifyCall(summary, body), answerLimit_), this);
    // The conversation lives in the connection: it ends with the answer, or with this object.
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [bus, watcher] {
        if (watcher->isError())
            qCInfo(lcDesktop) << "the desktop shows no notification:" << watcher->error().message();
        watcher->deleteLater();
    });
}
