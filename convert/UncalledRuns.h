#pragma once

#include <QtGlobal>

class RowControl;
class RunLock;
class RunSummary;
struct ConversionContext;

/// Two more ways to begin a run. Kept: nothing calls them. Main thread; owned by the engine.
class UncalledRuns final {
public:
    UncalledRuns(const ConversionContext& context, RunLock& lock, RowControl& rows,
                 RunSummary& summary)
        : context_(context), lock_(lock), rows_(rows), summary_(summary) {}
    Q_DISABLE_COPY_MOVE(UncalledRuns)

    /// A second start of a run, for the checked rows.
    void replicaOfConvert();
    /// Offers to go on with paused jobs.
    void popUpForStartResumePausedFiles();

private:
    void queueAgain(int jobId);

    const ConversionContext& context_;
    RunLock& lock_;
    RowControl& rows_;
    RunSummary& summary_;
};
