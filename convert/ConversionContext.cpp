#include "convert/ConversionContext.h"

#include "convert/RowStates.h"
#include "convert/RunWindow.h"
#include "filelist/FileList.h"

#include <algorithm>

std::optional<int> ConversionContext::rowOf(const EncoderRun& run) const {
    return files.rowOfId(run.jobId);
}

EncoderRunPtr ConversionContext::unsettledRunOfRecord(int recordId) const {
    const auto found = std::find_if(liveRuns.begin(), liveRuns.end(), [&](const auto& run) {
        return run->kind == EncoderRun::Kind::Job && run->record->id() == recordId &&
               !run->life.isSettled();
    });
    return found != liveRuns.end() ? *found : nullptr;
}

void ConversionContext::rowChanged(const EncoderRun& run) const {
    if (const auto row = rowOf(run))
        window.rowChanged(*row);
}

void ConversionContext::showWaiting(EncoderRun& run) const {
    setWaiting(*run.record);
    if (run.progress)
        clearProgress(*run.progress);
    rowChanged(run);
}
