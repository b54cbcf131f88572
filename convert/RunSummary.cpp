#include "convert/RunSummary.h"

#include "convert/ConversionContext.h"
#include "convert/LiveJobs.h"
#include "convert/RunWatch.h"
#include "convert/RunWindow.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "platform/LocalizedStrings.h"
#include "widgets/BoxAnswers.h"

#include <unordered_set>

void RunSummary::popUpForNoOfConvertedfiles() {
    SharedState& state = context_.state;
    if (state.noOfconvertingFileList.isEmpty())
        return;
    // Before the box: it may stay open all night.
    context_.watch.summaryOpens();
    const int answer = context_.dialogs.ask({getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL"),
                                             getLocalString("IDS_BTN_POPUP_OK"),
                                             getLocalString("IDS_BTN_OPEN_FOLDER")});
    state.stopped = true;
    if (answer == boxanswer::second) {
        context_.window.uncheckOpenFolder();
        context_.window.showFolder(context_.window.outputFolderText());
    }
    state.noOfConvertedFile = 0;
    state.noOfconvertingFileList.clear();
    context_.files.clearQueue();
    context_.files.clearPaused();
    removeConvertedRows();
}

void RunSummary::removeConvertedRows() {
    FileList& files = context_.files;
    SharedState& state = context_.state;
    const std::unordered_set<int> done(files.convertedFileList.begin(),
                                       files.convertedFileList.end());
    std::vector<int> rows;
    for (int row = files.rowCount() - 1; row >= 0; --row) {
        if (done.contains(files.recordAt(row)->id()))
            rows.push_back(row);
    }
    if (!rows.empty())
        context_.jobs.alignWithRecords();
    for (const int row : rows)
        files.progressAt(row)->setStatusString(QString());
    files.removeRows(rows);
    files.forgetConverted();
    state.count = files.rowCount();
    if (state.count == 0)
        context_.window.setRemoveEnabled(false);
    context_.window.showFileCount(state, state.count);
}
