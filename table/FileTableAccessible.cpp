#include "table/FileTableAccessible.h"

#include "platform/LocalizedStrings.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "table/ProgressCell.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>

#include <algorithm>

namespace {

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != QLatin1StringView(FileTableView::staticMetaObject.className()))
        return nullptr;
    auto* const view = qobject_cast<FileTableView*>(object);
    return view ? new FileTableAccessible(view) : nullptr;
}

FileTableAccessible* tableOf(FileTableView* view) {
    return static_cast<FileTableAccessible*>(QAccessible::queryAccessibleInterface(view));
}

} // namespace

bool FileTableCell::isValid() const {
    return view_ && index_.isValid();
}

QWindow* FileTableCell::window() const {
    return view_ ? view_->window()->windowHandle() : nullptr;
}

QAccessibleInterface* FileTableCell::parent() const {
    return view_ ? QAccessible::queryAccessibleInterface(view_.data()) : nullptr;
}

QString FileTableCell::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
    case QAccessible::Value:
        return index_.data(Qt::AccessibleTextRole).toString();
    case QAccessible::Description:
        return index_.data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

void FileTableCell::setText(QAccessible::Text kind, const QString& text) {
    if (isValid() && kind == QAccessible::Value)
        view_->fileModel()->setData(index_, text, Qt::EditRole);
}

QRect FileTableCell::rect() const {
    if (!isValid())
        return {};
    const QRect rect = view_->visualRect(index_);
    return {view_->viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}

QAccessible::State FileTableCell::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const Qt::ItemFlags flags = index_.flags();
    const bool isEnabled = view_->isEnabled() && (flags & Qt::ItemIsEnabled);
    state.disabled = !isEnabled;
    state.selectable = true;
    state.multiSelectable = true;
    state.selected = isSelected();
    state.focusable = isEnabled;
    state.focused = view_->hasFocus() && view_->currentIndex() == index_;
    state.checkable = bool(flags & Qt::ItemIsUserCheckable);
    state.checked = index_.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    state.editable = bool(flags & Qt::ItemIsEditable);
    state.readOnly = !state.editable;
    const QRect place = view_->visualRect(index_);
    state.offscreen = !view_->viewport()->rect().intersects(place);
    state.invisible = !view_->isVisible();
    return state;
}

void* FileTableCell::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    if (type == QAccessible::ValueInterface && index_.data(ProgressCell::ShowsBarRole).toBool())
        return static_cast<QAccessibleValueInterface*>(this);
    return nullptr;
}

bool FileTableCell::isSelected() const {
    return isValid() && view_->selectionModel()->isRowSelected(index_.row());
}

QList<QAccessibleInterface*> FileTableCell::columnHeaderCells() const {
    if (!isValid())
        return {};
    return {tableOf(view_)->headerCell(-1, index_.column())};
}

// The name itself needs no header that says it a second time.
QList<QAccessibleInterface*> FileTableCell::rowHeaderCells() const {
    if (!isValid() || columnOf(index_) == TableColumn::Name)
        return {};
    return {tableOf(view_)->headerCell(index_.row(), -1)};
}

QVariant FileTableCell::currentValue() const {
    const double share = index_.data(ProgressCell::BarProgressRole).toDouble();
    return std::clamp(qRound(share * 100), 0, 100);
}

QStringList FileTableCell::actionNames() const {
    if (!isValid() || state().disabled)
        return {};
    if (columnOf(index_) == TableColumn::Check)
        return {toggleAction(), pressAction()};
    return {pressAction()};
}

QString FileTableCell::localizedActionDescription(const QString&) const {
    return text(QAccessible::Description);
}

void FileTableCell::doAction(const QString& action) {
    if (actionNames().contains(action))
        view_->activateCell(index_);
}

bool FileTableHeaderCell::isValid() const {
    return view_ && view_->model() && column_ < view_->model()->columnCount() &&
           row_ < view_->model()->rowCount();
}

QWindow* FileTableHeaderCell::window() const {
    return view_ ? view_->window()->windowHandle() : nullptr;
}

