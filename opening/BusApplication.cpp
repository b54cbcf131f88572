#include "opening/BusApplication.h"

#include "opening/HandOver.h"

#include <QDBusError>

namespace {

constexpr uint ownerNow = 1;
constexpr uint ownerAlready = 4;

QDBusMessage busCall(const QString& method) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), method);
    message << busname::service;
    return message;
}

} // namespace

BusApplication::BusApplication(const QString& busAddress, QObject* parent)
    : QObject(parent), bus_(busAddress) {}

BusApplication::~BusApplication() = default;

BusApplication::Claim BusApplication::claim(std::chrono::milliseconds limit) {
    if (!bus_.isConnected() || !bus_.offer(busname::path, this))
        return Claim::NoBus;
    const QDBusMessage answer =
        bus_.call(busCall(QStringLiteral("RequestName")) << 0U, QDeadlineTimer(limit));
    if (answer.type() != QDBusMessage::ReplyMessage)
        return Claim::NoBus;
    const uint outcome = answer.arguments().value(0).toUInt();
    return outcome == ownerNow || outcome == ownerAlready ? Claim::Ours : Claim::Anothers;
}

void BusApplication::release() {
    isReady_ = [] { return false; };
    if (bus_.isConnected())
        bus_.send(busCall(QStringLiteral("ReleaseName")));
}

void BusApplication::Activate(const QVariantMap& platformData) {
    if (takes(platformData))
        Q_EMIT activated(StartupTokens::fromPlatformData(platformData));
}

void BusApplication::Open(const QStringList& addresses, const QVariantMap& platformData) {
    if (takes(platformData))
        Q_EMIT opened(addresses, StartupTokens::fromPlatformData(platformData));
}

void BusApplication::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                    const QVariantMap& platformData) {
    if (name != busname::quitAction)
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action ") + name);
    else if (takes(platformData))
        Q_EMIT quitAsked();
}

// Files that are opened by the desktop come without any of ours.
bool BusApplication::takes(const QVariantMap& platformData) {
    const QVariant display = platformData.value(busname::display);
    const QVariant validUntil = platformData.value(busname::validUntil);
    QString why;
    if (isReady_ && !isReady_())
        why = QStringLiteral("The program is about to end");
    else if (validUntil.isValid() && validUntil.toLongLong() < commonClock())
        why = QStringLiteral("The request is too old");
    else if (display.isValid() &&
             !isSameDisplay(DisplayName::fromText(display.toString()), display_))
        why = QStringLiteral("The window is on another display");
    if (!why.isEmpty() && calledFromDBus())
        sendErrorReply(QDBusError::Failed, why);
    return why.isEmpty();
}
