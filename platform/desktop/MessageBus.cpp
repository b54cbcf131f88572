#include "platform/desktop/MessageBus.h"

#include <QDBusError>
#include <QFileInfo>

#include <algorithm>
#include <atomic>

namespace {

constexpr int greetingLimitMs = 10'000;

QString uniqueConnectionName() {
    static std::atomic<quint64> next{0};
    return u"reelshift-desktop-" % QString::number(next.fetch_add(1));
}

} // namespace

QString systemBusAddress() {
    const QString given = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return given.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket") : given;
}

QString sessionBusAddress() {
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!given.isEmpty()) {
        return given;
    }
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = runtimeFolder % u"/bus";
    return !runtimeFolder.isEmpty() && QFileInfo::exists(socket) ? u"unix:path=" % socket
                                                                 : QString();
}

MessageBus::MessageBus(const QString& address)
    : name_(uniqueConnectionName()), connection_(QDBusConnection::connectToPeer(address, name_)) {
    if (connection_.isConnected()) {
        // Its answer is not awaited: a bus reads the messages of a connection in order.
        connection_.asyncCall(QDBusMessage::createMethodCall(
                                  QStringLiteral("org.freedesktop.DBus"),
                                  QStringLiteral("/org/freedesktop/DBus"),
                                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("Hello")),
                              greetingLimitMs);
    }
}

MessageBus::~MessageBus() {
    QDBusConnection::disconnectFromPeer(name_);
}

bool MessageBus::isConnected() const {
    return connection_.isConnected();
}

QDBusMessage MessageBus::call(const QDBusMessage& message, QDeadlineTimer deadline) {
    const qint64 left = deadline.remainingTime();
    if (left <= 0) {
        return message.createErrorReply(QDBusError::NoReply, QStringLiteral("No time left"));
    }
    return connection_.call(message, QDBus::Block,
                            static_cast<int>(std::min<qint64>(left, greetingLimitMs)));
}

QDBusPendingCall MessageBus::callLater(const QDBusMessage& message,
                                       std::chrono::milliseconds limit) {
    return connection_.asyncCall(message, static_cast<int>(limit.count()));
}

void MessageBus::send(const QDBusMessage& message) {
    connection_.send(message);
}

bool MessageBus::offer(const QString& path, QObject* object) {
    return connection_.registerObject(path, object, QDBusConnection::ExportScriptableSlots);
}
