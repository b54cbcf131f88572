#include "convert/EncoderLife.h"

bool EncoderLife::isFinished() const {
    return summarySeen_ && !noPicture_ && !writeFailed_ && !damageSeen_ && !toldToEnd_ &&
           hasOutput_ && end_ && end_->succeeded();
}

EncoderLife::Verdict EncoderLife::verdict() const {
    if (request_ == Request::Remove)
        return Verdict::Removed;
    if (isFinished())
        return Verdict::Converted;
    if (request_ == Request::Stop)
        return Verdict::Stopped;
    return writeFailed_ ? Verdict::WriteFailed : Verdict::Failed;
}

void EncoderLife::launched() {
    Q_ASSERT(phase_ == Phase::Preparing);
    phase_ = Phase::Running;
}

void EncoderLife::suspended() {
    Q_ASSERT(phase_ == Phase::Running);
    phase_ = Phase::Suspended;
}

void EncoderLife::resumed() {
    if (phase_ == Phase::Suspended)
        phase_ = Phase::Running;
}

void EncoderLife::ask(Request request) {
    if (isSettled() || request_ == Request::Remove)
        return;
    request_ = request;
    removedWhilePaused_ = request == Request::Remove && phase_ == Phase::Suspended;
}

void EncoderLife::saw(const EncoderPiece& piece) {
    summarySeen_ = summarySeen_ || piece.marks.hasSummary;
    writeFailed_ = writeFailed_ || piece.marks.hasWriteFailure;
    noPicture_ = noPicture_ || piece.marks.hasNoPicture;
    damageSeen_ = damageSeen_ || piece.hasDamage;
}

bool EncoderLife::settle() {
    if (isSettled())
        return false;
    phase_ = Phase::Settled;
    return true;
}
