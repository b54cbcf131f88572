#include "convert/EncoderRun.h"

std::optional<ReaderSignals::Clock::time_point> ReaderSignals::endAskedAt() const {
    const std::lock_guard lock(mutex_);
    return endAskedAt_;
}

bool ReaderSignals::waitWhileSuspended() const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !suspended_ || endAskedAt_ || closing_; });
    return !closing_;
}

void ReaderSignals::waitUntil(const std::function<bool()>& done) const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return done() || endAskedAt_ || closing_; });
}

void ReaderSignals::wake() {
    const std::lock_guard lock(mutex_);
    changed_.notify_all();
}

void ReaderSignals::setSuspended(bool suspended) {
    const std::lock_guard lock(mutex_);
    suspended_ = suspended;
    changed_.notify_all();
}

void ReaderSignals::askForEnd() {
    const std::lock_guard lock(mutex_);
    if (!endAskedAt_)
        endAskedAt_ = Clock::now();
    changed_.notify_all();
}

void ReaderSignals::close() {
    const std::lock_guard lock(mutex_);
    closing_ = true;
    changed_.notify_all();
}

bool EncoderWords::allowWholeFile() const {
    const std::lock_guard lock(mutex_);
    return !failure_ && (summary_ || !isLastRead_);
}

bool EncoderWords::waitForLastWord(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [this] { return isLastRead_; });
}

void EncoderWords::note(const EncoderPiece& piece) {
    const std::lock_guard lock(mutex_);
    summary_ = summary_ || piece.marks.hasSummary;
    failure_ =
        failure_ || piece.marks.hasWriteFailure || piece.marks.hasNoPicture || piece.hasDamage;
}

void EncoderWords::noteLastWord() {
    const std::lock_guard lock(mutex_);
    isLastRead_ = true;
    changed_.notify_all();
}

void EncoderRun::ask(EncoderLife::Request request) {
    if (life.isSettled())
        return;
    life.ask(request);
    reader.askForEnd();
    if (task)
        task->wakeReader();
}

void EncoderRun::suspended() {
    life.suspended();
    reader.setSuspended(true);
}

void EncoderRun::resumed() {
    life.resumed();
    reader.setSuspended(false);
}
