#include "convert/TimeLeft.h"

#include <algorithm>
#include <cmath>

void TimeLeft::movieBegins(Moment now, double length) {
    length_ = std::isfinite(length) && length > 0 ? length : 0;
    position_ = firstPosition_ = 0;
    worked_ = watched_ = firstWatched_ = Moment(0);
    since_ = now;
}

void TimeLeft::reached(Moment now, double position) {
    if (!std::isfinite(position) || position < 0)
        return;
    position_ = length_ > 0 ? std::min(position, length_) : position;
    watched_ = worked(now);
    if (firstPosition_ > 0)
        return;
    firstPosition_ = position_;
    firstWatched_ = watched_;
}

void TimeLeft::pause(Moment now) {
    worked_ = worked(now);
    since_.reset();
}

void TimeLeft::resume(Moment now) {
    if (!since_)
        since_ = now;
}

void TimeLeft::movieEnds() {
    workedBefore_ += watched_;
    positionsBefore_ += position_;
    length_ = position_ = firstPosition_ = 0;
    worked_ = watched_ = firstWatched_ = Moment(0);
    since_.reset();
}

std::optional<double> TimeLeft::ofMovie() const {
    const auto movieCost = cost(seenWork(), seenMovie());
    if (!movieCost || length_ <= 0)
        return std::nullopt;
    return restOfMovie() * *movieCost;
}

std::optional<double> TimeLeft::ofRun(std::optional<double> waitingLength) const {
    const auto runCost = cost(workedBefore_ + seenWork(), positionsBefore_ + seenMovie());
    if (!runCost || length_ <= 0 || !waitingLength)
        return std::nullopt;
    return ofMovie().value_or(restOfMovie() * *runCost) + *waitingLength * *runCost;
}

double TimeLeft::share(std::optional<double> waitingLength) const {
    const double all = doneLength_ + length_ + waitingLength.value_or(0);
    return all > 0 ? std::clamp((doneLength_ + std::min(position_, length_)) / all, 0.0, 1.0) : 0;
}

TimeLeft::Moment TimeLeft::worked(Moment now) const {
    return worked_ + (since_ ? std::max(now - *since_, Moment(0)) : Moment(0));
}

double TimeLeft::restOfMovie() const {
    return std::max(length_ - position_, 0.0);
}

std::optional<double> TimeLeft::cost(Moment work, double movie) {
    if (work < shortestWatch || movie <= 0)
        return std::nullopt;
    return std::chrono::duration<double>(work).count() / movie;
}
