#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A sysfs of its own in a temporary folder, laid out as the kernel does it.
class SysTree final {
public:
    SysTree();
    Q_DISABLE_COPY_MOVE(SysTree)

    [[nodiscard]] QString path() const { return folder_.path(); }

    /// `number` is "major:minor" throughout.
    void addDisk(const QString& name, const QString& number, bool removable);
    void addPartition(const QString& disk, const QString& name, const QString& number);
    /// A device-mapper or RAID device that lies on others.
    void addStacked(const QString& name, const QString& number, const QStringList& slaves);
    void setCardType(const QString& disk, const QString& type);
    /// Takes the attribute "removable" away, as on a device without one.
    void removeAttribute(const QString& disk);

private:
    [[nodiscard]] QString deviceFolder(const QString& name) const;
    void addDevice(const QString& name, const QString& number, const QString& folder);

    QTemporaryDir folder_;
};
