#include "convert/FileTime.h"

#include <QFile>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>

std::optional<timespec> modificationTime(const QString& path) {
    struct stat facts {};
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0)
        return std::nullopt;
    return facts.st_mtim;
}

bool setModificationTime(const QString& path, timespec time) {
    const timespec readAt{0, UTIME_OMIT};
    const std::array<timespec, 2> times{readAt, time};
    return ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0) == 0;
}
