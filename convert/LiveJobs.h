#pragma once

#include "convert/Job.h"

#include <optional>
#include <vector>

class FileList;
class RunWatch;
struct SharedState;

/// The jobs that are on their way, and their rows. Main thread; owned by the engine.
class LiveJobs final {
public:
    LiveJobs(MainThread& mainThread, FileList& files, SharedState& state, RunWatch& watch)
        : mainThread_(mainThread), files_(files), state_(state), watch_(watch) {}
    Q_DISABLE_COPY_MOVE(LiveJobs)

    /// The job that was picked last, null before the first; settled when it has had its outcome.
    [[nodiscard]] const JobPtr& current() const { return current_; }
    /// Every job that has not had its outcome.
    [[nodiscard]] const std::vector<JobPtr>& all() const { return all_; }
    /// The processes that were launched for no job and have not ended.
    [[nodiscard]] const std::vector<std::shared_ptr<ChildProcess>>& strays() const {
        return strays_;
    }
    /// The process that the last launch or resume was about.
    [[nodiscard]] const std::shared_ptr<ChildProcess>& runningTask() const { return runningTask_; }
    /// Row of a job; nothing when it was removed.
    [[nodiscard]] std::optional<int> rowOf(const Job& job) const;
    /// The job that converts the movie of a record. After rows were dragged the id under which it
    /// was queued is another one.
    [[nodiscard]] JobPtr ofRecord(int recordId) const;
    [[nodiscard]] JobPtr ofTask(const std::shared_ptr<ChildProcess>& task) const;

    /// A row's job begins.
    JobPtr begin(int row, const JobOrder& order);
    void launched(Job& job, const std::shared_ptr<ChildProcess>& task);
    /// The button of this row was pressed to pause the job that is converted.
    void pauseWasAsked(int row);
    void resume(const std::shared_ptr<ChildProcess>& task);
    /// Gives a job its one outcome; false when it has had it already.
    [[nodiscard]] bool settle(const JobPtr& job);
    /// A process that was launched for no job, and its end.
    void addStray(const std::shared_ptr<ChildProcess>& task);
    void dropStray(const std::shared_ptr<ChildProcess>& task);

    /// A wait of the main thread, of a second at least; `job` may be null.
    void waitUntilSettled(const JobPtr& job) const;
    void rowChanged(const Job& job) const;
    void showPosition(Job& job, int percent, const QString& timeLeft) const;
    /// The bar follows the position that was shown last.
    void showStep(Job& job) const;
    /// Puts a job's row back to waiting.
    void showWaiting(Job& job) const;
    /// After rows were dragged: brings the lists beside the records in order, and the run in line
    /// with them, so that each movie is still converted once. To be called before rows are removed.
    void alignWithRecords();

private:
    void alignProgress();

    MainThread& mainThread_;
    FileList& files_;
    SharedState& state_;
    RunWatch& watch_;
    JobPtr current_;
    std::vector<JobPtr> all_;
    std::vector<std::shared_ptr<ChildProcess>> strays_;
    std::shared_ptr<ChildProcess> runningTask_;
};
