#include "table/RowButton.h"

#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/ListWindow.h"
#include "filelist/ProgressObject.h"
#include "filelist/RunControl.h"
#include "filelist/StatusWords.h"
#include "platform/MainThread.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>

void RowButton::press(int row) {
    const QString status = files_.recordAt(row)->text(key::status);
    if (status == status::STATWT || status == status::STATCO || status == status::STATPW)
        removeRow(row);
    else if (status == status::STATPS)
        resume(row);
    else if (status == status::STATPR)
        run_.setConvertingIndexForPause(row);
}

void RowButton::removeRow(int row) {
    const JobRecordPtr record = files_.recordAt(row);
    const QString status = record->text(key::status);
    const bool convertedInThisRun = status == status::STATCO && state_.isConversionRunning;
    if (convertedInThisRun || status == status::STATWT)
        state_.noOfconvertingFileList.remove(record->id());
    if (convertedInThisRun)
        --state_.noOfConvertedFile;
    run_.rowRemoved(record->id());
    run_.alignWithRecords();
    files_.progressAt(row)->changestat(QString());
    files_.removeRow(row);
    state_.convertingIndex.forget(row);
    run_.changeConvertingIndex();
    state_.count = files_.rowCount();
    if (state_.count == 0) {
        window_.setRemoveEnabled(false);
        window_.setSelectAllChecked(false);
    }
    window_.showFileCount(state_, state_.count);
}

void RowButton::resume(int row) {
    const JobRecordPtr record = files_.recordAt(row);
    const int jobId = files_.idAt(row);
    files_.progressAt(row)->setStatusString(QString());
    files_.rowChanged(row);
    const bool sourceExists = mainThread_.waitForResult(
        [source = record->text(key::srcpath)] { return QFileInfo::exists(source); });
    if (!sourceExists) {
        resumeWithoutSource(jobId);
        return;
    }
    mainThread_.waitFor(state_.second);
    // The row may have moved during the wait.
    const auto rowNow = files_.rowOfId(jobId);
    if (!rowNow || record->text(key::status) != status::STATPS)
        return;
    record->set(key::image, rowimage::pause);
    record->set(key::status, status::STATPR);
    run_.setConvertingIndexForResume(*rowNow);
    files_.rowChanged(*rowNow);
}

void RowButton::resumeWithoutSource(int jobId) {
    run_.StopPausedTask();
    if (dialogs_.askSourceUnavailable() == boxanswer::first)
        files_.dequeueHead(jobId);
    run_.startConverting();
}
