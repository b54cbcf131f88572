#pragma once

#include <QList>
#include <QString>

struct Mount;

/// A device of the kernel with nothing of device-mapper or RAID below it.
struct BlockDevice {
    QString name;       ///< as the kernel calls it: "sdb1", "nvme0n1p2"
    QString diskFolder; ///< sysfs folder of the whole disk
};

/// The block devices below a mount, read from sysfs. Any thread; a value.
class BlockDevices final {
public:
    explicit BlockDevices(QString sysFolder);

    /// The real devices that hold a mount's data (several below a RAID or a volume group); empty
    /// for a file system without any, such as a network share or tmpfs.
    [[nodiscard]] QList<BlockDevice> below(const Mount& mount) const;

    /// Whether the kernel knows the disk as one whose medium is taken out: a card or a stick.
    [[nodiscard]] static bool hasRemovableMedium(const BlockDevice& device);

private:
    [[nodiscard]] QString folderOf(const Mount& mount) const;

    QString sysFolder_;
};
