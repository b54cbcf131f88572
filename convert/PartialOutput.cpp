#include "convert/PartialOutput.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "reelshift.convert")

std::optional<struct stat> statOf(const QString& path) {
    struct stat result {};
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &result) != 0)
        return std::nullopt;
    return result;
}

bool isLink(const QString& path) {
    struct stat result {};
    return ::lstat(QFile::encodeName(path).constData(), &result) == 0 && S_ISLNK(result.st_mode);
}

bool isUnchanged(const struct stat& before, const struct stat& now) {
    return before.st_dev == now.st_dev && before.st_ino == now.st_ino &&
           before.st_size == now.st_size && before.st_mtim.tv_sec == now.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == now.st_mtim.tv_nsec;
}

} // namespace

PartialOutput::PartialOutput(const QString& path)
    : path_(path), before_(statOf(path)), wasLink_(isLink(path)) {}

bool PartialOutput::exists() const {
    const auto now = statOf(path_);
    if (!now || !S_ISREG(now->st_mode))
        return false;
    // An encoder makes no links: one that has come since leads to somebody else's file.
    if (!wasLink_ && isLink(path_))
        return false;
    return !before_ || !isUnchanged(*before_, *now);
}

void PartialOutput::remove() const {
    // Behind a symbolic link it is the file that was written, not the link.
    if (exists() && !QFile::remove(QFileInfo(path_).canonicalFilePath()))
        qCWarning(log, "the partial output could not be deleted: %s", qPrintable(path_));
}

bool isSameFile(const QString& one, const QString& other) {
    const auto first = statOf(one);
    const auto second = statOf(other);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}
