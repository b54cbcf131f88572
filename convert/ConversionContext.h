#pragma once

#include "convert/EncoderRun.h"

#include <QString>

#include <chrono>
#include <optional>
#include <vector>

class ChildProcesses;
class ConversionDialogs;
class FileList;
class MainThread;
class ProfileCatalogue;
class RunWatch;
class RunWindow;
class WorkerThreads;
struct SharedState;

/// How long a run waits for an encoder that has nothing more to do; tests shorten it.
struct EncoderPatience final {
    /// For its end, after its last word.
    std::chrono::milliseconds end = std::chrono::seconds(10);
    /// For it to obey the signal that ends it; then it is killed.
    std::chrono::milliseconds obedience = std::chrono::seconds(5);
};

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
    RunWatch& watch;
    const ProfileCatalogue& profiles;
    const QString encoderPath;
    /// Where the notes of jobs that are under way lie; empty for no notes.
    const QString stateFolder;
    /// The deliberate wait of a run; any thread.
    const std::chrono::milliseconds second;
    EncoderPatience patience;

    /// The job that was picked last; settled when it has had its outcome.
    EncoderRunPtr currentRun;
    /// The process that the last launch or resume was about.
    std::shared_ptr<ChildProcess> runningTask;
    /// Every encoder whose thread has not come to its end.
    std::vector<EncoderRunPtr> liveRuns;
    /// Id of the row whose button asked for a pause.
    int pauseRowId = 0;

    /// Row of a job; nothing when it was removed.
    [[nodiscard]] std::optional<int> rowOf(const EncoderRun& run) const;
    /// The run that converts the movie of a record. After rows were dragged the id under which a
    /// run was queued is another one.
    [[nodiscard]] EncoderRunPtr unsettledRunOfRecord(int recordId) const;
    void rowChanged(const EncoderRun& run) const;
    /// After rows were dragged: brings the lists beside the records in order, and the run in line
    /// with them, so that each movie is still converted once. To be called before rows are removed.
    void alignWithRecords();
    /// Puts a job's row back to waiting.
    void showWaiting(EncoderRun& run) const;
};
