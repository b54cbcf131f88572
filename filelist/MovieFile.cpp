#include "filelist/MovieFile.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace {

std::optional<FileIdentity> identityOf(const QString& path) {
    struct stat file {};
    if (::stat(QFile::encodeName(path).constData(), &file) != 0)
        return std::nullopt;
    return FileIdentity{file.st_dev, file.st_ino, file.st_size, file.st_mtim.tv_sec,
                        file.st_mtim.tv_nsec};
}

} // namespace

MovieFile lookAtMovieFile(const QString& path, VolumeInfo& volumes,
                          const std::optional<MovieFile>& before) {
    const auto identity = identityOf(path);
    if (identity && before && before->identity == identity)
        return *before;
    return {identity, volumes.facts(QFileInfo(path).path())};
}
