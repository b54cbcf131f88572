#pragma once

#include "convert/Job.h"

#include <functional>

class RunLock;
class RunSummary;
struct ConversionContext;

/// Turns the Convert button into a run: queues the waiting rows, locks the controls, picks one job
/// after the other and ends the run. Every job ends in startConverting(), which begins the next
/// one. Main thread; owned by the engine.
class ConversionQueue final {
public:
    /// Takes a job that was picked to a thread of its own.
    using JobStarter = std::function<void(const JobPtr& job)>;

    ConversionQueue(const ConversionContext& context, RunLock& lock, RunSummary& summary,
                    JobStarter startJob);
    Q_DISABLE_COPY_MOVE(ConversionQueue)

    /// The Convert button.
    void convert();
    /// Begins the job at the head of the queue, or ends the run. No other job may be on its way.
    void startConverting();
    /// The end of a run by a failure: the summary first, then the controls.
    void endRunAfterFailure();

private:
    [[nodiscard]] bool isRunOver();
    void begin(int row);
    [[nodiscard]] JobOrder orderOf(const JobRecord& record) const;

    const ConversionContext& context_;
    RunLock& lock_;
    RunSummary& summary_;
    const JobStarter startJob_;
};
