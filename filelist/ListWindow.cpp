#include "filelist/ListWindow.h"

#include "filelist/FileList.h"

void ListWindow::checkHeaderBtnStatus(const FileList& files) {
    setSelectAllChecked(files.allChecked());
}

void ListWindow::showFileCount(SharedState& state, qint64 rows) {
    state.countstr = QStringLiteral("(%1)").arg(rows);
    state.fileCountStr = state.fileListStr + QStringLiteral("  ") + state.countstr;
    showCaption(state.fileCountStr);
}
