// The table as the keyboard uses it, the focus that shows the way included.

#include "filelist/StatusWords.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "widgets/ReadablePalette.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

void FileTableView::focusInEvent(QFocusEvent* event) {
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
        event->reason() == Qt::ShortcutFocusReason)
        isByKeyboard_ = true;
    // The toolkit's own way would begin in the column of the check boxes.
    if (model_ && model_->rowCount() > 0 && !currentIndex().isValid())
        selectionModel()->setCurrentIndex(model_->index(0, section(TableColumn::Name)),
                                          QItemSelectionModel::NoUpdate);
    QTableView::focusInEvent(event);
    // Screen readers are told of the list after this, and would never hear of its cell.
    QMetaObject::invokeMethod(this, &FileTableView::tellFocus, Qt::QueuedConnection);
}

void FileTableView::tellFocus() {
    QAccessibleInterface* const table =
        QAccessible::isActive() ? QAccessible::queryAccessibleInterface(this) : nullptr;
    if (!table || !hasFocus() || !currentIndex().isValid())
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(table->indexOfChild(
        table->tableInterface()->cellAt(currentIndex().row(), currentIndex().column())));
    QAccessible::updateAccessibility(&event);
}

void FileTableView::keyPressEvent(QKeyEvent* event) {
    isByKeyboard_ = true;
    // From a cell that a run has locked the arrow keys would lead nowhere.
    if (currentIndex().isValid() && !(currentIndex().flags() & Qt::ItemIsEnabled))
        selectionModel()->setCurrentIndex(
            currentIndex().siblingAtColumn(section(TableColumn::Name)),
            QItemSelectionModel::NoUpdate);
    const QModelIndex index = currentIndex();
    const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (!model_ || !index.isValid() || !isPlain || state() == EditingState) {
        QTableView::keyPressEvent(event);
        return;
    }
    const TableColumn column = static_cast<TableColumn>(index.column());
    const bool isCombo = column == TableColumn::Res || column == TableColumn::Cmb;
    switch (event->key()) {
    case Qt::Key_Space:
        // In a cell that has nothing of its own to press, the space bar checks the row.
        if (isCombo || column == TableColumn::Im)
            activateCell(index);
        else
            checkRows(index.row());
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isCombo || column == TableColumn::Im) {
            activateCell(index);
            return;
        }
        break;
    case Qt::Key_F2:
        if (isCombo)
            openEditor(index, false);
        return;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
}

// All selected rows take the state that the current one gets, as one.
void FileTableView::checkRows(int current) {
    const QModelIndex box = model_->index(current, section(TableColumn::Check));
    std::vector<int> rows{current};
    if (selectionModel()->isRowSelected(current)) {
        rows.clear();
        const QModelIndexList selected = selectionModel()->selectedRows();
        for (const QModelIndex& each : selected)
            rows.push_back(each.row());
    }
    model_->checkRows(rows, box.data(Qt::CheckStateRole).toInt() != Qt::Checked);
}

void FileTableView::pauseOrResume() {
    if (!model_)
        return;
    const auto hasImage = [this](int row, const QString& image) {
        return model_->source().imageAt(row) == image;
    };
    const auto firstWith = [&](const QString& image) {
        for (int row = 0; row < model_->rowCount(); ++row) {
            if (hasImage(row, image))
                return row;
        }
        return -1;
    };
    int row = selectedRow();
    if (!hasImage(row, rowimage::pause) && !hasImage(row, rowimage::resume))
        row = firstWith(rowimage::pause);
    if (row < 0)
        row = firstWith(rowimage::resume);
    if (row >= 0)
        pressRowButton(model_->index(row, section(TableColumn::Im)));
}

// The row's button for who has no mouse, or has it not there.
void FileTableView::contextMenuEvent(QContextMenuEvent* event) {
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex cell = isKey ? currentIndex() : indexAt(event->pos());
    if (!model_ || !cell.isValid() || openedEditor()) {
        event->ignore(); // there is one of the whole window
        return;
    }
    const QModelIndex button = cell.siblingAtColumn(section(TableColumn::Im));
    QString title = button.data(Qt::AccessibleTextRole).toString();
    title.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' ');
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(title), &QAction::triggered, this,
            [this, place = QPersistentModelIndex(button),
             image = model_->source().imageAt(button.row())] {
                // A button that has another meaning by now was not the one that was meant.
                if (place.isValid() && model_->source().imageAt(place.row()) == image)
                    pressRowButton(place);
            });
    Q_EMIT rowMenuOpens(menu, cell.row());
    const QRect place = visualRect(cell) & viewport()->rect();
    menu->popup(isKey ? viewport()->mapToGlobal(place.center()) : event->globalPos());
    if (isKey)
        menu->setActiveAction(menu->actions().constFirst());
}

void FileTableView::paintCurrentCell(QPainter& painter) const {
    // The style's own focus frame is lost in the band of a selected row. Who uses the mouse needs
    // none.
    const QModelIndex current = currentIndex();
    if (!current.isValid() || !hasFocus() || !isByKeyboard_)
        return;
    const bool isSelected = selectionModel()->isRowSelected(current.row());
    painter.setPen(isSelected ? palette().color(QPalette::HighlightedText) : markColour(palette()));
    painter.drawRect(visualRect(current).adjusted(1, 1, -2, -2));
}

// Without a cell there is no place for the focus but the whole list.
void FileTableView::paintFocusOfEmptyList(QPainter& painter) const {
    if (!hasFocus() || !isByKeyboard_)
        return;
    painter.setPen(markColour(palette()));
    painter.drawRect(viewport()->rect().adjusted(2, 2, -3, -3));
}
