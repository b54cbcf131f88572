#include "convert/PauseAndStop.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/LiveJobs.h"
#include "convert/RowStates.h"
#include "convert/RunSummary.h"
#include "convert/RunWatch.h"
#include "convert/RunWindow.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>

PauseAndStop::PauseAndStop(const ConversionContext& context, ConversionQueue& queue,
                           RunSummary& summary)
    : context_(context), queue_(queue), summary_(summary) {}

void PauseAndStop::startConverting() {
    queue_.startConverting();
}

void PauseAndStop::changeConvertingIndex() {
    queue_.changeConvertingIndex();
}

void PauseAndStop::setConvertingIndexForPause(int row) {
    // The row of the button, as it is now: the selection may have moved on by the time that the
    // encoder says something.
    if (const JobPtr& job = context_.jobs.current())
        job->row.pauseId = context_.files.idAt(row);
    context_.state.convertingIndex = SharedState::pauseRequested;
}

void PauseAndStop::setConvertingIndexForResume(int row) {
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

void PauseAndStop::resumeFile(const std::shared_ptr<ChildProcess>& task) {
    queue_.lockForRun();
    context_.jobs.resume(task);
}

void PauseAndStop::StopPausedTask() {
    FileList& files = context_.files;
    const std::vector<JobRecordPtr> records = files.fileInfoArr;
    for (const JobRecordPtr& record : records) {
        if (record->text(key::status) != status::STATPS)
            continue;
        context_.state.convertingIndex = SharedState::stoppingPaused;
        const JobPtr job = context_.jobs.ofRecord(record->id());
        if (!files.pausedList.empty()) {
            askToEnd(job);
            endPausedTask(files.pausedList.front());
        }
        deletePartialOutput(record->id());
        files.clearPaused();
        waitUntilSettled(job);
        setWaiting(*record);
        // By the record: after rows were dragged its id names another row.
        const auto now = std::find(files.fileInfoArr.begin(), files.fileInfoArr.end(), record);
        if (now != files.fileInfoArr.end()) {
            const auto row = static_cast<int>(now - files.fileInfoArr.begin());
            clearProgress(*files.progressAt(row));
            files.rowChanged(row);
        }
    }
}

void PauseAndStop::stop() {
    if (context_.files.conversionTaskList.empty())
        return;
    const int answer = context_.dialogs.ask(
        {getLocalString("IDS_TXT_POPUP_STOPCONVERTING") + u'\n' +
             getLocalString("IDS_TXT_POPUP_STOPCONVERTING2"),
         getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_OK")});
    if (answer == boxanswer::second)
        stopConversion();
}

void PauseAndStop::stopConversion() {
    context_.state.stopped = true;
    const JobPtr job = context_.jobs.current();
    if (job && !job->life().isSettled()) {
        // Before its encoder there is nothing to wait for: the job's thread finds itself alone.
        if (job->life().phase() == EncoderLife::Phase::Preparing) {
            (void)context_.jobs.settle(job);
            context_.jobs.showWaiting(*job);
            context_.state.convertingIndex = SharedState::noRow;
        } else {
            askToEnd(job);
        }
    }
    if (!context_.files.pausedList.empty())
        StopPausedTask();
    context_.files.clearQueue();
    queue_.unlockAfterRun();
    waitUntilSettled(job);
    summary_.removeConvertedRows();
}

void PauseAndStop::replicaOfConvert() {
    const bool folderExists = context_.mainThread.waitForResult(
        [folder = context_.window.outputFolderText()] { return QFileInfo::exists(folder); });
    if (!folderExists) {
        context_.dialogs.tellOutputFolderUnavailable();
        return;
    }
    for (const JobRecordPtr& record : context_.files.fileInfoArr) {
        if (record->text(key::status) == status::STATWT && record->number(key::check) == 1)
            context_.files.enqueue(record->id());
    }
    context_.state.stopped = false;
    queue_.lockForRun();
    queue_.startConverting();
}

void PauseAndStop::popUpForStartResumePausedFiles() {
    const int answer = context_.dialogs.ask({getLocalString("IDS_TXT_POPUP_PUASEDJOBS") + u'\n' +
                                                 getLocalString("IDS_TXT_POPUP_CLICKTOCONTINUE"),
                                             getLocalString("IDS_BTN_POPUP_CANCEL"),
                                             getLocalString("IDS_BTN_CONVERT")});
    const std::vector<PausedTask> paused = context_.files.pausedList;
    // A suspended encoder would stand beside the next one, or be left behind for good.
    StopPausedTask();
    if (answer == boxanswer::second) {
        for (const PausedTask& each : paused)
            queueAgain(each.selectedrowid);
        queue_.startConverting();
        return;
    }
    context_.files.clearQueue();
    queue_.unlockAfterRun();
    summary_.popUpForNoOfConvertedfiles();
    if (context_.window.isOpenFolderChecked())
        context_.window.showFolder(context_.window.outputFolderText());
}

void PauseAndStop::queueAgain(int jobId) {
    FileList& files = context_.files;
    for (int row = 0; row < static_cast<int>(files.idList.size()); ++row) {
        if (files.idList[static_cast<size_t>(row)] != jobId)
            continue;
        JobRecord& record = *files.recordAt(row);
        setWaiting(record);
        record.set(key::status, status::STATPW);
        files.dequeue(jobId); // while it was paused it kept its place
        files.enqueue(jobId);
        files.rowChanged(row);
    }
}

void PauseAndStop::alignWithRecords() {
    context_.jobs.alignWithRecords();
}

void PauseAndStop::deletePartialOutput(int recordId) {
    if (const JobPtr job = context_.jobs.ofRecord(recordId))
        job->removeUnfinishedOutput(context_.mainThread);
}

void PauseAndStop::rowRemoved(int recordId) {
    const JobPtr job = context_.jobs.ofRecord(recordId);
    if (!job)
        return;
    if (job->life().phase() != EncoderLife::Phase::Preparing) {
        askToEnd(job, EncoderLife::Request::Remove);
        return;
    }
    (void)context_.jobs.settle(job);
    // Not now: the removal comes to its own end first.
    QTimer::singleShot(0, &context_.mainThread, [this] {
        if (!context_.state.stopped)
            runGuarded([this] { queue_.startConverting(); });
    });
}

void PauseAndStop::endPausedTask(const PausedTask& paused) {
    if (const JobPtr job = context_.jobs.ofTask(paused.task))
        job->tellToEnd();
}

void PauseAndStop::askToEnd(const JobPtr& job, EncoderLife::Request request) {
    if (job)
        job->ask(request);
}

void PauseAndStop::waitUntilSettled(const JobPtr& job) {
    context_.mainThread.waitUntil([&] { return !job || job->life().isSettled(); }, context_.second);
}

void PauseAndStop::quit() {
    context_.watch.runIsOver();
    for (const JobRecordPtr& record : context_.files.fileInfoArr) {
        if (record->text(key::conversionstat) == status::CONRUNNING)
            deletePartialOutput(record->id());
    }
    for (const JobPtr& job : context_.jobs.all()) {
        job->news.close();
        if (!job->task())
            continue;
        job->removeUnfinishedOutput(context_.mainThread);
        job->tellToEnd();
    }
    for (const auto& task : context_.jobs.strays())
        task->terminate();
}

void PauseAndStop::finishQuit() {
    using namespace std::chrono_literals;
    for (const JobPtr& job : context_.jobs.all()) {
        if (!job->task()) {
            job->note.drop();
            continue;
        }
        if (!job->task()->waitForEnd(1s)) {
            job->kill();
            (void)job->task()->waitForEnd(1s);
        }
        // Its last words may tell that its file is not whole.
        if (job->hasFinished())
            (void)job->news.waitForLastWord(1s);
        job->removeUnfinishedOutput(context_.mainThread);
        if (job->isOutputOutOfReach())
            job->note.leave(); // it may still be there when the share answers again
        else
            job->note.drop();
    }
}
