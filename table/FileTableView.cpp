#include "table/FileTableView.h"

#include "platform/LocalizedStrings.h"
#include "table/EmptyList.h"
#include "table/FileTableAccessible.h"
#include "table/FileTableColumns.h"
#include "table/FileTableDelegates.h"
#include "table/FileTableKeys.h"
#include "table/FileTableModel.h"
#include "table/ProgressCell.h"
#include "table/RowHeight.h"
#include "widgets/ActionGate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

FileTableView::FileTableView(QWidget* parent)
    : QTableView(parent),
      btnSelectAll_(new QCheckBox(this)),
      resDelegate_(new ComboDelegate(this)),
      cmbDelegate_(new ComboDelegate(this)),
      buttonDelegate_(new RowButtonDelegate(this)) {
    FileTableAccessible::install();
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    // Editors are opened by openEditor() alone, which asks the gate.
    setEditTriggers(NoEditTriggers);
    // Tab goes on to the next control, the arrow keys go from cell to cell.
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    setRowHeight();

    setItemDelegate(new TextDelegate(this));
    setItemDelegateForColumn(section(TableColumn::Check), new CheckDelegate(this));
    setItemDelegateForColumn(section(TableColumn::Res), resDelegate_);
    setItemDelegateForColumn(section(TableColumn::Cmb), cmbDelegate_);
    setItemDelegateForColumn(section(TableColumn::Progress), new ProgressCell(this));
    setItemDelegateForColumn(section(TableColumn::Im), buttonDelegate_);

    btnSelectAll_->setPalette(CheckDelegate::boxPalette(palette()));
    btnSelectAll_->setObjectName(QStringLiteral("btnSelectAll"));
    // Not clicked(): the toggle of a screen reader is no click. The program itself only ever sets
    // the box to what the rows say.
    connect(btnSelectAll_, &QCheckBox::toggled, this, [this](bool wished) {
        if (model_ && wished != model_->allChecked())
            pressSelectAll(wished);
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        stretchName();
        placeSelectAll();
    });
    connect(horizontalHeader(), &QHeaderView::geometriesChanged, this,
            &FileTableView::placeSelectAll);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &FileTableView::placeSelectAll);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this] {
        if (model_)
            model_->didClickTableColumn();
    });
}

FileTableView::~FileTableView() {
    // The base class still moves these about when this part is gone.
    horizontalHeader()->disconnect(this);
    horizontalScrollBar()->disconnect(this);
}

QWidget* FileTableView::openedEditor() const {
    return resDelegate_->openEditor() ? resDelegate_->openEditor() : cmbDelegate_->openEditor();
}

int FileTableView::selectedRow() const {
    if (!selectionModel() || !selectionModel()->hasSelection())
        return -1;
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isRowSelected(current.row()))
        return current.row();
    int first = -1;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        first = first < 0 ? range.top() : std::min(first, range.top());
    return first;
}

void FileTableView::setFileModel(FileTableModel* model) {
    model_ = model;
    setModel(model);
    connect(model, &FileTableModel::aboutToThinOut, this, &FileTableView::notePlace);
    connect(model, &FileTableModel::thinnedOut, this, &FileTableView::restorePlace);
    setTexts();
    setUpColumns();
}

void FileTableView::setTexts() {
    setAccessibleName(getLocalString("IDS_A11Y_TABLE"));
    btnSelectAll_->setAccessibleName(getLocalString("IDS_A11Y_SELECT_ALL"));
    btnSelectAll_->setToolTip(
        tipWithKey(getLocalString("IDS_TIP_SELECT_ALL"), tablekey::selectAll));
}

