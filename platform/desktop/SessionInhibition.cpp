#include "platform/desktop/SessionInhibition.h"

#include "platform/desktop/DesktopLog.h"
#include "platform/desktop/ProgramId.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QThread>

#include <utility>

namespace {

constexpr uint againstLogout = 1; // the desktop then says why and lets the user decide
constexpr uint againstSuspend = 4;
constexpr uint againstIdleness = 8;

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString screenSaver = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusMessage screenSaverCall(const QString& method) {
    return QDBusMessage::createMethodCall(
        screenSaver, QStringLiteral("/org/freedesktop/ScreenSaver"), screenSaver, method);
}

} // namespace

SessionInhibition::SessionInhibition(QString busAddress, QString reason,
                                     std::chrono::milliseconds answerLimit, QObject* parent)
    : Inhibition(parent),
      busAddress_(std::move(busAddress)),
      reason_(std::move(reason)),
      answerLimit_(answerLimit) {}

void SessionInhibition::ask() {
    Q_ASSERT(thread() == QThread::currentThread());
    if (!busAddress_.isEmpty())
        bus_ = std::make_unique<MessageBus>(busAddress_);
    if (bus_ && bus_->isConnected())
        registerWithPortal();
    else
        refuse(QStringLiteral("there is no session bus"));
}

// A portal that has none of this knows the program by the way the desktop has started it.
void SessionInhibition::registerWithPortal() {
    QDBusMessage message = QDBusMessage::createMethodCall(
        portal, portalPath, QStringLiteral("org.freedesktop.host.portal.Registry"),
        QStringLiteral("Register"));
    message << programId << QVariantMap();
    call(message, &SessionInhibition::takeRegistration);
}

void SessionInhibition::takeRegistration(const QDBusMessage& answer) {
    const bool isSilent = QDBusError(answer).type() == QDBusError::NoReply;
    if (!isWanted_)
        end();
    else if (isSilent)
        askScreenSaver();
    else
        askPortal();
}

void SessionInhibition::askPortal() {
    QDBusMessage message = QDBusMessage::createMethodCall(
        portal, portalPath, QStringLiteral("org.freedesktop.portal.Inhibit"),
        QStringLiteral("Inhibit"));
    message << QString() << (againstLogout | againstSuspend | againstIdleness)
            << QVariantMap{{QStringLiteral("reason"), reason_}};
    call(message, &SessionInhibition::takeFromPortal);
}

void SessionInhibition::takeFromPortal(const QDBusMessage& answer) {
    const QString request = answer.arguments().value(0).value<QDBusObjectPath>().path();
    if (answer.type() == QDBusMessage::ReplyMessage && !request.isEmpty())
        take(QDBusMessage::createMethodCall(portal, request,
                                            QStringLiteral("org.freedesktop.portal.Request"),
                                            QStringLiteral("Close")));
    else if (isWanted_)
        askScreenSaver();
    else
        end();
}

void SessionInhibition::askScreenSaver() {
    QDBusMessage message = screenSaverCall(QStringLiteral("Inhibit"));
    message << QCoreApplication::applicationName() << reason_;
    call(message, &SessionInhibition::takeFromScreenSaver);
}

void SessionInhibition::takeFromScreenSaver(const QDBusMessage& answer) {
    const QVariant cookie = answer.arguments().value(0);
    if (answer.type() == QDBusMessage::ReplyMessage && cookie.userType() == QMetaType::UInt)
        take(screenSaverCall(QStringLiteral("UnInhibit")) << cookie);
    else
        refuse(answer.errorMessage());
}

void SessionInhibition::take(const QDBusMessage& undoing) {
    undoing_ = undoing;
    if (isWanted_)
        Q_EMIT granted();
    else
        giveBack();
}

void SessionInhibition::refuse(const QString& why) {
    end();
    if (!isWanted_)
        return;
    qCInfo(lcDesktop) << "the session is not kept from idleness:" << why;
    Q_EMIT refused();
}

void SessionInhibition::giveBack() {
    Q_ASSERT(thread() == QThread::currentThread());
    isWanted_ = false;
    if (isAwaited_)
        return;
    if (bus_ && undoing_)
        bus_->send(*undoing_);
    end();
}

void SessionInhibition::call(const QDBusMessage& message, Taker taker) {
    isAwaited_ = true;
    auto* const watcher = new QDBusPendingCallWatcher(bus_->callLater(message, answerLimit_), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, taker] {
        isAwaited_ = false;
        watcher->deleteLater();
        (this->*taker)(watcher->reply());
    });
}
