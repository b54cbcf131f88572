#pragma once

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/EncoderMonitor.h"
#include "convert/EncoderOutcomes.h"
#include "convert/JobThread.h"
#include "convert/LiveJobs.h"
#include "convert/Quitting.h"
#include "convert/RowControl.h"
#include "convert/RunLock.h"
#include "convert/RunSummary.h"
#include "convert/RunWatch.h"
#include "convert/Stopping.h"
#include "convert/UncalledRuns.h"

/// The conversion engine: its parts, put together. A run goes through them in this order: queue,
/// thread of the job, monitor, outcomes; here it goes from there to the queue again. Main thread;
/// owned by main().
class ConversionEngine final {
public:
    struct Services {
        MainThread& mainThread;
        ChildProcesses& processes;
        WorkerThreads& workers;
    };

    ConversionEngine(Services services, FileList& files, SharedState& state, RunWindow& window,
                     ConversionDialogs& dialogs, const ProfileCatalogue& profiles,
                     const QString& encoderPath, const QString& stateFolder);
    Q_DISABLE_COPY_MOVE(ConversionEngine)

    [[nodiscard]] const LiveJobs& jobs() const { return jobs_; }

    void setPatience(EncoderPatience patience) { context_.patience = patience; }

    ConversionQueue& queue() { return queue_; }
    RowControl& rows() { return rows_; }
    Stopping& stopping() { return stopping_; }
    Quitting& quitting() { return quitting_; }
    UncalledRuns& uncalled() { return uncalled_; }
    RunSummary& summary() { return summary_; }
    RunWatch& watch() { return watch_; }

private:
    void goOn(AfterJob after);

    RunWatch watch_;
    LiveJobs jobs_;
    ConversionContext context_;
    EncoderOutcomes outcomes_;
    EncoderMonitor monitor_;
    JobThread jobThread_;
    RunLock lock_;
    RunSummary summary_;
    ConversionQueue queue_;
    RowControl rows_;
    Stopping stopping_;
    Quitting quitting_;
    UncalledRuns uncalled_;
};
