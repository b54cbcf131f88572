#pragma once

#include "convert/Job.h"
#include "filelist/RunControl.h"

class RunLock;
struct ConversionContext;

/// What the row of a movie asks of a run: to pause it, to let it go on, to let it go. Main thread;
/// owned by the engine.
class RowControl final : public RunControl {
public:
    RowControl(const ConversionContext& context, RunLock& lock) : context_(context), lock_(lock) {}
    Q_DISABLE_COPY_MOVE(RowControl)

    void startConverting() override;
    void changeConvertingIndex() override;

    void setConvertingIndexForPause(int row) override;
    void setConvertingIndexForResume(int row) override;
    void resumeFile(const std::shared_ptr<ChildProcess>& task);
    void StopPausedTask() override;
    void endPausedTask(const PausedTask& paused) override;

    void alignWithRecords() override;
    void deletePartialOutput(int recordId) override;
    void rowRemoved(int recordId) override;

private:
    void stopPaused(const JobRecordPtr& record);

    const ConversionContext& context_;
    RunLock& lock_;
};
