#include "convert/JobNews.h"

#include "convert/EncoderMarkers.h"

template <typename Change> void JobNews::tell(Change change) {
    const std::lock_guard lock(mutex_);
    change();
    changed_.notify_all();
}

std::optional<JobNews::Clock::time_point> JobNews::endAskedAt() const {
    const std::lock_guard lock(mutex_);
    return endAskedAt_;
}

bool JobNews::allowWholeFile() const {
    const std::lock_guard lock(mutex_);
    return !failure_ && (summary_ || !isLastRead_);
}

bool JobNews::waitWhileSuspended() const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !suspended_ || endAskedAt_ || closing_; });
    return !closing_;
}

void JobNews::waitUntil(const std::function<bool()>& done) const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return done() || endAskedAt_ || closing_; });
}

bool JobNews::waitForLastWord(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [this] { return isLastRead_; });
}

void JobNews::wake() {
    tell([] {});
}

void JobNews::setSuspended(bool suspended) {
    tell([&] { suspended_ = suspended; });
}

void JobNews::askForEnd() {
    tell([this] { endAskedAt_ = endAskedAt_.value_or(Clock::now()); });
}

void JobNews::close() {
    tell([this] { closing_ = true; });
}

void JobNews::noteSaid(const EncoderPiece& piece) {
    tell([&] {
        summary_ = summary_ || piece.marks.hasSummary;
        failure_ =
            failure_ || piece.marks.hasWriteFailure || piece.marks.hasNoPicture || piece.hasDamage;
    });
}

void JobNews::noteLastWord() {
    tell([this] { isLastRead_ = true; });
}
