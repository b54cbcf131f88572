#pragma once

#include "table/RowDrag.h"

#include <QPersistentModelIndex>
#include <QTableView>

#include <optional>
#include <vector>

class ComboDelegate;
class FileTableModel;
class QCheckBox;
class QMenu;
class RowButtonDelegate;

/// The list of movies: one click, a key or an accessible action checks a row, opens the list of a
/// cell or presses a row's button. Everything it lets the user do passes the model's action gate.
/// Main thread; owned by the main window.
class FileTableView final : public QTableView {
    Q_OBJECT

public:
    explicit FileTableView(QWidget* parent = nullptr);
    ~FileTableView() override;
    Q_DISABLE_COPY_MOVE(FileTableView)

    [[nodiscard]] FileTableModel* fileModel() const { return model_; }
    /// The check box in the header that stands for all rows.
    [[nodiscard]] QCheckBox* btnSelectAll() const { return btnSelectAll_; }
    /// The editor of a cell, null while none is open.
    [[nodiscard]] QWidget* openedEditor() const;
    /// -1 where no row is selected.
    [[nodiscard]] int selectedRow() const;
    /// Wide enough for every column.
    [[nodiscard]] QSize sizeHint() const override;

    void setFileModel(FileTableModel* model);
    /// Rows can be dragged and movies be dropped from now on.
    void setRowDrag(RowDrag* rowDrag);
    /// Names that are not shown; after the string table was installed.
    void setTexts();
    /// Does what a click on the cell does. For keys and accessible actions.
    void activateCell(const QModelIndex& index);
    /// Selects a row beside those that are selected, if the gate is open now.
    bool addToSelection(int row);
    /// Stores and closes the editors that are open; to be called before a run locks the cells.
    void closeEditors();
    /// Presses the pause or resume button of the selected row or, where that row has none, of the
    /// row that is converted, else of the first paused one.
    void pauseOrResume();

Q_SIGNALS:
    /// A menu is about to open for the row, whose button it offers: others may add to it.
    void rowMenuOpens(QMenu* menu, int row);
    /// A row was selected, or clicked anew.
    void rowSelected(int row);
    /// The image button of a row; from the event loop, after its row was selected, and inside an
    /// action of the gate.
    void rowButtonPressed(int row);
    /// The header's check box was clicked and has its new state; inside an action of the gate.
    void selectAllPressed();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void updateGeometries() override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

private:
    struct Place {
        std::vector<int> selectedRows;
        int currentRow = -1;
        int currentColumn = 0;
        int topRow = -1;
        int topOffset = 0;
    };
    struct DragOver {
        RowDrag::Kind kind;
        QPoint position;
        bool isWelcome = false;
    };

    void setUpColumns();
    void setRowHeight();
    void stretchName();
    [[nodiscard]] int leastOfName() const;
    void placeSelectAll();
    void pressSelectAll(bool wished);
    void pressRowButton(const QModelIndex& index);
    void chooseRow(const QModelIndex& index);
    void openEditor(const QModelIndex& index, bool withList);
    void activateClicked(const QModelIndex& index);
    void tellFocus();
    void checkRows(int current);
    void paintCurrentCell(QPainter& painter) const;
    void paintFocusOfEmptyList(QPainter& painter) const;
    void setPressedButton(const QModelIndex& index);
    /// Row before which a drop at this height goes; the number of rows behind the last one.
    [[nodiscard]] int proposedRow(int y) const;
    void answerDrag(QDropEvent* event);
    static void answer(QDropEvent* event, Qt::DropAction action);
    void endDragOver();
    void paintDropMark(QPainter& painter) const;
    void paintRefusal(QPainter& painter, const QRect& area) const;
    void paintRowMark(QPainter& painter, const QRect& area) const;
    void notePlace();
    void restorePlace(const std::vector<int>& removed);

    FileTableModel* model_ = nullptr;
    RowDrag* rowDrag_ = nullptr;
    std::optional<DragOver> dragOver_; ///< while something is dragged over the rows
    QCheckBox* btnSelectAll_;
    ComboDelegate* resDelegate_;
    ComboDelegate* cmbDelegate_;
    RowButtonDelegate* buttonDelegate_;
    QPersistentModelIndex pressedCell_;
    bool wasSelectionAnnounced_ = false;
    bool isByKeyboard_ = false; ///< the list was last used with the keys
    bool isStretching_ = false;
    Place place_;
};
