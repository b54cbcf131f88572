#pragma once

#include "convert/EncoderLife.h"
#include "convert/JobNews.h"
#include "convert/JobNote.h"
#include "convert/PartialOutput.h"
#include "filelist/JobRecord.h"

#include <QString>

#include <memory>
#include <optional>

#include <time.h>

class MainThread;
class ProgressObject;

/// What was ordered: what the list said of a movie when its job began.
struct JobOrder final {
    int id = 0;       ///< of its row at that time
    QString duration; ///< as the report has it, or "None"
    QString source;
    QString profile;
    QString resolution;
    QString outputFolder;
    QString bitrate;
};

/// What the job's thread has settled by the time that it launches the encoder.
struct JobPlan final {
    double length = 0.0; ///< of the movie, in seconds
    /// When the movie was last changed; the finished file gets the same time.
    std::optional<timespec> sourceTime;
    PartialOutput output;
};

/// What the window shows of a job; LiveJobs alone writes it. Main thread.
struct JobRow final {
    int id = 0; ///< of its row; another one after rows were dragged
    JobRecordPtr record;
    std::shared_ptr<ProgressObject> progress;
    int percent = 0; ///< of the position that was shown last
    /// Id of the row whose button asked for the pause.
    int pauseId = 0;
};

/// One movie's way from the queue to its one outcome. What its encoder did is written here alone.
/// Main thread, except for what is marked otherwise; shared by the threads that wait for it.
class Job final {
public:
    Job(JobOrder ordered, JobRow shown);
    Q_DISABLE_COPY_MOVE(Job)

    const JobOrder order; ///< any thread
    JobRow row;
    JobNews news; ///< any thread
    JobNote note; ///< any thread

    [[nodiscard]] const EncoderLife& life() const { return life_; }
    /// Fixed before the launch; from then on any thread.
    [[nodiscard]] const JobPlan& plan() const { return plan_; }
    /// Null before the launch; from then on any thread.
    [[nodiscard]] const std::shared_ptr<ChildProcess>& task() const { return task_; }
    /// Whether the encoder has ended and its file is whole, as far as its words were read. Any
    /// thread.
    [[nodiscard]] bool hasFinished() const;
    /// The last try to delete its output has not come back: it lies where nothing answers.
    [[nodiscard]] bool isOutputOutOfReach() const { return isOutputOutOfReach_; }

    /// Once, before the launch. The job's thread.
    void setPlan(JobPlan plan) { plan_ = std::move(plan); }
    void launched(std::shared_ptr<ChildProcess> task);
    /// False when the encoder has ended.
    bool suspend();
    void resume();
    /// Asks for the end: the job's thread carries it out at the next piece, or a second later.
    void ask(EncoderLife::Request request);
    void saw(const EncoderPiece& piece) { life_.saw(piece); }
    /// The one way to end an encoder, suspended or not; false when it has ended by itself.
    bool tellToEnd();
    /// For one that does not obey.
    bool kill();
    /// For one whose words cannot be read.
    void interrupt();
    /// `hasOutput`: whether it left a file.
    void ended(ProcessEnd end, bool hasOutput) { life_.ended(end, hasOutput); }
    /// True for the first outcome, false for every later one.
    [[nodiscard]] bool settle() { return life_.settle(); }

    /// Deletes what its encoder has written so far, unless that is finished. Takes a second at the
    /// most: on a dead share a deletion does not come back.
    void removeUnfinishedOutput(MainThread& mainThread);

private:
    bool end(bool (ChildProcess::*signal)());

    EncoderLife life_;
    JobPlan plan_;
    std::shared_ptr<ChildProcess> task_;
    bool isOutputOutOfReach_ = false;
};

using JobPtr = std::shared_ptr<Job>;
