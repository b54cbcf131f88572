#include "platform/desktop/FileManager.h"

#include "platform/desktop/DesktopLog.h"

#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QThread>
#include <QUrl>

#include <memory>
#include <utility>

namespace {

QDBusMessage showCall(const QFileInfo& item) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"),
        item.isDir() ? QStringLiteral("ShowFolders") : QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(item.absoluteFilePath());
    message << QStringList{QString::fromLatin1(url.toEncoded())} << QString();
    return message;
}

void openWithDesktop(const QFileInfo& item) {
    const QString folder = item.isDir() ? item.absoluteFilePath() : item.absolutePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) {
        qCWarning(lcDesktop) << "nothing on this desktop opens the folder" << folder;
    }
}

} // namespace

DesktopFileManager::DesktopFileManager(QString busAddress, std::chrono::milliseconds answerLimit,
                                       QObject* parent)
    : QObject(parent), busAddress_(std::move(busAddress)), answerLimit_(answerLimit) {}

void DesktopFileManager::showFolder(const QString& path) {
    Q_ASSERT(thread() == QThread::currentThread());
    const QFileInfo item(path);
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