QAccessibleInterface* FileTableHeaderCell::parent() const {
    return view_ ? QAccessible::queryAccessibleInterface(view_.data()) : nullptr;
}

QString FileTableHeaderCell::text(QAccessible::Text kind) const {
    if (!isValid() || kind != QAccessible::Name || (column_ < 0 && row_ < 0))
        return {};
    if (column_ < 0)
        return view_->model()
            ->index(row_, static_cast<int>(TableColumn::Name))
            .data(Qt::AccessibleTextRole)
            .toString();
    return view_->model()->headerData(column_, Qt::Horizontal, Qt::AccessibleTextRole).toString();
}

QRect FileTableHeaderCell::rect() const {
    if (!isValid() || column_ < 0)
        return {};
    const QHeaderView* const header = view_->horizontalHeader();
    const QPoint corner(header->sectionViewportPosition(column_), 0);
    return {header->viewport()->mapToGlobal(corner),
            QSize(header->sectionSize(column_), header->height())};
}

QAccessible::Role FileTableHeaderCell::role() const {
    return column_ >= 0 ? QAccessible::ColumnHeader
           : row_ >= 0  ? QAccessible::RowHeader
                        : QAccessible::Pane;
}

QAccessible::State FileTableHeaderCell::state() const {
    QAccessible::State state;
    state.invisible = column_ < 0 || !isValid() || !view_->isVisible();
    return state;
}

void FileTableAccessible::install() {
    QAccessible::installFactory(makeInterface); // a second time has no effect
}

FileTableAccessible::FileTableAccessible(FileTableView* view)
    : QAccessibleWidget(view, QAccessible::Table) {}

FileTableAccessible::~FileTableAccessible() {
    for (const QAccessible::Id id : std::as_const(cells_))
        QAccessible::deleteAccessibleInterface(id);
    for (const QAccessible::Id id : std::as_const(headers_))
        QAccessible::deleteAccessibleInterface(id);
}

FileTableView* FileTableAccessible::view() const {
    return static_cast<FileTableView*>(widget());
}

QList<QWidget*> FileTableAccessible::widgets() const {
    QList<QWidget*> result{view()->btnSelectAll()};
    if (QWidget* const editor = view()->openedEditor())
        result.append(editor);
    return result;
}

// An empty list says what to do, as it does to the eye.
QString FileTableAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Description)
        return getLocalString(rowCount() == 0 ? "IDS_TXT_EMPTY_LIST" : "IDS_TIP_TABLE");
    return QAccessibleWidget::text(kind);
}

int FileTableAccessible::childCount() const {
    return gridSize() + static_cast<int>(widgets().size());
}

QAccessibleInterface* FileTableAccessible::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    if (index >= gridSize())
        return QAccessible::queryAccessibleInterface(widgets().at(index - gridSize()));
    const int row = index / (columnCount() + 1) - 1;
    const int column = index % (columnCount() + 1) - 1;
    return row < 0 || column < 0 ? headerCell(row, column) : cellAt(row, column);
}

int FileTableAccessible::indexOfChild(const QAccessibleInterface* child) const {
    if (!child)
        return -1;
    if (const auto* const cell = dynamic_cast<const FileTableCell*>(child))
        return cell->isValid() ? gridIndex(cell->rowIndex(), cell->columnIndex()) : -1;
    if (const auto* const header = dynamic_cast<const FileTableHeaderCell*>(child))
        return gridIndex(header->row(), header->column());
    const int position = static_cast<int>(widgets().indexOf(child->object()));
    return position < 0 ? -1 : gridSize() + position;
}

QAccessibleInterface* FileTableAccessible::childAt(int x, int y) const {
    const QPoint place(x, y);
    for (QWidget* const each : widgets()) {
        if (each->isVisible() && each->rect().contains(each->mapFromGlobal(place)))
            return QAccessible::queryAccessibleInterface(each);
    }
    const QHeaderView* const header = view()->horizontalHeader();
    const QPoint inHeader = header->viewport()->mapFromGlobal(place);
    if (header->viewport()->rect().contains(inHeader))
        return headerCell(-1, header->logicalIndexAt(inHeader));
    const QPoint inRows = view()->viewport()->mapFromGlobal(place);
    if (!view()->viewport()->rect().contains(inRows))
        return nullptr;
    return cell(view()->indexAt(inRows));
}

