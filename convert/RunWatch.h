#pragma once

#include "convert/TimeLeft.h"

#include <QObject>

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

class FileList;

/// What a run comes to for those outside the engine: whether there is work, how far it is, how long
/// it will yet take and what it came to. The engine's parts tell it what happens, and call each job
/// by its id. Main thread; owned by the engine.
class RunWatch final : public QObject {
    Q_OBJECT

public:
    struct Outcome {
        int converted = 0;
        int notConverted = 0; ///< movies that the user took out of the list count for nothing
    };
    /// Any that never goes back.
    using Clock = std::function<TimeLeft::Moment()>;

    explicit RunWatch(const FileList& files, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(RunWatch)

    void setClock(Clock clock) { clock_ = std::move(clock); }
    /// Whether a run is on in which not everything is paused.
    [[nodiscard]] bool isWorking() const { return phase_ == Phase::Working; }

    /// The queue was filled: a run begins, or goes on.
    void runGoesOn();
    void jobBegins(int job);
    /// The jobs have other ids from now on, each that of its own movie.
    void idsChanged(const std::unordered_map<int, int>& ids);
    /// `length` in seconds of the movie; 0 where it is not known.
    void encoderLaunched(int job, double length);
    /// `position` in seconds of the movie. Answers the text about the time left.
    QString reached(int job, double position);
    void paused();
    void resumed();
    void jobEnds();
    void converted(int job, double length);
    /// Why a job was not converted, for a report: its command, how it ended, what it said last.
    void failed(int job, const QString& details);
    /// Empty where it has not failed since it was begun last.
    [[nodiscard]] QString detailsOf(int job) const;
    /// The run's summary is about to be shown, before or after runIsOver().
    void summaryOpens();
    /// However it ended; once is enough.
    void runIsOver();

Q_SIGNALS:
    void workBegan();
    /// Everything is paused, or the run is over.
    void workRests();
    void progressed(double share);
    /// A text; empty where it is not known, and while nothing is converted.
    void timeLeftChanged(const QString& ofAllMovies);
    /// A run has come to its end by itself: its summary follows.
    void ended(const RunWatch::Outcome& outcome);
    void over();

private:
    enum class Phase { Idle, Queued, Working, Paused };

    void setPhase(Phase phase);
    [[nodiscard]] Outcome outcome() const;
    /// Seconds of the movies in the queue but for the job's own; nothing where one is not known.
    [[nodiscard]] std::optional<double> waitingLength(int job);

    const FileList& files_;
    Clock clock_;
    Phase phase_ = Phase::Idle;
    bool isSummaryDue_ = false;
    std::unordered_set<int> queued_; ///< ids of jobs
    std::unordered_set<int> converted_;
    std::unordered_map<int, QString> details_;
    TimeLeft time_;
    std::optional<double> waitingLength_;
    std::pair<int, size_t> waitingFor_{-1, 0}; ///< job and length of the queue it was counted for
};
