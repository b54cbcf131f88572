#pragma once

#include "convert/ConversionContext.h"
#include "convert/ConversionJob.h"
#include "convert/ConversionQueue.h"
#include "convert/EncoderMonitor.h"
#include "convert/EncoderOutcomes.h"
#include "convert/PauseAndStop.h"
#include "convert/RunSummary.h"
#include "convert/RunWatch.h"

/// The conversion engine: its parts, put together. Main thread; owned by the controller. A run
/// goes through them in this order: queue, job, monitor, outcomes, queue.
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

    [[nodiscard]] const ConversionContext& context() const { return context_; }

    void setPatience(EncoderPatience patience) { context_.patience = patience; }

    ConversionQueue& queue() { return queue_; }
    PauseAndStop& pauseAndStop() { return pauseAndStop_; }
    RunSummary& summary() { return summary_; }
    RunWatch& watch() { return watch_; }

private:
    RunWatch watch_;
    ConversionContext context_;
    RunSummary summary_;
    ConversionQueue queue_;
    EncoderOutcomes outcomes_;
    EncoderMonitor monitor_;
    PauseAndStop pauseAndStop_;
    ConversionJob job_;
};
