#include "convert/LiveJobs.h"

#include "convert/ConvertLog.h"
#include "convert/EncoderMarkers.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "filelist/SharedState.h"
#include "platform/MainThread.h"

#include <algorithm>
#include <utility>

std::optional<int> LiveJobs::rowOf(const Job& job) const {
    return files_.rowOfId(job.row.id);
}

JobPtr LiveJobs::ofRecord(int recordId) const {
    const auto found = std::find_if(all_.begin(), all_.end(), [&](const JobPtr& job) {
        return job->row.record->id() == recordId;
    });
    return found != all_.end() ? *found : nullptr;
}

JobPtr LiveJobs::ofTask(const std::shared_ptr<ChildProcess>& task) const {
    const auto found = std::find_if(all_.begin(), all_.end(),
                                    [&](const JobPtr& job) { return job->task() == task; });
    return found != all_.end() ? *found : nullptr;
}

JobPtr LiveJobs::begin(int row, const JobOrder& order) {
    current_ = std::make_shared<Job>(
        order, JobRow{order.id, files_.recordAt(row), files_.progressAt(row)});
    all_.push_back(current_);
    watch_.jobBegins(current_->row.id);
    return current_;
}

void LiveJobs::launched(Job& job, const std::shared_ptr<ChildProcess>& task) {
    job.launched(task);
    runningTask_ = task;
    watch_.encoderLaunched(job.row.id, job.plan().length);
    const int row = state_.convertingIndex;
    if (row >= 0 && row < static_cast<int>(files_.progressObjects.size()))
        job.row.progress = files_.progressAt(row);
    else
        qCDebug(lcConvert, "exception--> no progress record for row %d", row);
}

void LiveJobs::pauseWasAsked(int row) {
    if (current_)
        current_->row.pauseId = files_.idAt(row);
}

void LiveJobs::resume(const std::shared_ptr<ChildProcess>& task) {
    runningTask_ = task;
    if (const JobPtr job = ofTask(task))
        job->resume();
    else
        task->resume();
    watch_.resumed();
}

bool LiveJobs::settle(const JobPtr& job) {
    all_.erase(std::remove(all_.begin(), all_.end(), job), all_.end());
    job->note.drop();
    if (!job->settle())
        return false;
    watch_.jobEnds();
    job->row.progress->setTimeLeft(QString());
    return true;
}

void LiveJobs::addStray(const std::shared_ptr<ChildProcess>& task) {
    runningTask_ = task;
    strays_.push_back(task);
}

void LiveJobs::dropStray(const std::shared_ptr<ChildProcess>& task) {
    strays_.erase(std::remove(strays_.begin(), strays_.end(), task), strays_.end());
}

void LiveJobs::waitUntilSettled(const JobPtr& job) const {
    mainThread_.waitUntil([&] { return !job || job->life().isSettled(); }, state_.second);
}

void LiveJobs::rowChanged(const Job& job) const {
    if (const auto row = rowOf(job))
        files_.rowChanged(*row);
}

void LiveJobs::showPosition(Job& job, int percent, const QString& timeLeft) const {
    if (const auto row = rowOf(job))
        job.row.record = files_.recordAt(*row);
    job.row.percent = percent;
    job.row.record->set(key::progress, QString());
    job.row.record->set(key::progressValue, percentageText(percent));
    job.row.progress->setTimeLeft(timeLeft);
    rowChanged(job);
}

void LiveJobs::showStep(Job& job) const {
    job.row.progress->incrementStep(job.row.percent);
    rowChanged(job);
}

void LiveJobs::showWaiting(Job& job) const {
    setWaiting(*job.row.record);
    clearProgress(*job.row.progress);
    rowChanged(job);
}

void LiveJobs::alignWithRecords() {
    const std::unordered_map<int, int> recordIds = files_.alignWithRecords();
    if (recordIds.empty())
        return;
    const auto align = [&](int& id) {
        if (const auto found = recordIds.find(id); found != recordIds.end())
            id = found->second;
    };
    align(state_.convertingId);
    for (const JobPtr& job : all_) {
        align(job->row.id);
        align(job->row.pauseId);
    }
    watch_.idsChanged(recordIds);
    alignProgress();
    files_.reload();
}

// What a job has shown so far goes with it to the progress record of its movie.
void LiveJobs::alignProgress() {
    std::vector<std::pair<Job*, ProgressObject>> shown;
    for (const JobPtr& job : all_) {
        if (!rowOf(*job))
            continue;
        shown.emplace_back(job.get(), *job->row.progress);
        *job->row.progress = ProgressObject();
    }
    for (const auto& [job, progress] : shown) {
        job->row.progress = files_.progressAt(*rowOf(*job));
        *job->row.progress = progress;
    }
}
