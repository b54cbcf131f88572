#include "convert/PartialOutput.h"

#include "convert/ConvertLog.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

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

bool hasSameContent(const struct stat& before, const struct stat& now) {
    return before.st_size == now.st_size && before.st_mtim.tv_sec == now.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == now.st_mtim.tv_nsec;
}

bool isSame(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isUnchanged(const struct stat& before, const struct stat& now) {
    return isSame(before, now) && hasSameContent(before, now);
}

} // namespace

PartialOutput::PartialOutput(const QString& path)
    : path_(path), before_(statOf(path)), wasLink_(isLink(path)) {}

std::optional<struct stat> PartialOutput::madeByNow() const {
    const auto now = statOf(path_);
    if (!now || !S_ISREG(now->st_mode))
        return std::nullopt;
    // An encoder makes no links: one that has come since leads to somebody else's file.
    if (!wasLink_ && isLink(path_))
        return std::nullopt;
    return before_ && isUnchanged(*before_, *now) ? std::nullopt : now;
}

bool PartialOutput::exists() const {
    const auto now = madeByNow();
    return now && isOfTheEncoder(*now);
}

bool PartialOutput::isOfTheEncoder(const struct stat& now) const {
    const std::lock_guard lock(judgement_->mutex);
    if (!judgement_->isMade)
        return !judgement_->noted || isSame(*judgement_->noted, now);
    const auto& left = judgement_->left;
    // Either is enough: some network folders change the one or the other by themselves.
    return left && left->st_dev == now.st_dev &&
           (left->st_ino == now.st_ino || hasSameContent(*left, now));
}

void PartialOutput::note() const {
    const auto now = madeByNow(); // without the lock: it may hang
    const std::lock_guard lock(judgement_->mutex);
    if (!judgement_->isMade)
        judgement_->noted = now;
}

bool PartialOutput::isJudged() const {
    const std::lock_guard lock(judgement_->mutex);
    return judgement_->isMade;
}

bool PartialOutput::judge() const {
    {
        const std::lock_guard lock(judgement_->mutex);
        if (judgement_->isMade)
            return judgement_->left.has_value();
    }
    auto now = madeByNow(); // without the lock: it may hang
    const std::lock_guard lock(judgement_->mutex);
    if (now && judgement_->noted && !isSame(*judgement_->noted, *now))
        now.reset();
    if (!std::exchange(judgement_->isMade, true))
        judgement_->left = now;
    return judgement_->left.has_value();
}

void PartialOutput::remove() const {
    // Behind a symbolic link it is the file that was written, not the link.
    if (exists() && !QFile::remove(QFileInfo(path_).canonicalFilePath()))
        qCWarning(lcConvert, "the partial output could not be deleted: %s", qPrintable(path_));
}

bool isSameFile(const QString& one, const QString& other) {
    const auto first = statOf(one);
    const auto second = statOf(other);
    return first && second && isSame(*first, *second);
}
