#include "convert/ConversionContext.h"

#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"

#include <algorithm>

namespace {

// What a job has shown so far goes with it to the progress record of its movie.
void alignProgress(const ConversionContext& context) {
    std::vector<std::pair<EncoderRun*, ProgressObject>> shown;
    for (const EncoderRunPtr& run : context.liveRuns) {
        if (!run->progress || !context.rowOf(*run))
            continue;
        shown.emplace_back(run.get(), *run->progress);
        *run->progress = ProgressObject();
    }
    for (const auto& [run, progress] : shown) {
        run->progress = context.files.progressAt(*context.rowOf(*run));
        *run->progress = progress;
    }
}

} // namespace

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
        files.rowChanged(*row);
}

void ConversionContext::alignWithRecords() {
    const std::unordered_map<int, int> recordIds = files.alignWithRecords();
    if (recordIds.empty())
        return;
    const auto align = [&](int& id) {
        if (const auto found = recordIds.find(id); found != recordIds.end())
            id = found->second;
    };
    align(state.convertingId);
    align(pauseRowId);
    for (const EncoderRunPtr& run : liveRuns)
        align(run->jobId);
    watch.idsChanged(recordIds);
    alignProgress(*this);
    files.reload();
}

void ConversionContext::showWaiting(EncoderRun& run) const {
    setWaiting(*run.record);
    if (run.progress)
        clearProgress(*run.progress);
    rowChanged(run);
}
