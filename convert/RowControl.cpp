#include "convert/RowControl.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/LiveJobs.h"
#include "convert/RowStates.h"
#include "convert/RunLock.h"
#include "filelist/FileList.h"
#include "filelist/StatusWords.h"
#include "platform/MainThread.h"
#include "widgets/ActionGate.h"

#include <QTimer>

#include <algorithm>

void RowControl::startConverting() {
    context_.goOn(AfterJob::NextJob);
}

void RowControl::changeConvertingIndex() {
    SharedState& state = context_.state;
    if (context_.files.conversionTaskList.empty() || state.convertingIndex.isNone())
        return;
    state.convertingId = context_.files.conversionTaskList.front();
    state.convertingIndex =
        context_.files.rowOfId(state.convertingId).value_or(ConvertingIndex::noRow);
}

void RowControl::setConvertingIndexForPause(int row) {
    // The row of the button, as it is now: the selection may have moved on by the time that the
    // encoder says something.
    context_.jobs.pauseWasAsked(row);
    context_.state.convertingIndex.requestPause();
}

void RowControl::setConvertingIndexForResume(int row) {
    FileList& files = context_.files;
    const int id = files.idAt(row);
    context_.state.noOfconvertingFileList.add(id);
    for (const int paused : files.filePausedId)
        qCDebug(lcConvert, "paused: %d", paused);
    const std::shared_ptr<ChildProcess> task = files.resume(id);
    if (!task)
        return;
    context_.state.convertingIndex = row;
    context_.state.stopped = false;
    resumeFile(task);
}

void RowControl::resumeFile(const std::shared_ptr<ChildProcess>& task) {
    lock_.lock();
    context_.jobs.resume(task);
}

void RowControl::StopPausedTask() {
    const std::vector<JobRecordPtr> records = context_.files.fileInfoArr;
    for (const JobRecordPtr& record : records) {
        if (record->text(key::status) == status::STATPS)
            stopPaused(record);
    }
}

void RowControl::stopPaused(const JobRecordPtr& record) {
    FileList& files = context_.files;
    context_.state.convertingIndex.stopPaused();
    const JobPtr job = context_.jobs.ofRecord(record->id());
    if (!files.pausedList.empty()) {
        if (job)
            job->ask(EncoderLife::Request::Stop);
        endPausedTask(files.pausedList.front());
    }
    deletePartialOutput(record->id());
    files.clearPaused();
    context_.jobs.waitUntilSettled(job);
    setWaiting(*record);
    // By the record: after rows were dragged its id names another row.
    const auto now = std::find(files.fileInfoArr.begin(), files.fileInfoArr.end(), record);
    if (now != files.fileInfoArr.end()) {
        const auto row = static_cast<int>(now - files.fileInfoArr.begin());
        clearProgress(*files.progressAt(row));
        files.rowChanged(row);
    }
}

void RowControl::endPausedTask(const PausedTask& paused) {
    if (const JobPtr job = context_.jobs.ofTask(paused.task))
        job->tellToEnd();
}

void RowControl::alignWithRecords() {
    context_.jobs.alignWithRecords();
}

void RowControl::deletePartialOutput(int recordId) {
    if (const JobPtr job = context_.jobs.ofRecord(recordId))
        job->removeUnfinishedOutput(context_.mainThread);
}

void RowControl::rowRemoved(int recordId) {
    const JobPtr job = context_.jobs.ofRecord(recordId);
    if (!job)
        return;
    if (job->life().phase() != EncoderLife::Phase::Preparing) {
        job->ask(EncoderLife::Request::Remove);
        return;
    }
    (void)context_.jobs.settle(job);
    // Not now: the removal comes to its own end first.
    QTimer::singleShot(0, &context_.mainThread, [this] {
        if (!context_.state.stopped)
            runGuarded([this] { startConverting(); });
    });
}
