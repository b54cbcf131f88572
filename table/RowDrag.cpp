#include "table/RowDrag.h"

#include "filelist/AddFiles.h"
#include "filelist/FileList.h"
#include "filelist/ListWindow.h"
#include "filelist/SharedState.h"
#include "table/DraggedRows.h"
#include "table/DroppedFiles.h"
#include "widgets/ActionGate.h"

#include <QApplication>
#include <QMimeData>

#include <utility>

namespace {

const QString plainText = QStringLiteral("text/plain");

} // namespace

RowDrag::Kind RowDrag::kindOf(const QMimeData& offered) {
    if (offered.hasFormat(draggedRowsType))
        return Kind::Rows;
    if (!filePaths(offered).isEmpty())
        return Kind::Files;
    return offered.hasFormat(plainText) ? Kind::Text : Kind::Other;
}

QStringList RowDrag::filePaths(const QMimeData& offered) {
    return droppedFiles(offered.urls());
}

std::unique_ptr<QMimeData> RowDrag::writeRowsWithIndexes(const std::vector<int>& rows) {
    auto data = std::make_unique<QMimeData>();
    data->setData(draggedRowsType, archiveRows(rows));
    return data;
}

Qt::DropAction RowDrag::validateDrop(Kind kind, Qt::DropActions offered) {
    return kind != Kind::Other && offered.testFlag(Qt::CopyAction) ? Qt::CopyAction
                                                                   : Qt::IgnoreAction;
}

bool RowDrag::hasEffect(Kind kind) const {
    return (kind == Kind::Rows || kind == Kind::Files) && !isRefused();
}

bool RowDrag::acceptDrop(const QMimeData& offered, int row) {
    if (isRefused())
        return false;
    // Nothing of what is offered outlives this call.
    switch (kindOf(offered)) {
    case Kind::Rows: {
        const auto rows = unarchiveRows(offered.data(draggedRowsType), parts_.files.rowCount());
        later([this, rows, row] {
            if (rows)
                reorder(*rows, row);
        });
        return rows.has_value();
    }
    case Kind::Files:
        later([this, paths = filePaths(offered)] { parts_.addFiles.addDropped(paths); });
        return false;
    case Kind::Text:
        later([this] { parts_.files.reload(); });
        return true;
    case Kind::Other:
        later([] {});
        break;
    }
    return false;
}

bool RowDrag::isRefused() const {
    return parts_.state.isConversionRunning || QApplication::activeModalWidget();
}

void RowDrag::later(std::function<void()> work) {
    QMetaObject::invokeMethod(
        this,
        [this, work = std::move(work)] {
            parts_.gate.pass(
                [this, work] {
                    parts_.window.setRemoveEnabled(true);
                    work();
                },
                [this] { return !parts_.state.isConversionRunning; });
        },
        Qt::QueuedConnection);
}

void RowDrag::reorder(const std::vector<int>& rows, int row) {
    parts_.files.moveRecords(rows, row);
    parts_.files.reload();
}
