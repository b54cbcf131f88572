#pragma once

#include "platform/desktop/BlockDevices.h"
#include "platform/desktop/MessageBus.h"
#include "platform/desktop/RemovableMedia.h"

#include <QString>

#include <chrono>

/// What is known of the volume that holds a path.
struct VolumeFacts {
    bool removable = false; ///< a card or a stick; external hard disks are not
    QString type;           ///< file system: "msdos" for every FAT, else as the kernel calls it

    [[nodiscard]] bool operator==(const VolumeFacts&) const = default;
};

/// Answers what volume a path lies on. Any thread; owned by the controller.
class VolumeInfo {
public:
    VolumeInfo() = default;
    virtual ~VolumeInfo() = default;
    Q_DISABLE_COPY_MOVE(VolumeInfo)

    /// Never fails: what cannot be found out is "not removable" and an empty type.
    [[nodiscard]] virtual VolumeFacts facts(const QString& path) = 0;
};

/// The volumes of this computer: the mount table, the disk service and, where that does not
/// answer within a second, sysfs. Blocks; on a dead network share as long as the kernel does.
class SystemVolumeInfo final : public VolumeInfo {
public:
    /// Where the facts come from.
    struct Sources {
        QString mountInfo = QStringLiteral("/proc/self/mountinfo");
        QString sysFolder = QStringLiteral("/sys");
        QString busAddress = systemBusAddress();
        std::chrono::milliseconds answerLimit{1000};
        std::chrono::milliseconds restAfterSilence = RemovableMedia::defaultRest;
    };

    SystemVolumeInfo();
    explicit SystemVolumeInfo(const Sources& sources);

    [[nodiscard]] VolumeFacts facts(const QString& path) override;

private:
    [[nodiscard]] bool isRemovable(const Mount& mount);

    const QString mountInfo_;
    const std::chrono::milliseconds answerLimit_;
    const BlockDevices devices_;
    RemovableMedia media_;
};

/// The name by which the program knows a file system type of the kernel.
[[nodiscard]] QString volumeType(const QString& kernelType);