void FileTableView::setUpColumns() {
    QHeaderView* const header = horizontalHeader();
    const QFontMetrics metrics = fontMetrics();
    const int air = 2 * metrics.horizontalAdvance(QLatin1Char('x')) + 8;
    const auto widthOf = [&](TableColumn column, const QStringList& texts, int extra) {
        int width = header->sectionSizeHint(section(column));
        for (const QString& text : texts)
            width = std::max(width, metrics.horizontalAdvance(text) + air + extra);
        return width;
    };
    constexpr int arrow = 20;
    header->setMinimumSectionSize(
        std::min(CheckDelegate::columnWidth(*this), RowButtonDelegate::columnWidth(*this)));
    header->setSectionResizeMode(QHeaderView::Interactive);
    for (const TableColumn fixed : {TableColumn::Check, TableColumn::Im})
        header->setSectionResizeMode(section(fixed), QHeaderView::Fixed);
    setColumnWidth(section(TableColumn::Check), CheckDelegate::columnWidth(*this));
    setColumnWidth(section(TableColumn::Im), RowButtonDelegate::columnWidth(*this));
    setColumnWidth(section(TableColumn::Duration),
                   widthOf(TableColumn::Duration, {QStringLiteral("00:00:00.00")}, 0));
    setColumnWidth(section(TableColumn::Audio),
                   widthOf(TableColumn::Audio, {QStringLiteral("None")}, 0));
    setColumnWidth(section(TableColumn::Res),
                   widthOf(TableColumn::Res, {QStringLiteral("4096x2160")}, arrow));
    setColumnWidth(
        section(TableColumn::Cmb),
        widthOf(TableColumn::Cmb,
                model_->source().dataCellForTableColumn(identifierOf(TableColumn::Cmb), 0), arrow));
    setColumnWidth(section(TableColumn::Progress),
                   widthOf(TableColumn::Progress, {QString(16, QLatin1Char('x'))}, 0));
    stretchName();
    placeSelectAll();
}

void FileTableView::setRowHeight() {
    verticalHeader()->setMinimumSectionSize(8);
    verticalHeader()->setDefaultSectionSize(rowHeightOf(*this));
    horizontalHeader()->setMinimumHeight(headerHeightOf(*this));
}

void FileTableView::stretchName() {
    // The toolkit's stretching would squeeze the names to nothing in a small window.
    const QHeaderView* const header = horizontalHeader();
    if (isStretching_ || header->count() == 0)
        return;
    const int name = section(TableColumn::Name);
    const int others = header->length() - header->sectionSize(name);
    isStretching_ = true;
    setColumnWidth(name, std::max(viewport()->width() - others, leastOfName()));
    isStretching_ = false;
}

int FileTableView::leastOfName() const {
    return fontMetrics().averageCharWidth() * 20;
}

QSize FileTableView::sizeHint() const {
    const QHeaderView* const header = horizontalHeader();
    const QSize usual = QTableView::sizeHint();
    if (header->count() == 0)
        return usual;
    const int columns =
        header->length() - header->sectionSize(section(TableColumn::Name)) + leastOfName();
    const int scrollBar = verticalScrollBar()->sizeHint().width();
    return usual.expandedTo({columns + scrollBar + 2 * frameWidth(), 0});
}

void FileTableView::placeSelectAll() {
    const QHeaderView* const header = horizontalHeader();
    const bool hasSection = header->count() > 0;
    btnSelectAll_->setVisible(hasSection);
    if (!hasSection)
        return;
    const QRect cell(header->x() + header->sectionViewportPosition(0), header->y(),
                     header->sectionSize(0), header->height());
    QRect box = CheckDelegate::boxRect(cell, *this);
    box.setTop(cell.top());
    box.setBottom(cell.bottom() - 1);
    btnSelectAll_->setGeometry(box);
    const QRect visible = box.intersected(header->geometry()).translated(-box.topLeft());
    if (visible.size() == box.size())
        btnSelectAll_->clearMask();
    else
        btnSelectAll_->setMask(visible.isEmpty() ? QRegion(-1, -1, 1, 1) : QRegion(visible));
    btnSelectAll_->raise();
}

void FileTableView::pressSelectAll(bool wished) {
    // Refused or put off, the box goes on showing the rows' states.
    btnSelectAll_->setChecked(!wished);
    model_->gate().pass(
        [this, wished] {
            {
                const QSignalBlocker notByTheUser(btnSelectAll_);
                btnSelectAll_->setChecked(wished);
            }
            Q_EMIT selectAllPressed();
        },
        [this] { return isEnabled(); });
}

