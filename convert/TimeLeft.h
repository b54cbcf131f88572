#pragma once

#include <chrono>
#include <optional>

/// How long a movie and the whole run will yet take, judged by the speed that was seen so far: from
/// a movie's first position on, because before it an encoder fills its window of pictures, which on
/// a slow machine looks like hours. A value without a clock: `now` is any that never goes back.
/// Lengths and positions are seconds of a movie, 0 for a length that is not known.
class TimeLeft final {
public:
    using Moment = std::chrono::milliseconds;

    /// A speed that was watched for a shorter time says nothing.
    static constexpr Moment shortestWatch{3000};

    /// A movie's encoder begins.
    void movieBegins(Moment now, double length);
    void reached(Moment now, double position);
    /// Paused time counts for nothing.
    void pause(Moment now);
    void resume(Moment now);
    /// The movie's encoder has ended, however.
    void movieEnds();
    /// A movie of that length needs no more work.
    void movieIsDone(double length) { doneLength_ += length; }

    /// Seconds, as of the last position; nothing before that can be known.
    [[nodiscard]] std::optional<double> ofMovie() const;
    /// The same with all movies that wait; nothing where their length is not known.
    [[nodiscard]] std::optional<double> ofRun(std::optional<double> waitingLength) const;
    /// Share of the run that is done, 0.0 to 1.0.
    [[nodiscard]] double share(std::optional<double> waitingLength) const;

private:
    [[nodiscard]] Moment worked(Moment now) const;
    [[nodiscard]] double restOfMovie() const;
    [[nodiscard]] Moment seenWork() const { return watched_ - firstWatched_; }
    [[nodiscard]] double seenMovie() const { return position_ - firstPosition_; }
    /// Seconds of work that a second of movie takes.
    [[nodiscard]] static std::optional<double> cost(Moment work, double movie);

    // The movie that is being converted.
    double length_ = 0;
    double position_ = 0;
    Moment worked_{0};            ///< up to the last pause
    std::optional<Moment> since_; ///< nothing while paused and between movies
    Moment watched_{0};           ///< work up to the last position
    Moment firstWatched_{0};      ///< work up to the first one behind the beginning
    double firstPosition_ = 0;

    // The movies before it.
    Moment workedBefore_{0};
    double positionsBefore_ = 0;
    double doneLength_ = 0;
};
