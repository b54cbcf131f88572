#include "platform/desktop/MountTable.h"

#include <QFile>
#include <QSet>

#include <optional>

namespace {

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

/// The kernel writes blanks, tabs, line ends and backslashes as a backslash and three digits.
QString unescaped(const QByteArray& field) {
    QByteArray bytes;
    bytes.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) &&
            isOctal(field[i + 2]) && isOctal(field[i + 3])) {
            bytes += static_cast<char>(field.mid(i + 1, 3).toUInt(nullptr, 8) & 0xFFU);
            i += 3;
        } else {
            bytes += field[i];
        }
    }
    return QFile::decodeName(bytes);
}

std::optional<Mount> mountOfLine(const QByteArray& line) {
    // id parent major:minor root mount-point options [optional fields...] - type source options
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype separator = fields.indexOf("-", 6);
    if (separator < 0 || separator + 2 >= fields.size()) {
        return std::nullopt;
    }
    const QList<QByteArray> device = fields[2].split(':');
    if (device.size() != 2) {
        return std::nullopt;
    }
    bool ok[4] = {};
    Mount mount;
    mount.id = fields[0].toInt(&ok[0]);
    mount.parent = fields[1].toInt(&ok[1]);
    mount.major = device[0].toUInt(&ok[2]);
    mount.minor = device[1].toUInt(&ok[3]);
    mount.mountPoint = unescaped(fields[4]);
    mount.type = unescaped(fields[separator + 1]);
    mount.source = unescaped(fields[separator + 2]);
    return ok[0] && ok[1] && ok[2] && ok[3] ? std::optional(mount) : std::nullopt;
}

bool liesIn(const QString& path, const QString& mountPoint) {
    return mountPoint == u"/" || path == mountPoint ||
           (path.startsWith(mountPoint) && path.at(mountPoint.size()) == u'/');
}

} // namespace

MountTable::MountTable(const QByteArray& mountInfo) {
    const QList<QByteArray> lines = mountInfo.split('\n');
    for (const QByteArray& line : lines) {
        if (const std::optional<Mount> mount = mountOfLine(line)) {
            mounts_ += *mount;
        }
    }
}

const Mount* MountTable::holding(const QString& canonicalPath) const {
    QList<const Mount*> onTheWay;
    QSet<int> ids;
    for (const Mount& mount : mounts_) {
        ids += mount.id;
        if (liesIn(canonicalPath, mount.mountPoint)) {
            onTheWay += &mount;
        }
    }
    // Walks down as the kernel does, from the outermost mount to its nearest child on the path.
    // The longest mount point alone would also find a mount that another one was put over.
    const Mount* current = nullptr;
    for (;;) {
        const Mount* next = nullptr;
        for (const Mount* mount : onTheWay) {
            const bool isRoot = mount->parent == mount->id || !ids.contains(mount->parent);
            const bool isChild =
                current ? mount->parent == current->id && mount != current : isRoot;
            if (isChild && (!next || mount->mountPoint.size() <= next->mountPoint.size())) {
                next = mount;
            }
        }
        if (!next) {
            return current;
        }
        current = next;
    }
}
