#include "opening/HandOver.h"

#include "opening/DisplayName.h"
#include "opening/StartupTokens.h"

#include <QVariantMap>

using namespace std::chrono_literals;

namespace {

// Who gives up opens a window of its own. What comes too late must not be opened twice, so the
// request ends earlier than the wait for its answer.
constexpr auto margin = 200ms;

QDBusMessage question(const QString& name) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    message << name;
    return message;
}

QDBusMessage request(const QStringList& addresses, std::chrono::milliseconds limit) {
    QVariantMap data{
        {busname::display, DisplayName::here().text()},
        {busname::validUntil, commonClock() + static_cast<qint64>((limit - margin).count())}};
    StartupTokens::look().addTo(data);
    QDBusMessage message = QDBusMessage::createMethodCall(
        busname::service, busname::path, busname::interface,
        addresses.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    message.setAutoStartService(false);
    if (!addresses.isEmpty())
        message << addresses;
    message << data;
    return message;
}

} // namespace

HandOver handOver(MessageBus& bus, const QStringList& addresses, const HandOverLimits& limits) {
    if (!bus.isConnected())
        return HandOver::NoBus;
    const QDBusMessage owner = bus.call(question(busname::service), QDeadlineTimer(limits.bus));
    if (owner.type() != QDBusMessage::ReplyMessage)
        return HandOver::NoBus;
    if (!owner.arguments().value(0).toBool())
        return HandOver::NotRunning;
    const QDBusMessage answer =
        bus.call(request(addresses, limits.program), QDeadlineTimer(limits.program));
    return answer.type() == QDBusMessage::ReplyMessage ? HandOver::Taken : HandOver::NotTaken;
}

qint64 commonClock() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
