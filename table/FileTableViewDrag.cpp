// The table as the source and the goal of drags.

#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "widgets/ReadablePalette.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

void FileTableView::setRowDrag(RowDrag* rowDrag) {
    rowDrag_ = rowDrag;
    setDragDropMode(rowDrag ? DragDrop : NoDragDrop);
    // The toolkit's own mark stands for a drop on a row, which there is none of.
    setDropIndicatorShown(false);
}

int FileTableView::proposedRow(int y) const {
    const int row = rowAt(y);
    if (row < 0)
        return model_->rowCount();
    return y < rowViewportPosition(row) + rowHeight(row) / 2 ? row : row + 1;
}

// The toolkit's own way would offer to move the rows, and clear them when they were moved.
void FileTableView::startDrag(Qt::DropActions) {
    const bool isButton = pressedCell_.isValid() && !(pressedCell_.flags() & Qt::ItemIsDragEnabled);
    if (!rowDrag_ || isButton)
        return;
    pressedCell_ = QModelIndex();
    std::vector<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& each : selected)
        rows.push_back(each.row());
    if (rows.empty())
        return;
    std::sort(rows.begin(), rows.end());
    auto* const drag = new QDrag(this);
    drag->setMimeData(RowDrag::writeRowsWithIndexes(rows).release());
    const QModelIndex name = currentIndex().siblingAtColumn(static_cast<int>(TableColumn::Name));
    if (const QRect cell = visualRect(name) & viewport()->rect(); !cell.isEmpty()) {
        drag->setPixmap(viewport()->grab(cell));
        drag->setHotSpot({-cell.height() / 2, -cell.height() / 4}); // beside the pointer
    }
    drag->exec(Qt::CopyAction);
}

void FileTableView::dragEnterEvent(QDragEnterEvent* event) {
    const QPoint position = event->position().toPoint();
    dragOver_ = DragOver{RowDrag::kindOf(*event->mimeData()), position};
    answerDrag(event);
    // Who was refused does not tell when it leaves.
    if (!dragOver_->isWelcome)
        endDragOver();
}

void FileTableView::dragMoveEvent(QDragMoveEvent* event) {
    if (!dragOver_) {
        event->ignore();
        return;
    }
    dragOver_->position = event->position().toPoint();
    const QRect inner = viewport()->rect().adjusted(0, autoScrollMargin(), 0, -autoScrollMargin());
    if (hasAutoScroll() && !inner.contains(dragOver_->position))
        startAutoScroll();
    answerDrag(event);
}

void FileTableView::answerDrag(QDropEvent* event) {
    const Qt::DropAction action =
        rowDrag_ ? RowDrag::validateDrop(dragOver_->kind, event->possibleActions())
                 : Qt::IgnoreAction;
    dragOver_->isWelcome = action != Qt::IgnoreAction;
    answer(event, action);
    viewport()->update();
}

void FileTableView::answer(QDropEvent* event, Qt::DropAction action) {
    event->setDropAction(action);
    event->setAccepted(action != Qt::IgnoreAction);
}

void FileTableView::dragLeaveEvent(QDragLeaveEvent* event) {
    endDragOver();
    event->accept();
}

void FileTableView::dropEvent(QDropEvent* event) {
    const bool isWelcome = dragOver_ && dragOver_->isWelcome;
    endDragOver();
    const bool isTaken =
        isWelcome &&
        rowDrag_->acceptDrop(*event->mimeData(), proposedRow(event->position().toPoint().y()));
    answer(event, isTaken ? Qt::CopyAction : Qt::IgnoreAction);
}

void FileTableView::endDragOver() {
    stopAutoScroll();
    dragOver_.reset();
    viewport()->update();
}

void FileTableView::paintDropMark(QPainter& painter) const {
    const bool isDrop =
        dragOver_ && dragOver_->isWelcome &&
        (dragOver_->kind == RowDrag::Kind::Rows || dragOver_->kind == RowDrag::Kind::Files);
    if (!isDrop)
        return;
    constexpr int width = 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect area = viewport()->rect();
    const QPen pen(markColour(palette()), width);
    if (!rowDrag_->hasEffect(dragOver_->kind)) {
        paintRefusal(painter, area);
    } else if (dragOver_->kind == RowDrag::Kind::Files) {
        painter.setPen(pen);
        painter.drawRect(area.adjusted(1, 1, -1, -1));
    } else {
        // With an edge of its own, or the band of a selected row would hide it.
        painter.setPen(QPen(palette().color(QPalette::Base), 3 * width));
        paintRowMark(painter, area);
        painter.setPen(pen);
        paintRowMark(painter, area);
    }
    painter.restore();
}

// Any drop is answered as welcome, so that the pointer cannot say it: a sign of no entry does.
void FileTableView::paintRefusal(QPainter& painter, const QRect& area) const {
    QColor veil = palette().color(QPalette::Base);
    veil.setAlphaF(0.6F);
    painter.fillRect(area, veil);
    constexpr int radius = 22;
    const QPoint middle = area.center();
    painter.setPen(QPen(palette().color(QPalette::Text), 4));
    painter.drawEllipse(middle, radius, radius);
    const int corner = qRound(radius * 0.707);
    painter.drawLine(middle - QPoint(corner, corner), middle + QPoint(corner, corner));
}

void FileTableView::paintRowMark(QPainter& painter, const QRect& area) const {
    const int row = proposedRow(dragOver_->position.y());
    const int last = model_->rowCount() - 1;
    const int y = row <= last ? rowViewportPosition(row)
                  : last >= 0 ? rowViewportPosition(last) + rowHeight(last)
                              : 0;
    constexpr int radius = 3;
    const int shownY = std::clamp(y, radius + 1, area.bottom() - radius);
    painter.drawLine(2 * radius + 1, shownY, area.right(), shownY);
    painter.drawEllipse(QPoint(radius + 1, shownY), radius, radius);
}
