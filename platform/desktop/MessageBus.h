#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDeadlineTimer>
#include <QString>

#include <chrono>

/// Address of the system bus: DBUS_SYSTEM_BUS_ADDRESS, else the usual socket.
[[nodiscard]] QString systemBusAddress();

/// Address of the session bus: DBUS_SESSION_BUS_ADDRESS, else the socket in XDG_RUNTIME_DIR; empty
/// where there is none (a bus is never started for the sake of a question).
[[nodiscard]] QString sessionBusAddress();

/// One conversation with a message bus in which nothing can wait longer than it was told to.
/// Used on the thread that made it; owned by whoever asks.
///
/// `QDBusConnection::connectToBus` waits for the bus without a limit, and a bus that accepts the
/// connection but never greets ends the process. So the bus is spoken to as a peer, and the
/// greeting is a call like any other.
class MessageBus final {
public:
    explicit MessageBus(const QString& address);
    ~MessageBus();
    Q_DISABLE_COPY_MOVE(MessageBus)

    [[nodiscard]] bool isConnected() const;

    /// The answer or an error message; waits until `deadline` at most.
    [[nodiscard]] QDBusMessage call(const QDBusMessage& message, QDeadlineTimer deadline);
    [[nodiscard]] QDBusPendingCall callLater(const QDBusMessage& message,
                                             std::chrono::milliseconds limit);
    /// A signal, or a call whose answer nobody waits for.
    void send(const QDBusMessage& message);
    /// Others may call the object's scriptable slots from now on, for as long as it lives.
    [[nodiscard]] bool offer(const QString& path, QObject* object);

private:
    QString name_;
    QDBusConnection connection_;
};