QAccessibleInterface* FileTableAccessible::focusChild() const {
    for (QWidget* const each : widgets()) {
        if (each->hasFocus())
            return QAccessible::queryAccessibleInterface(each);
    }
    return view()->hasFocus() ? cell(view()->currentIndex()) : nullptr;
}

void* FileTableAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* FileTableAccessible::cellAt(int row, int column) const {
    return view()->model() ? cell(view()->model()->index(row, column)) : nullptr;
}

QAccessibleInterface* FileTableAccessible::cell(const QModelIndex& index) const {
    if (!index.isValid())
        return nullptr;
    const QPersistentModelIndex place(index);
    const auto known = cells_.constFind(place);
    if (known != cells_.cend())
        return QAccessible::accessibleInterface(*known);
    auto* const made = new FileTableCell(view(), index);
    cells_.insert(place, QAccessible::registerAccessibleInterface(made));
    return made;
}

QAccessibleInterface* FileTableAccessible::headerCell(int row, int column) const {
    if (row >= rowCount() || column >= columnCount())
        return nullptr;
    const int key = gridIndex(row, column);
    const auto known = headers_.constFind(key);
    if (known != headers_.cend())
        return QAccessible::accessibleInterface(*known);
    auto* const made = new FileTableHeaderCell(view(), row, column);
    headers_.insert(key, QAccessible::registerAccessibleInterface(made));
    return made;
}

int FileTableAccessible::selectedCellCount() const {
    return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface*> FileTableAccessible::selectedCells() const {
    QList<QAccessibleInterface*> result;
    for (const int row : selectedRows()) {
        for (int column = 0; column < columnCount(); ++column)
            result.append(cellAt(row, column));
    }
    return result;
}

QString FileTableAccessible::columnDescription(int column) const {
    const QAccessibleInterface* const header = headerCell(-1, column);
    return header ? header->text(QAccessible::Name) : QString();
}

QString FileTableAccessible::rowDescription(int row) const {
    const QAccessibleInterface* const name = cellAt(row, static_cast<int>(TableColumn::Name));
    return name ? name->text(QAccessible::Name) : QString();
}

int FileTableAccessible::selectedRowCount() const {
    return static_cast<int>(selectedRows().size());
}

int FileTableAccessible::columnCount() const {
    return view()->model() ? view()->model()->columnCount() : 0;
}

int FileTableAccessible::rowCount() const {
    return view()->model() ? view()->model()->rowCount() : 0;
}

QList<int> FileTableAccessible::selectedRows() const {
    QList<int> rows;
    if (!view()->selectionModel())
        return rows;
    const QModelIndexList selected = view()->selectionModel()->selectedRows();
    for (const QModelIndex& each : selected)
        rows.append(each.row());
    return rows;
}

bool FileTableAccessible::isRowSelected(int row) const {
    return view()->selectionModel() && row >= 0 && row < rowCount() &&
           view()->selectionModel()->isRowSelected(row);
}

bool FileTableAccessible::selectRow(int row) {
    if (row < 0 || row >= rowCount())
        return false;
    return view()->addToSelection(row);
}

bool FileTableAccessible::unselectRow(int row) {
    if (!isRowSelected(row))
        return false;
    view()->selectionModel()->select(view()->model()->index(row, 0),
                                     QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    return true;
}

void FileTableAccessible::modelChange(QAccessibleTableModelChangeEvent*) {
    for (auto each = cells_.begin(); each != cells_.end();) {
        if (each.key().isValid()) {
            ++each;
            continue;
        }
        QAccessible::deleteAccessibleInterface(each.value());
        each = cells_.erase(each);
    }
}