void FileTableView::activateCell(const QModelIndex& index) {
    if (!model_ || !index.isValid())
        return;
    switch (columnOf(index)) {
    case TableColumn::Res:
    case TableColumn::Cmb:
        openEditor(index, true);
        break;
    case TableColumn::Im:
        pressRowButton(index);
        break;
    case TableColumn::Check:
        model_->setData(index,
                        index.data(Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked
                                                                              : Qt::Checked,
                        Qt::CheckStateRole);
        break;
    default:
        model_->gate().pass([this, row = QPersistentModelIndex(index)] { chooseRow(row); },
                            [row = QPersistentModelIndex(index)] { return row.isValid(); });
    }
}

void FileTableView::pressRowButton(const QModelIndex& index) {
    const int id = index.data(FileTableModel::IdRole).toInt();
    const QString image = model_->source().imageAt(index.row());
    const auto press = [this, id] {
        const int row = model_->rowOfId(id);
        chooseRow(model_->index(row, section(TableColumn::Im)));
        Q_EMIT rowButtonPressed(row);
    };
    // A button that has another meaning by now was not the one that was meant.
    const auto isStillMeant = [this, id, image] {
        const int row = model_->rowOfId(id);
        return isEnabled() && row >= 0 && model_->source().imageAt(row) == image &&
               model_->source().isButtonTrue(row);
    };
    QMetaObject::invokeMethod(
        this, [this, press, isStillMeant] { model_->gate().pass(press, isStillMeant); },
        Qt::QueuedConnection);
}

void FileTableView::chooseRow(const QModelIndex& index) {
    const bool isSelected = selectionModel()->isRowSelected(index.row());
    selectionModel()->setCurrentIndex(index, isSelected ? QItemSelectionModel::NoUpdate
                                                        : QItemSelectionModel::ClearAndSelect |
                                                              QItemSelectionModel::Rows);
    if (isSelected)
        Q_EMIT rowSelected(index.row());
}

bool FileTableView::addToSelection(int row) {
    if (!model_ || !model_->gate().isOpen() || row < 0 || row >= model_->rowCount())
        return false;
    const QModelIndex index = model_->index(row, section(TableColumn::Name));
    selectionModel()->setCurrentIndex(index,
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    return true;
}

void FileTableView::openEditor(const QModelIndex& index, bool withList) {
    const QPersistentModelIndex cell(index);
    model_->gate().pass(
        [this, cell, withList] {
            setCurrentIndex(cell);
            edit(cell);
            const bool isSize = columnOf(cell) == TableColumn::Res;
            QComboBox* const editor = (isSize ? resDelegate_ : cmbDelegate_)->openEditor();
            if (editor && withList)
                QMetaObject::invokeMethod(editor, &QComboBox::showPopup, Qt::QueuedConnection);
        },
        [this, cell] {
            return isEnabled() && cell.isValid() && (cell.flags() & Qt::ItemIsEditable);
        });
}

void FileTableView::closeEditors() {
    resDelegate_->finishEditing();
    cmbDelegate_->finishEditing();
}

void FileTableView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex cell = indexAt(event->position().toPoint());
    const bool isPress = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    pressedCell_ = isPress ? cell : QModelIndex();
    wasSelectionAnnounced_ = false;
    isByKeyboard_ = false;
    QTableView::mousePressEvent(event);
    if (cell.isValid() && !(cell.flags() & Qt::ItemIsEnabled))
        // A locked cell stands for its row all the same.
        selectionModel()->setCurrentIndex(cell.siblingAtColumn(section(TableColumn::Name)),
                                          selectionCommand(cell, event));
    if (cell.isValid() && !wasSelectionAnnounced_ && selectedRow() >= 0)
        Q_EMIT rowSelected(selectedRow());
    if (pressedCell_.isValid() && columnOf(pressedCell_) == TableColumn::Im)
        setPressedButton(pressedCell_);
}

void FileTableView::mouseReleaseEvent(QMouseEvent* event) {
    const QPersistentModelIndex pressed = std::exchange(pressedCell_, {});
    setPressedButton({});
    QTableView::mouseReleaseEvent(event);
    if (pressed.isValid() && event->button() == Qt::LeftButton &&
        indexAt(event->position().toPoint()) == pressed)
        activateClicked(pressed);
}

void FileTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The second of two quick clicks is a click, but never on a row's button: the row that was
    // meant may be gone and another one stand in its place.
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (!cell.isValid() || columnOf(cell) != TableColumn::Im)
        mousePressEvent(event);
}

