#pragma once

#include <QString>

#include <chrono>
#include <functional>

class ChildProcesses;
class ConversionDialogs;
class FileList;
class LiveJobs;
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

/// How a run goes on after a job.
enum class AfterJob {
    NextJob,
    EndRun, ///< the user ends it after a failure: with its summary
    StopRun ///< as the Stop button does
};

/// What the parts of the engine work with: none of them changes it. Owned by the engine; the
/// services may be called on any thread, all else on the main thread alone.
struct ConversionContext final {
    MainThread& mainThread;
    ChildProcesses& processes;
    WorkerThreads& workers;
    FileList& files;
    SharedState& state;
    RunWindow& window;
    ConversionDialogs& dialogs;
    RunWatch& watch;
    LiveJobs& jobs;
    const ProfileCatalogue& profiles;
    const QString encoderPath;
    /// Where the notes of jobs that are under way lie; empty for no notes.
    const QString stateFolder;
    /// The deliberate wait of a run; any thread.
    const std::chrono::milliseconds second;
    /// To be called when a job has had its outcome.
    const std::function<void(AfterJob)> goOn;
    EncoderPatience patience = {};
};
