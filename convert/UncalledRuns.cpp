#include "convert/UncalledRuns.h"

#include "convert/ConversionContext.h"
#include "convert/RowControl.h"
#include "convert/RowStates.h"
#include "convert/RunLock.h"
#include "convert/RunSummary.h"
#include "convert/RunWindow.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>

void UncalledRuns::replicaOfConvert() {
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
    lock_.lock();
    context_.goOn(AfterJob::NextJob);
}

void UncalledRuns::popUpForStartResumePausedFiles() {
    const int answer = context_.dialogs.ask({getLocalString("IDS_TXT_POPUP_PUASEDJOBS") + u'\n' +
                                                 getLocalString("IDS_TXT_POPUP_CLICKTOCONTINUE"),
                                             getLocalString("IDS_BTN_POPUP_CANCEL"),
                                             getLocalString("IDS_BTN_CONVERT")});
    const std::vector<PausedTask> paused = context_.files.pausedList;
    // A suspended encoder would stand beside the next one, or be left behind for good.
    rows_.StopPausedTask();
    if (answer == boxanswer::second) {
        for (const PausedTask& each : paused)
            queueAgain(each.selectedrowid);
        context_.goOn(AfterJob::NextJob);
        return;
    }
    context_.files.clearQueue();
    lock_.unlock();
    summary_.popUpForNoOfConvertedfiles();
    if (context_.window.isOpenFolderChecked())
        context_.window.showFolder(context_.window.outputFolderText());
}

void UncalledRuns::queueAgain(int jobId) {
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
