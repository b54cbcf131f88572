#include "convert/PauseAndStop.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/RowStates.h"
#include "convert/RunSummary.h"
#include "convert/RunWatch.h"
#include "convert/RunWindow.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/StatusWords.h"
#include "platform/ChildProcess.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <system_error>

namespace {

// On a dead share the deletion of a file does not come back.
constexpr auto longestRemoval = std::chrono::seconds(1);

} // namespace

PauseAndStop::PauseAndStop(ConversionContext& context, ConversionQueue& queue, RunSummary& summary)
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
    context_.pauseRowId = context_.files.idAt(row);
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
    context_.runningTask = task;
    task->resume();
    for (const EncoderRunPtr& run : context_.liveRuns) {
        if (run->task == task)
            run->resumed();
    }
    context_.watch.resumed();
}

void PauseAndStop::StopPausedTask() {
    FileList& files = context_.files;
    const std::vector<JobRecordPtr> records = files.fileInfoArr;
    for (const JobRecordPtr& record : records) {
        if (record->text(key::status) != status::STATPS)
            continue;
        context_.state.convertingIndex = SharedState::stoppingPaused;
        const EncoderRunPtr run = context_.unsettledRunOfRecord(record->id());
        if (!files.pausedList.empty()) {
            askToEnd(run);
            endPausedTask(files.pausedList.front());
        }
        deletePartialOutput(record->id());
        files.clearPaused();
        waitUntilSettled(run);
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
    const EncoderRunPtr run = context_.currentRun;
    if (run && !run->life.isSettled()) {
        // Before its encoder there is nothing to wait for: the job's thread finds itself alone.
        if (run->life.phase() == EncoderLife::Phase::Preparing) {
            (void)queue_.settle(run);
            context_.showWaiting(*run);
            context_.state.convertingIndex = SharedState::noRow;
        } else {
            askToEnd(run);
        }
    }
    if (!context_.files.pausedList.empty())
        StopPausedTask();
    context_.files.clearQueue();
    queue_.unlockAfterRun();
    waitUntilSettled(run);
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
    context_.alignWithRecords();
}

void PauseAndStop::deletePartialOutput(int recordId) {
    if (const EncoderRunPtr run = context_.unsettledRunOfRecord(recordId))
        removeUnfinishedOutput(*run);
}

void PauseAndStop::rowRemoved(int recordId) {
    const EncoderRunPtr run = context_.unsettledRunOfRecord(recordId);
    if (!run)
        return;
    if (run->life.phase() != EncoderLife::Phase::Preparing) {
        askToEnd(run, EncoderLife::Request::Remove);
        return;
    }
    (void)queue_.settle(run);
    // Not now: the removal comes to its own end first.
    QTimer::singleShot(0, &context_.mainThread, [this] {
        if (!context_.state.stopped)
            runGuarded([this] { queue_.startConverting(); });
    });
}

void PauseAndStop::endPausedTask(const PausedTask& paused) {
    paused.task->resume();
    const bool told = paused.task->terminate();
    for (const EncoderRunPtr& run : context_.liveRuns) {
        if (told && run->task == paused.task)
            run->life.toldToEnd();
    }
}

void PauseAndStop::askToEnd(const EncoderRunPtr& run, EncoderLife::Request request) {
    if (run)
        run->ask(request);
}

bool PauseAndStop::hasFinished(const EncoderRun& run) {
    const auto end = run.task->end();
    return end && end->succeeded() && run.words.allowWholeFile();
}

void PauseAndStop::removeUnfinishedOutput(EncoderRun& run) const {
    // Before its encoder a run has written nothing.
    if (!run.task || run.outputIsOutOfReach)
        return;
    if (hasFinished(run))
        return;
    const auto removal = [output = run.output] {
        output.remove();
        return true;
    };
    try {
        run.outputIsOutOfReach = !context_.mainThread.resultWithin(longestRemoval, removal);
    } catch (const std::system_error&) {
        removal(); // no thread can be had: better late than never
    }
    if (run.outputIsOutOfReach)
        qCWarning(lcConvert, "the partial output could not be deleted in time: %s",
                  qPrintable(run.output.path()));
}

void PauseAndStop::waitUntilSettled(const EncoderRunPtr& run) {
    context_.mainThread.waitUntil([&] { return !run || run->life.isSettled(); }, context_.second);
}

void PauseAndStop::quit() {
    context_.watch.runIsOver();
    for (const JobRecordPtr& record : context_.files.fileInfoArr) {
        if (record->text(key::conversionstat) == status::CONRUNNING)
            deletePartialOutput(record->id());
    }
    for (const PausedTask& paused : context_.files.pausedList)
        endPausedTask(paused);
    if (context_.runningTask)
        context_.runningTask->terminate();
    for (const EncoderRunPtr& run : context_.liveRuns) {
        run->reader.close();
        if (!run->task)
            continue;
        removeUnfinishedOutput(*run);
        run->task->resume();
        if (run->task->terminate())
            run->life.toldToEnd();
    }
}

void PauseAndStop::finishQuit() {
    using namespace std::chrono_literals;
    for (const EncoderRunPtr& run : context_.liveRuns) {
        if (!run->task) {
            run->note.drop();
            continue;
        }
        if (!run->task->waitForEnd(1s)) {
            run->task->kill();
            (void)run->task->waitForEnd(1s);
        }
        // Its last words may tell that its file is not whole.
        if (hasFinished(*run))
            (void)run->words.waitForLastWord(1s);
        removeUnfinishedOutput(*run);
        if (run->outputIsOutOfReach)
            run->note.leave(); // it may still be there when the share answers again
        else
            run->note.drop();
    }
}
