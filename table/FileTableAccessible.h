#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>
#include <QPointer>

class FileTableModel;
class FileTableView;

/// A cell of the list as screen readers see it: what it shows, the value of its bar, whether it is
/// checked or locked, and the action that a click on it is. Main thread; owned by the accessibility
/// cache.
class FileTableCell final : public QAccessibleInterface,
                            public QAccessibleTableCellInterface,
                            public QAccessibleValueInterface,
                            public QAccessibleActionInterface {
public:
    FileTableCell(FileTableView* view, const QModelIndex& index) : view_(view), index_(index) {}
    Q_DISABLE_COPY_MOVE(FileTableCell)

    [[nodiscard]] const QPersistentModelIndex& index() const { return index_; }

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] bool isSelected() const override;
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override;
    [[nodiscard]] int columnIndex() const override { return index_.column(); }
    [[nodiscard]] int rowIndex() const override { return index_.row(); }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

    /// Of the bar, in percent.
    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    [[nodiscard]] QVariant maximumValue() const override { return 100; }
    [[nodiscard]] QVariant minimumValue() const override { return 0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] QString localizedActionDescription(const QString& action) const override;
    void doAction(const QString& action) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<FileTableView> view_;
    QPersistentModelIndex index_;
};

/// A header as screen readers see it: a column's, or a row's, which is hidden and called by its
/// movie. Row and column are
/// -1 in the header row and the header column. Main thread; owned by the accessibility cache.
class FileTableHeaderCell final : public QAccessibleInterface {
public:
    FileTableHeaderCell(FileTableView* view, int row, int column)
        : view_(view), row_(row), column_(column) {}
    Q_DISABLE_COPY_MOVE(FileTableHeaderCell)

    [[nodiscard]] int row() const { return row_; }
    [[nodiscard]] int column() const { return column_; }

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<FileTableView> view_;
    int row_;
    int column_;
};

/// The list as screen readers and tests see it: the headers, then the cells row by row, then the
/// header's check box and an open editor. The toolkit's own table knows no press of a cell and
/// hides the check box; its order of cells is kept, hidden row headers included, because the
/// toolkit's events count by it. Main thread; owned by the accessibility cache.
class FileTableAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit FileTableAccessible(FileTableView* view);
    ~FileTableAccessible() override;
    Q_DISABLE_COPY_MOVE(FileTableAccessible)

    /// Makes every FileTableView of the program accessible this way.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override;
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override;
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int row) const override;
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    [[nodiscard]] QAccessibleInterface* headerCell(int row, int column) const;

private:
    [[nodiscard]] FileTableView* view() const;
    [[nodiscard]] QList<QWidget*> widgets() const;
    /// Cells and headers together.
    [[nodiscard]] int gridSize() const { return (rowCount() + 1) * (columnCount() + 1); }
    [[nodiscard]] int gridIndex(int row, int column) const {
        return (row + 1) * (columnCount() + 1) + column + 1;
    }
    [[nodiscard]] QAccessibleInterface* cell(const QModelIndex& index) const;

    mutable QHash<QPersistentModelIndex, QAccessible::Id> cells_;
    mutable QHash<int, QAccessible::Id> headers_; ///< by gridIndex
};
