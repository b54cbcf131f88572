#include "platform/desktop/RemovableMedia.h"

#include "platform/desktop/DesktopLog.h"
#include "platform/desktop/MessageBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

namespace {

QDBusMessage propertyCall(const QString& object, const QString& interface,
                          const QString& property) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.UDisks2"), object,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << QString(u"org.freedesktop.UDisks2." % interface) << property;
    return message;
}

/// The value in the answer to a property call, invalid for an error.
QVariant valueIn(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
        return {};
    }
    return answer.arguments().constFirst().value<QDBusVariant>().variant();
}

/// The time was up. (The clock is no measure of that: Qt's coarse timers end a call up to a
/// twentieth early.)
bool isSilence(const QDBusMessage& answer) {
    return QDBusError(answer).type() == QDBusError::NoReply;
}

} // namespace

QString blockObjectPath(const QString& deviceName) {
    QString path = QStringLiteral("/org/freedesktop/UDisks2/block_devices/");
    const QByteArray bytes = deviceName.toUtf8();
    for (const char c : bytes) {
        const bool isPlain =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isPlain) {
            path += QLatin1Char(c);
        } else {
            path += u'_' % QLatin1StringView(QByteArray(1, c).toHex());
        }
    }
    return path;
}

RemovableMedia::RemovableMedia(QString busAddress, std::chrono::milliseconds rest)
    : busAddress_(std::move(busAddress)), rest_(rest) {}

std::optional<bool> RemovableMedia::isRemovable(const QString& deviceName,
                                                QDeadlineTimer deadline) {
    if (deadline.hasExpired() || isResting()) {
        return std::nullopt;
    }
    MessageBus bus(busAddress_);
    if (!bus.isConnected()) {
        return std::nullopt;
    }
    QDBusMessage answer = bus.call(
        propertyCall(blockObjectPath(deviceName), QStringLiteral("Block"), QStringLiteral("Drive")),
        deadline);
    const QString drive = valueIn(answer).value<QDBusObjectPath>().path();
    if (drive.size() > 1) { // "/" stands for a device without a drive
        answer =
            bus.call(propertyCall(drive, QStringLiteral("Drive"), QStringLiteral("MediaRemovable")),
                     deadline);
        const QVariant removable = valueIn(answer);
        if (removable.userType() == QMetaType::Bool) {
            return removable.toBool();
        }
    }
    if (isSilence(answer)) {
        qCWarning(lcDesktop, "The disk service does not answer; sysfs is read instead.");
        startRest();
    }
    return std::nullopt;
}

bool RemovableMedia::isResting() {
    const std::scoped_lock lock(mutex_);
    return !restUntil_.hasExpired();
}

void RemovableMedia::startRest() {
    const std::scoped_lock lock(mutex_);
    restUntil_ = QDeadlineTimer(rest_);
}
