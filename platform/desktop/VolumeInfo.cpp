#include "platform/desktop/VolumeInfo.h"

#include "platform/desktop/DesktopLog.h"
#include "platform/desktop/MountTable.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>

namespace {

/// Of a path that is gone, the folder that is left of it.
QString canonicalPathOf(const QString& path) {
    QString existing = QFileInfo(path).absoluteFilePath();
    for (;;) {
        const QString canonical = QFileInfo(existing).canonicalFilePath();
        if (!canonical.isEmpty()) {
            return canonical;
        }
        const QString parent = QFileInfo(existing).path();
        if (parent == existing) {
            return existing;
        }
        existing = parent;
    }
}

} // namespace

QString volumeType(const QString& kernelType) {
    const bool isFat = kernelType == u"vfat" || kernelType == u"msdos" || kernelType == u"fat";
    return isFat ? QStringLiteral("msdos") : kernelType;
}

SystemVolumeInfo::SystemVolumeInfo() : SystemVolumeInfo(Sources{}) {}

SystemVolumeInfo::SystemVolumeInfo(const Sources& sources)
    : mountInfo_(sources.mountInfo),
      answerLimit_(sources.answerLimit),
      devices_(sources.sysFolder),
      media_(sources.busAddress, sources.restAfterSilence) {}

VolumeFacts SystemVolumeInfo::facts(const QString& path) {
    QFile mountInfo(mountInfo_);
    const MountTable mounts(mountInfo.open(QIODevice::ReadOnly) ? mountInfo.readAll()
                                                                : QByteArray());
    VolumeFacts facts;
    if (const Mount* mount = mounts.holding(canonicalPathOf(path))) {
        facts = {isRemovable(*mount), volumeType(mount->type)};
    } else if (mounts.isEmpty()) {
        facts.type = volumeType(QString::fromLatin1(QStorageInfo(path).fileSystemType()));
    }
    qCDebug(lcDesktop) << "volume of" << path << facts.type << "removable" << facts.removable;
    return facts;
}

bool SystemVolumeInfo::isRemovable(const Mount& mount) {
    const QDeadlineTimer deadline(answerLimit_);
    const QList<BlockDevice> devices = devices_.below(mount);
    return std::any_of(devices.begin(), devices.end(), [&](const BlockDevice& device) {
        const std::optional<bool> answer = media_.isRemovable(device.name, deadline);
        return answer ? *answer : BlockDevices::hasRemovableMedium(device);
    });
}
