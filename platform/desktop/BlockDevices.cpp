#include "platform/desktop/BlockDevices.h"

#include "platform/desktop/MountTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <utility>

namespace {

QByteArray firstLine(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readLine(100).trimmed() : QByteArray();
}

QString diskFolderOf(const QString& deviceFolder) {
    const bool isPartition = QFileInfo::exists(deviceFolder % u"/partition");
    return isPartition ? QFileInfo(deviceFolder).path() : deviceFolder;
}

void collectBelow(const QString& deviceFolder, QSet<QString>& seen, QList<BlockDevice>& found) {
    if (seen.contains(deviceFolder)) {
        return;
    }
    seen += deviceFolder;
    const QString disk = diskFolderOf(deviceFolder);
    const QFileInfoList slaves =
        QDir(disk % u"/slaves").entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (slaves.isEmpty()) {
        found += BlockDevice{QFileInfo(deviceFolder).fileName(), disk};
    }
    for (const QFileInfo& slave : slaves) {
        collectBelow(slave.canonicalFilePath(), seen, found);
    }
}

} // namespace

BlockDevices::BlockDevices(QString sysFolder) : sysFolder_(std::move(sysFolder)) {}

QList<BlockDevice> BlockDevices::below(const Mount& mount) const {
    QList<BlockDevice> found;
    QSet<QString> seen;
    if (const QString folder = folderOf(mount); !folder.isEmpty()) {
        collectBelow(folder, seen, found);
    }
    return found;
}

bool BlockDevices::hasRemovableMedium(const BlockDevice& device) {
    // The kernel calls the cards of a built-in reader fixed, but tells them from soldered memory.
    return firstLine(device.diskFolder % u"/removable") == "1" ||
           firstLine(device.diskFolder % u"/device/type") == "SD";
}

QString BlockDevices::folderOf(const Mount& mount) const {
    if (mount.major != 0) {
        const QString number = QString::number(mount.major) % u':' % QString::number(mount.minor);
        return QFileInfo(sysFolder_ % u"/dev/block/" % number).canonicalFilePath();
    }
    // Btrfs and file systems in user space (fuseblk) have numbers of their own, and name the
    // device.
    if (!mount.source.startsWith(u"/dev/")) {
        return {};
    }
    const QFileInfo node(mount.source);
    const QString name =
        QFileInfo(node.exists() ? node.canonicalFilePath() : mount.source).fileName();
    return QFileInfo(sysFolder_ % u"/class/block/" % name).canonicalFilePath();
}
