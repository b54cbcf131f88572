#include "platform/desktop/FileManager.h"

#include "platform/desktop/DesktopLog.h"

#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QThread>
#include <QUrl>

#include <memory>
#include <system_error>
#include <utility>

DesktopFileManager::DesktopFileManager(QString busAddress, std::chrono::milliseconds answerLimit,
                                       QObject* parent)
    : QObject(parent),
      mailbox_(Mailbox<DesktopFileManager>::make(*this)),
      busAddress_(std::move(busAddress)),
      answerLimit_(answerLimit) {}

DesktopFileManager::~DesktopFileManager() {
    mailbox_->close();
}

void DesktopFileManager::showFolder(const QString& path) {
    Q_ASSERT(thread() == QThread::currentThread());
    try {
        lookers_.start([path, mailbox = mailbox_] {
            const QFileInfo file(path);
            const Item item{file.absoluteFilePath(), file.isDir()};
            mailbox->post([item](DesktopFileManager& manager) { manager.show(item); });
        });
    } catch (const std::system_error& failure) {
        qCWarning(lcDesktop) << path << "is not shown:" << failure.what();
    }
}

void DesktopFileManager::show(const Item& item) {
    const auto bus = busAddress_.isEmpty() ? nullptr : std::make_shared<MessageBus>(busAddress_);
    if (!bus || !bus->isConnected()) {
        openWithDesktop(item);
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus->callLater(showCall(item), answerLimit_), this);
    // The conversation lives in the connection: it ends with the answer, or with this object.
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [bus, item, watcher] {
        if (watcher->isError()) {
            qCInfo(lcDesktop) << "no file manager answered:" << watcher->error().message();
            openWithDesktop(item);
        }
        watcher->deleteLater();
    });
}

QDBusMessage DesktopFileManager::showCall(const Item& item) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"),
        item.isFolder ? QStringLiteral("ShowFolders") : QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(item.path);
    message << QStringList{QString::fromLatin1(url.toEncoded())} << QString();
    return message;
}

void DesktopFileManager::openWithDesktop(const Item& item) {
    const QString folder = item.isFolder ? item.path : QFileInfo(item.path).absolutePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) {
        qCWarning(lcDesktop) << "nothing on this desktop opens the folder" << folder;
    }
}
