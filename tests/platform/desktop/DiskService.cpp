#include "platform/desktop/DiskService.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

const QString root = QStringLiteral("/org/freedesktop/UDisks2");
const QString diskConnection = QStringLiteral("test-disk-service");

} // namespace

DiskService::DiskService(const QString& busAddress) {
    moveToThread(&thread_);
    thread_.start();
    const auto appear = [this, busAddress] {
        QDBusConnection bus = QDBusConnection::connectToBus(busAddress, diskConnection);
        ready_ = bus.registerVirtualObject(root, this, QDBusConnection::SubPath) &&
                 bus.registerService(QStringLiteral("org.freedesktop.UDisks2"));
    };
    QMetaObject::invokeMethod(this, appear, Qt::BlockingQueuedConnection);
}

DiskService::~DiskService() {
    QDBusConnection::disconnectFromBus(diskConnection);
    thread_.quit();
    thread_.wait();
}

QStringList DiskService::asked() const {
    const std::scoped_lock lock(mutex_);
    return asked_;
}

void DiskService::addBlock(const QString& name, const QString& drive) {
    const QString path = drive.isEmpty() ? QStringLiteral("/") : root % u"/drives/" % drive;
    const std::scoped_lock lock(mutex_);
    properties_.insert(root % u"/block_devices/" % name % u" org.freedesktop.UDisks2.Block Drive",
                       QVariant::fromValue(QDBusObjectPath(path)));
}

void DiskService::addDrive(const QString& name, bool removable, bool mediaRemovable) {
    const QString drive = root % u"/drives/" % name % u" org.freedesktop.UDisks2.Drive ";
    const std::scoped_lock lock(mutex_);
    properties_.insert(drive % u"Removable", removable);
    properties_.insert(drive % u"MediaRemovable", mediaRemovable);
}

void DiskService::setManner(Manner manner) {
    const std::scoped_lock lock(mutex_);
    manner_ = manner;
}

QString DiskService::introspect(const QString&) const {
    return {};
}

bool DiskService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const std::scoped_lock lock(mutex_);
    asked_ += message.path();
    const bool isDrive = message.path().contains(u"/drives/");
    if (manner_ == Manner::Silent || (manner_ == Manner::SilentOnDrives && isDrive)) {
        return true;
    }
    if (message.interface() != u"org.freedesktop.DBus.Properties" || message.member() != u"Get" ||
        message.signature() != u"ss") {
        return false;
    }
    const QString key = message.path() % u' ' % message.arguments().at(0).toString() % u' ' %
                        message.arguments().at(1).toString();
    if (!properties_.contains(key)) {
        return connection.send(message.createErrorReply(QDBusError::UnknownObject,
                                                        u"No such object or property: " % key));
    }
    const QVariant value =
        manner_ == Manner::WrongType ? QVariant(QStringLiteral("yes")) : properties_.value(key);
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
}
