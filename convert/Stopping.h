#pragma once

#include "convert/Job.h"

class RowControl;
class RunLock;
class RunSummary;
struct ConversionContext;

/// The end of a run at the user's wish: its movies go back to waiting. Main thread; owned by the
/// engine.
class Stopping final {
public:
    Stopping(const ConversionContext& context, RunLock& lock, RowControl& rows, RunSummary& summary)
        : context_(context), lock_(lock), rows_(rows), summary_(summary) {}
    Q_DISABLE_COPY_MOVE(Stopping)

    /// The Stop button: asks first, and does nothing while nothing is queued.
    void stop();
    /// Stops the run and waits until its encoder has had its outcome.
    void stopConversion();

private:
    void stopJob(const JobPtr& job);

    const ConversionContext& context_;
    RunLock& lock_;
    RowControl& rows_;
    RunSummary& summary_;
};
