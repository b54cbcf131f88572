#pragma once

#include "convert/Job.h"
#include "filelist/RunControl.h"

#include <memory>

class ChildProcess;
class ConversionQueue;
class RunSummary;
struct ConversionContext;

/// Pauses, resumes and stops: what the user asks of a run that is under way. Main thread; owned by
/// the engine.
class PauseAndStop final : public RunControl {
public:
    PauseAndStop(const ConversionContext& context, ConversionQueue& queue, RunSummary& summary);
    Q_DISABLE_COPY_MOVE(PauseAndStop)

    void startConverting() override;
    void changeConvertingIndex() override;
    void setConvertingIndexForPause(int row) override;
    void setConvertingIndexForResume(int row) override;
    void StopPausedTask() override;
    void alignWithRecords() override;
    void deletePartialOutput(int recordId) override;
    void rowRemoved(int recordId) override;
    void endPausedTask(const PausedTask& paused) override;

    void resumeFile(const std::shared_ptr<ChildProcess>& task);
    /// The Stop button: asks first, and does nothing while nothing is queued.
    void stop();
    /// Stops the run and waits until its encoder has had its outcome.
    void stopConversion();
    /// A second start of a run, for the checked rows; nothing calls it.
    void replicaOfConvert();
    /// Offers to go on with paused jobs; nothing calls it.
    void popUpForStartResumePausedFiles();

    /// Every encoder ends and its partial output goes. finishQuit() must follow when nothing runs
    /// on the main loop any more.
    void quit();
    /// Waits for the encoders, kills those that do not obey, and deletes what they still wrote.
    void finishQuit();

private:
    static void askToEnd(const JobPtr& job,
                         EncoderLife::Request request = EncoderLife::Request::Stop);
    void waitUntilSettled(const JobPtr& job);
    void queueAgain(int jobId);

    const ConversionContext& context_;
    ConversionQueue& queue_;
    RunSummary& summary_;
};
