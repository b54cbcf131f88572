#include "filelist/RemoveFiles.h"

#include "filelist/FileList.h"
#include "filelist/ListWindow.h"
#include "filelist/ProgressObject.h"
#include "filelist/RunControl.h"
#include "filelist/StatusWords.h"

void RemoveFiles::remove() {
    state_.pausedFileIsDeleted = false;
    std::vector<int> rows;
    for (int row = files_.rowCount() - 1; row >= 0; --row) {
        if (files_.check.at(static_cast<size_t>(row)) == 1)
            rows.push_back(row);
    }
    if (!rows.empty())
        run_.alignWithRecords();
    std::vector<int> ids;
    for (const int row : rows) {
        letGo(row);
        ids.push_back(files_.recordAt(row)->id());
    }
    state_.noOfconvertingFileList.removeAll(ids);
    files_.removeRows(rows);
    if (files_.rowCount() == 0)
        window_.setSelectAllChecked(false);
    if (state_.pausedFileIsDeleted)
        files_.dropFirstPaused();
    run_.changeConvertingIndex();
    files_.reload();
    if (files_.rowCount() == 0)
        window_.setRemoveEnabled(false);
    // Kept: `count` is left as it was, the caption goes by the list.
    window_.showFileCount(state_, files_.rowCount());
}

void RemoveFiles::letGo(int row) {
    const JobRecordPtr record = files_.recordAt(row);
    const int jobId = record->id();
    const QString status = record->text(key::status);
    if (status == status::STATCR || status == status::STATPS)
        run_.deletePartialOutput(jobId);
    run_.rowRemoved(jobId);
    if (status == status::STATPS)
        endPaused(jobId);
    if (status == status::STATCO && state_.isConversionRunning)
        --state_.noOfConvertedFile;
    files_.progressAt(row)->setStatusString(QString());
    state_.convertingIndex.forget(row);
}

// Only the first paused entry is looked at.
void RemoveFiles::endPaused(int jobId) {
    state_.pausedFileIsDeleted = true;
    if (files_.pausedList.empty() || files_.pausedList.front().selectedrowid != jobId)
        return;
    run_.endPausedTask(files_.pausedList.front());
    state_.isPausedRemove = true;
}

void RemoveFiles::selectAll(bool checked) {
    files_.checkAll(checked);
    // The box has already followed the click, in an empty list too.
    window_.checkHeaderBtnStatus(files_);
    files_.reload();
}
