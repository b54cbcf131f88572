#pragma once

#include "convert/EncoderRun.h"

#include <QString>

#include <optional>
#include <vector>

class ChildProcesses;
class ConversionDialogs;
class FileList;
class MainThread;
class ProfileCatalogue;
class RunWindow;
class WorkerThreads;
struct SharedState;

/// What the parts of the engine share. Main thread, except for the services, which any thread may
/// call; owned by the engine.
struct ConversionContext final {
    MainThread& mainThread;
    ChildProcesses& processes;
    WorkerThreads& workers;
    FileList& files;
    SharedState& state;
    RunWindow& window;
    ConversionDialogs& dialogs;
    const ProfileCatalogue& profiles;
    const QString encoderPath;
    /// The deliberate wait of a run; any thread.
    const std::chrono::milliseconds second;

    /// The job that was picked last; settled when it has had its outcome.
    EncoderRunPtr currentRun;
    /// The process that the last launch or resume was about.
    std::shared_ptr<ChildProcess> runningTask;
    /// Every encoder whose thread has not come to its end.
    std::vector<EncoderRunPtr> liveRuns;

    /// Row of a job; nothing when it was removed.
    [[nodiscard]] std::optional<int> rowOf(const EncoderRun& run) const;
    [[nodiscard]] EncoderRunPtr unsettledRunOfJob(int jobId) const;
    void rowChanged(const EncoderRun& run) const;
    /// Puts a job's row back to waiting.
    void showWaiting(EncoderRun& run) const;
};
