#include "convert/ConversionQueue.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/LiveJobs.h"
#include "convert/RunLock.h"
#include "convert/RunSummary.h"
#include "convert/RunWindow.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/StatusWords.h"
#include "platform/MainThread.h"

#include <QFileInfo>

#include <utility>

ConversionQueue::ConversionQueue(const ConversionContext& context, RunLock& lock,
                                 RunSummary& summary, JobStarter startJob)
    : context_(context), lock_(lock), summary_(summary), startJob_(std::move(startJob)) {}

void ConversionQueue::convert() {
    SharedState& state = context_.state;
    FileList& files = context_.files;
    state.checkStatusForFileConflict = false;
    state.checkStatusForConversionError = false;
    const bool folderExists = context_.mainThread.waitForResult(
        [folder = context_.window.outputFolderText()] { return QFileInfo::exists(folder); });
    if (!folderExists) {
        context_.dialogs.tellOutputFolderUnavailable();
        return;
    }
    for (const JobRecordPtr& record : files.fileInfoArr) {
        // Kept: the status alone decides, an unchecked row is converted too.
        qCDebug(lcConvert, "row %d is checked: %d", record->id(), record->number(key::check));
        if (record->text(key::status) != status::STATWT)
            continue;
        files.enqueue(record->id());
        state.noOfconvertingFileList.add(record->id());
    }
    state.stopped = false;
    lock_.lock();
    startConverting();
}

void ConversionQueue::startConverting() {
    Q_ASSERT(!context_.jobs.current() || context_.jobs.current()->life().isSettled());
    FileList& files = context_.files;
    SharedState& state = context_.state;
    while (!isRunOver()) {
        state.convertingId = files.conversionTaskList.front();
        if (const auto row = files.rowOfId(state.convertingId)) {
            begin(*row);
            return;
        }
        state.convertingIndex.clear();
        files.dequeue(state.convertingId);
    }
    lock_.unlock();
    summary_.popUpForNoOfConvertedfiles();
}

// A paused job keeps its place in the queue: with an empty queue there is nothing that a paused
// entry could go on with.
bool ConversionQueue::isRunOver() {
    if (!context_.files.conversionTaskList.empty())
        return false;
    context_.files.clearPaused();
    return true;
}

void ConversionQueue::begin(int row) {
    SharedState& state = context_.state;
    state.convertingIndex = row;
    state.error = false;
    startJob_(context_.jobs.begin(row, orderOf(*context_.files.recordAt(row))));
}

JobOrder ConversionQueue::orderOf(const JobRecord& record) const {
    return {context_.state.convertingId,  record.text(key::duration),
            record.text(key::srcpath),    record.text(key::profile),
            record.text(key::resolution), context_.window.outputFolderText(),
            context_.state.probe.bitrate};
}

void ConversionQueue::endRunAfterFailure() {
    summary_.popUpForNoOfConvertedfiles();
    lock_.unlock();
}