void FileTableView::activateClicked(const QModelIndex& index) {
    switch (columnOf(index)) {
    case TableColumn::Check:
    case TableColumn::Res:
    case TableColumn::Cmb:
    case TableColumn::Im:
        activateCell(index);
        break;
    default:
        break; // the press has selected the row
    }
}

void FileTableView::setPressedButton(const QModelIndex& index) {
    buttonDelegate_->setPressed(index);
    viewport()->update();
}

void FileTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (!model_)
        return;
    QPainter painter(viewport());
    paintDropMark(painter);
    if (model_->rowCount() > 0) {
        paintCurrentCell(painter);
        return;
    }
    paintFocusOfEmptyList(painter);
    EmptyList(*this, viewport()->rect()).paint(painter);
}

void FileTableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    stretchName();
}

void FileTableView::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    // As the eye reads: the header's check box comes before the rows.
    if (QWidget* const before = previousInFocusChain(); before && before != btnSelectAll_)
        setTabOrder(before, btnSelectAll_);
}

void FileTableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        btnSelectAll_->setPalette(CheckDelegate::boxPalette(palette()));
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    setRowHeight();
    if (model_)
        setUpColumns();
}

void FileTableView::updateGeometries() {
    QTableView::updateGeometries();
    placeSelectAll();
}

// A cell that a run has locked stands on its row's ground: some styles have one of its own for it.
void FileTableView::initViewItemOption(QStyleOptionViewItem* option) const {
    QTableView::initViewItemOption(option);
    for (const auto ground : {QPalette::Base, QPalette::AlternateBase})
        option->palette.setBrush(QPalette::Disabled, ground,
                                 palette().brush(palette().currentColorGroup(), ground));
}

void FileTableView::selectionChanged(const QItemSelection& selected,
                                     const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (selected.isEmpty() || selectedRow() < 0)
        return;
    wasSelectionAnnounced_ = true;
    Q_EMIT rowSelected(selectedRow());
}

void FileTableView::notePlace() {
    place_ = {};
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex& each : rows)
        place_.selectedRows.push_back(each.row());
    place_.currentRow = currentIndex().row();
    place_.currentColumn = std::max(currentIndex().column(), 0);
    place_.topRow = rowAt(0);
    if (place_.topRow >= 0)
        place_.topOffset = rowViewportPosition(place_.topRow);
}

void FileTableView::restorePlace(const std::vector<int>& removed) {
    const auto isGone = [&](int row) {
        return std::binary_search(removed.begin(), removed.end(), row);
    };
    const auto newRow = [&](int row) {
        return row - static_cast<int>(std::lower_bound(removed.begin(), removed.end(), row) -
                                      removed.begin());
    };
    QItemSelection selection;
    for (const int row : place_.selectedRows) {
        if (!isGone(row))
            selection.select(model_->index(newRow(row), 0),
                             model_->index(newRow(row), tableColumnCount - 1));
    }
    if (place_.currentRow >= 0) {
        const int row = std::min(newRow(place_.currentRow), model_->rowCount() - 1);
        selectionModel()->setCurrentIndex(model_->index(row, place_.currentColumn),
                                          QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::Select);
    if (place_.topRow >= 0)
        verticalScrollBar()->setValue(newRow(place_.topRow) *
                                          verticalHeader()->defaultSectionSize() -
                                      (isGone(place_.topRow) ? 0 : place_.topOffset));
}
