#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// One line of the kernel's mountinfo.
struct Mount {
    int id = 0;
    int parent = 0;
    uint major = 0; ///< 0 for a file system without a block device of its own
    uint minor = 0;
    QString mountPoint;
    QString type;
    QString source;
};

/// The file systems that are mounted, read from the text of /proc/self/mountinfo. Any thread; a
/// value.
class MountTable final {
public:
    explicit MountTable(const QByteArray& mountInfo);

    [[nodiscard]] bool isEmpty() const { return mounts_.isEmpty(); }
    [[nodiscard]] const QList<Mount>& mounts() const { return mounts_; }

    /// The mount in which a canonical absolute path lies, null where there is none; mounts that
    /// others lie over are not seen. Valid as long as the table.
    [[nodiscard]] const Mount* holding(const QString& canonicalPath) const;

private:
    QList<Mount> mounts_;
};
