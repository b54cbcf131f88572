#include "filelist/FileTableView.h"
#include "filelist/StatusWords.h"
#include "filelist/TableFixture.h"
#include "platform/LocalizedStrings.h"
#include "widgets/ProgressObject.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <set>

namespace {

/// A shown table over made-up rows.
struct Window {
    explicit Window(int rows) {
        f.addRows(rows);
        view.setFileModel(&f.model);
        f.model.reload();
        view.resize(900, 400);
        view.show();
        view.activateWindow();
        view.setFocus();
        (void)QTest::qWaitForWindowActive(&view);
    }

    [[nodiscard]] QPoint center(int row, TableColumn column) const {
        return view.visualRect(f.cell(row, column)).center();
    }
    void click(int row, TableColumn column, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, center(row, column));
    }
    /// As the window system tells of it: a click, and a second one whose press is told apart.
    void doubleClick(int row, TableColumn column) {
        click(row, column);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, center(row, column));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, center(row, column));
    }
    void key(int row, TableColumn column, Qt::Key which) {
        view.setCurrentIndex(f.cell(row, column));
        QTest::keyClick(&view, which);
    }
    [[nodiscard]] QComboBox* editor() const {
        return qobject_cast<QComboBox*>(view.openedEditor());
    }
    [[nodiscard]] bool isListOpen() const { return editor() && editor()->view()->isVisible(); }
    [[nodiscard]] QAccessibleInterface* accessible() {
        return QAccessible::queryAccessibleInterface(&view);
    }
    [[nodiscard]] QAccessibleInterface* accessibleCell(int row, TableColumn column) {
        return accessible()->tableInterface()->cellAt(row, static_cast<int>(column));
    }
    [[nodiscard]] std::set<int> selection() const {
        std::set<int> rows;
        for (const QModelIndex& each : view.selectionModel()->selectedRows())
            rows.insert(each.row());
        return rows;
    }

    TableFixture f;
    FileTableView view;
};

} // namespace

class TestTableView final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aClickChecksARow();
    void spaceChecksTheRow();
    void aClickOpensTheListOfACell_data();
    void aClickOpensTheListOfACell();
    void choosingFromTheListStoresAndCloses();
    void keysOpenTheEditor_data();
    void keysOpenTheEditor();
    void aTypedSizeIsStored();
    void whatIsNoSizeIsNotStored();
    void aTypedQualityTakesTheOfferedSpelling();
    void escapeLeavesTheCellAsItWas();
    void anArrowKeyOpensTheListAndStoresNothing();
    void aReloadLeavesTypedTextAlone();
    void lockedCellsOpenNoEditor();
    void closeEditorsStoresAndCloses();
    void anEditorLeftOpenStoresNothingDuringARun();
    void aRowButtonIsPressedFromTheEventLoop();
    void aPressThatEndsElsewhereIsNone();
    void theSecondOfTwoQuickClicksPressesNoButton();
    void aButtonThatChangedItsMeaningIsNotPressed();
    void rowButtonPressesPassTheGate();
    void clickingARowSelectsIt();
    void severalRowsAreSelected();
    void aReloadKeepsSelectionAndPlace();
    void removalKeepsTheOtherRowsSelected();
    void aThinningResetPutsSelectionAndPlaceBack();
    void theHeaderBoxStandsInItsSection();
    void theHeaderBoxPassesTheGate();
    void tabLeavesTheTable();
    void arrowsGoFromCellToCell();
    void arrowsStepOverLockedCells();
    void columnWidthsSurviveAResize();
    void tenThousandRowsHaveNoWidgets();
    void screenReadersSeeTheCells();
    void screenReadersPressTheCells();
    void screenReadersAreRefusedUnderABox();
    void screenReadersSelectRows();
    void accessibleCellsFollowRemovedRows();
};

void TestTableView::aClickChecksARow() {
    Window w(2);
    w.click(1, TableColumn::Check);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 0}));
    const QSignalSpy edits(&w.f.model, &FileTableModel::headerStateChanged);
    w.doubleClick(1, TableColumn::Check);
    QCOMPARE(edits.size(), 2); // the second of two quick clicks counts
    QCOMPARE(w.f.list.check.at(1), 0);
    w.click(1, TableColumn::Check, Qt::ControlModifier);
    QCOMPARE(w.f.list.check.at(1), 0);
    w.f.state.isConversionRunning = true;
    w.click(0, TableColumn::Check);
    QCOMPARE(w.f.list.check.at(0), 0);
}

void TestTableView::spaceChecksTheRow() {
    Window w(2);
    w.key(1, TableColumn::Check, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 0}));
    w.key(1, TableColumn::Name, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1}));
}

void TestTableView::aClickOpensTheListOfACell_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("res") << int(TableColumn::Res)
                         << QStringList{QStringLiteral("1280x720"), QStringLiteral("640x360")};
    QTest::newRow("cmb") << int(TableColumn::Cmb) << TableFixture().list.cmbItems;
}

void TestTableView::aClickOpensTheListOfACell() {
    QFETCH(int, column);
    QFETCH(QStringList, offered);
    Window w(2);
    w.f.list.recordAt(1)->set(key::resolutionID, 4);
    w.click(1, static_cast<TableColumn>(column));
    QVERIFY(w.editor());
    QTRY_VERIFY(w.isListOpen());
    QStringList items;
    for (int i = 0; i < w.editor()->count(); ++i)
        items << w.editor()->itemText(i);
    QCOMPARE(items, offered);
    QVERIFY(w.editor()->isEditable());
    QVERIFY(!w.editor()->accessibleName().isEmpty());
    QCOMPARE(w.view.selectedRow(), 1);
}

void TestTableView::choosingFromTheListStoresAndCloses() {
    Window w(2);
    w.click(1, TableColumn::Res);
    QTRY_VERIFY(w.isListOpen());
    QTest::keyClick(w.editor()->view(), Qt::Key_Down);
    QTest::keyClick(w.editor()->view(), Qt::Key_Return);
    QTRY_COMPARE(w.f.list.resolutionListForTable.at(1), QStringLiteral("960x540"));
    QCOMPARE(w.f.list.recordAt(1)->text(key::resolution), QStringLiteral("960x540"));
    QTRY_VERIFY(!w.editor());
    // One click is enough right afterwards, too.
    w.click(0, TableColumn::Cmb);
    QTRY_VERIFY(w.isListOpen());
    QTest::keyClick(w.editor()->view(), Qt::Key_Up);
    QTest::keyClick(w.editor()->view(), Qt::Key_Return);
    QTRY_COMPARE(w.f.list.cmb.at(0), w.f.list.cmbItems.at(0));
    QCOMPARE(w.f.list.recordAt(0)->text(key::profile), w.f.list.comboBoxItems.at(0));
}

void TestTableView::keysOpenTheEditor_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("hasList");
    QTest::newRow("F2") << int(Qt::Key_F2) << false;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << true;
    QTest::newRow("Return") << int(Qt::Key_Return) << true;
    QTest::newRow("Space") << int(Qt::Key_Space) << true;
}

void TestTableView::keysOpenTheEditor() {
    QFETCH(int, key);
    QFETCH(bool, hasList);
    Window w(2);
    for (const TableColumn column : {TableColumn::Res, TableColumn::Cmb}) {
        w.key(1, column, static_cast<Qt::Key>(key));
        QVERIFY(w.editor());
        if (hasList)
            QTRY_VERIFY(w.isListOpen());
        w.view.closeEditors();
        QTRY_VERIFY(!w.editor());
    }
    w.key(1, TableColumn::Name, Qt::Key_F2);
    QVERIFY(!w.editor());
}

void TestTableView::aTypedSizeIsStored() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x600"));
    QTest::keyClick(w.editor(), Qt::Key_Return);
    QTRY_COMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("800x600"));
    QTRY_VERIFY(!w.editor());
}

void TestTableView::whatIsNoSizeIsNotStored() {
    Window w(1);
    for (const char* const typed : {"800", "800x", "big", "-8x6"}) {
        w.key(0, TableColumn::Res, Qt::Key_F2);
        QVERIFY(w.editor());
        QTest::keyClicks(w.editor()->lineEdit(), QString::fromLatin1(typed));
        if (qstrcmp(typed, "-8x6") == 0)
            w.editor()->setEditText(QString::fromLatin1(typed));
        w.view.closeEditors();
        QTRY_VERIFY(!w.editor());
        QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
    }
}

void TestTableView::aTypedQualityTakesTheOfferedSpelling() {
    Window w(1);
    w.key(0, TableColumn::Cmb, Qt::Key_F2);
    w.editor()->setEditText(w.f.list.cmbItems.at(2).toUpper());
    w.view.closeEditors();
    QCOMPARE(w.f.list.cmb.at(0), w.f.list.cmbItems.at(2));
    QTRY_VERIFY(!w.editor());
    w.key(0, TableColumn::Cmb, Qt::Key_F2);
    w.editor()->setEditText(QStringLiteral("nothing that is offered"));
    w.view.closeEditors();
    QCOMPARE(w.f.list.cmb.at(0), w.f.list.cmbItems.at(2));
}

void TestTableView::escapeLeavesTheCellAsItWas() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x600"));
    QTest::keyClick(w.editor(), Qt::Key_Escape);
    QTRY_VERIFY(!w.editor());
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableView::anArrowKeyOpensTheListAndStoresNothing() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClick(w.editor()->lineEdit(), Qt::Key_Down);
    QVERIFY(w.editor());
    QTRY_VERIFY(w.editor()->view()->isVisible());
    QTest::keyClick(w.editor()->view(), Qt::Key_Escape);
    QTRY_VERIFY(!w.editor() || !w.editor()->view()->isVisible());
    if (w.editor())
        QTest::keyClick(w.editor(), Qt::Key_Escape);
    QTRY_VERIFY(!w.editor());
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableView::aReloadLeavesTypedTextAlone() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x"));
    w.f.model.reload();
    w.f.model.rowChanged(0);
    QVERIFY(w.editor());
    QCOMPARE(w.editor()->currentText(), QStringLiteral("800x"));
}

void TestTableView::lockedCellsOpenNoEditor() {
    Window w(2);
    w.f.state.isConversionRunning = true;
    w.f.model.editLockChanged();
    for (const TableColumn column : {TableColumn::Res, TableColumn::Cmb}) {
        w.click(1, column);
        QVERIFY(!w.editor());
        QCOMPARE(w.view.selectedRow(), 1); // rows are selected all the same
        w.view.clearSelection();
        w.key(1, column, Qt::Key_F2);
        w.key(1, column, Qt::Key_Return);
        QVERIFY(!w.editor());
    }
    w.f.state.isConversionRunning = false;
    w.f.model.editLockChanged();
    w.click(1, TableColumn::Res);
    QVERIFY(w.editor());
}

void TestTableView::closeEditorsStoresAndCloses() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    w.editor()->setEditText(QStringLiteral("640x480"));
    w.view.closeEditors();
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("640x480"));
    QVERIFY(!w.editor());
    w.view.closeEditors();
}

void TestTableView::anEditorLeftOpenStoresNothingDuringARun() {
    Window w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    w.editor()->setEditText(QStringLiteral("640x480"));
    w.f.state.isConversionRunning = true;
    QTest::keyClick(w.editor(), Qt::Key_Return);
    QTRY_VERIFY(!w.editor());
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableView::aRowButtonIsPressedFromTheEventLoop() {
    Window w(3);
    QStringList order;
    connect(&w.view, &FileTableView::rowSelected, this,
            [&](int row) { order << QStringLiteral("select %1").arg(row); });
    connect(&w.view, &FileTableView::rowButtonPressed, this,
            [&](int row) { order << QStringLiteral("press %1").arg(row); });
    w.click(1, TableColumn::Im);
    QCOMPARE(order.filter(QStringLiteral("press")).size(), 0); // not inside the click
    QTRY_COMPARE(order.value(order.size() - 1), QStringLiteral("press 1"));
    QCOMPARE(order.first(), QStringLiteral("select 1"));
    order.clear();
    w.key(2, TableColumn::Im, Qt::Key_Space);
    QTRY_COMPARE(order.value(order.size() - 1), QStringLiteral("press 2"));
    QVERIFY(order.contains(QStringLiteral("select 2")));
    w.key(0, TableColumn::Im, Qt::Key_Return);
    QTRY_COMPARE(order.value(order.size() - 1), QStringLiteral("press 0"));
}

void TestTableView::aPressThatEndsElsewhereIsNone() {
    Window w(3);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    QTest::mousePress(w.view.viewport(), Qt::LeftButton, {}, w.center(1, TableColumn::Im));
    QTest::mouseRelease(w.view.viewport(), Qt::LeftButton, {}, w.center(2, TableColumn::Im));
    QTest::mouseClick(w.view.viewport(), Qt::RightButton, {}, w.center(1, TableColumn::Im));
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 0);
}

void TestTableView::theSecondOfTwoQuickClicksPressesNoButton() {
    Window w(3);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    w.doubleClick(1, TableColumn::Im);
    QTRY_COMPARE(pressed.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 1);
}

void TestTableView::aButtonThatChangedItsMeaningIsNotPressed() {
    Window w(2);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    w.f.list.recordAt(0)->set(key::image, rowimage::pause);
    w.click(0, TableColumn::Im);
    w.f.list.recordAt(0)->set(key::image, rowimage::remove);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 0);
    w.click(1, TableColumn::Im);
    w.f.removeRows({0});
    QTRY_COMPARE(pressed.size(), 1);
    QCOMPARE(pressed.first().first().toInt(), 0); // the same movie, where it stands now
}

void TestTableView::rowButtonPressesPassTheGate() {
    Window w(2);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        w.view.activateCell(w.f.cell(1, TableColumn::Im));
        QTimer::singleShot(0, this, [&] {
            isOver = true;
            w.f.mainThread.wake();
        });
    });
    w.f.mainThread.waitUntil([&] { return isOver; });
    QCOMPARE(pressed.size(), 0);
    QTRY_COMPARE(pressed.size(), 1);
    QDialog box;
    QTimer::singleShot(0, &box, [&] {
        w.view.activateCell(w.f.cell(1, TableColumn::Im));
        QTimer::singleShot(0, &box, &QDialog::reject);
    });
    box.exec();
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 1);
}

void TestTableView::clickingARowSelectsIt() {
    Window w(3);
    const QSignalSpy selected(&w.view, &FileTableView::rowSelected);
    QCOMPARE(w.view.selectedRow(), -1);
    w.click(2, TableColumn::Name);
    QCOMPARE(w.view.selectedRow(), 2);
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.last().first().toInt(), 2);
    w.click(2, TableColumn::Duration); // anew: the main list shows the row again
    QCOMPARE(selected.size(), 2);
    QTest::keyClick(&w.view, Qt::Key_Up);
    QCOMPARE(w.view.selectedRow(), 1);
    QCOMPARE(selected.last().first().toInt(), 1);
}

void TestTableView::severalRowsAreSelected() {
    Window w(4);
    w.click(1, TableColumn::Name);
    w.click(3, TableColumn::Name, Qt::ControlModifier);
    QCOMPARE(w.selection(), (std::set<int>{1, 3}));
    QCOMPARE(w.view.selectedRow(), 3);
    w.click(0, TableColumn::Name, Qt::ShiftModifier);
    QVERIFY(w.selection().size() > 2);
}

void TestTableView::aReloadKeepsSelectionAndPlace() {
    Window w(100);
    w.click(2, TableColumn::Name);
    w.click(4, TableColumn::Name, Qt::ControlModifier);
    w.view.verticalScrollBar()->setValue(333);
    const QModelIndex current = w.view.currentIndex();
    w.f.addRows(5);
    w.f.model.reload();
    QCOMPARE(w.selection(), (std::set<int>{2, 4}));
    QCOMPARE(w.view.currentIndex(), current);
    QCOMPARE(w.view.verticalScrollBar()->value(), 333);
}

void TestTableView::removalKeepsTheOtherRowsSelected() {
    Window w(10);
    w.click(3, TableColumn::Name);
    w.click(7, TableColumn::Name, Qt::ControlModifier);
    w.f.removeRows({0, 3, 5});
    QCOMPARE(w.selection(), (std::set<int>{4}));
    QCOMPARE(w.f.shown(4, TableColumn::Name), QStringLiteral("movie 7.mp4"));
    QCOMPARE(w.view.currentIndex().row(), 4);
}

void TestTableView::aThinningResetPutsSelectionAndPlaceBack() {
    Window w(1000);
    w.view.setCurrentIndex(w.f.cell(501, TableColumn::Audio));
    w.view.selectionModel()->select(w.f.cell(600, TableColumn::Name),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    w.view.selectionModel()->select(w.f.cell(703, TableColumn::Name),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const int height = w.view.rowHeight(0);
    w.view.verticalScrollBar()->setValue(501 * height + 7);
    QCOMPARE(w.view.rowAt(0), 501);
    std::vector<int> even;
    for (int row = 0; row < 1000; row += 2)
        even.push_back(row);
    const QSignalSpy reset(&w.f.model, &QAbstractItemModel::modelReset);
    w.f.removeRows(even);
    QCOMPARE(reset.size(), 1);
    QCOMPARE(w.selection(), (std::set<int>{250, 351}));
    QCOMPARE(w.view.currentIndex(), w.f.cell(250, TableColumn::Audio));
    QCOMPARE(w.view.rowAt(0), 250);
    QCOMPARE(w.f.shown(250, TableColumn::Name), QStringLiteral("movie 501.mp4"));
    QCOMPARE(w.view.verticalScrollBar()->value(), 250 * height + 7);
    std::vector<int> all;
    for (int row = 0; row < 500; ++row)
        all.push_back(row);
    w.f.removeRows(all);
    QCOMPARE(w.view.selectedRow(), -1);
}

void TestTableView::theHeaderBoxStandsInItsSection() {
    Window w(3);
    QCheckBox* const box = w.view.findChild<QCheckBox*>(QStringLiteral("btnSelectAll"));
    QCOMPARE(box, w.view.btnSelectAll());
    QVERIFY(box->isVisible());
    QVERIFY(!box->accessibleName().isEmpty());
    const QHeaderView* const header = w.view.horizontalHeader();
    const auto section = [&] {
        return QRect(header->x() + header->sectionViewportPosition(0), header->y(),
                     header->sectionSize(0), header->height());
    };
    QVERIFY(section().contains(box->geometry()));
    w.view.resize(500, 300);
    QVERIFY(section().contains(box->geometry()));
    QVERIFY(w.view.horizontalScrollBar()->maximum() > 0);
    w.view.horizontalScrollBar()->setValue(20);
    QVERIFY(section().contains(box->geometry()));
    QVERIFY(!box->mask().isEmpty());
    w.view.horizontalScrollBar()->setValue(0);
    QVERIFY(box->mask().isEmpty());
}

void TestTableView::theHeaderBoxPassesTheGate() {
    Window w(2);
    w.f.list.check = {0, 0};
    QCheckBox* const box = w.view.btnSelectAll();
    QList<bool> states;
    connect(&w.view, &FileTableView::selectAllPressed, this, [&] { states << box->isChecked(); });
    QTest::mouseClick(box, Qt::LeftButton);
    QCOMPARE(states, QList<bool>{true});
    box->setChecked(false);
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        box->click(); // as a press through the accessibility tree
        dialog.reject();
    });
    dialog.exec();
    QCOMPARE(states.size(), 1);
    QVERIFY(!box->isChecked());
}

void TestTableView::tabLeavesTheTable() {
    QWidget window;
    auto* const before = new QLineEdit(&window);
    auto* const view = new FileTableView(&window);
    auto* const after = new QLineEdit(&window);
    TableFixture f;
    f.addRows(2);
    view->setFileModel(&f.model);
    f.model.reload();
    view->move(0, 30);
    after->move(0, 300);
    window.show();
    window.activateWindow();
    before->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QList<QWidget*> order{before};
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order << QApplication::focusWidget();
    }
    QCOMPARE(order, (QList<QWidget*>{before, view->btnSelectAll(), view, after}));
}

void TestTableView::arrowsGoFromCellToCell() {
    Window w(2);
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Check));
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&w.view, Qt::Key_Right);
    QTest::keyClick(&w.view, Qt::Key_Down);
    QCOMPARE(w.view.currentIndex(), w.f.cell(1, TableColumn::Res));
    QTest::keyClick(&w.view, Qt::Key_F2);
    QVERIFY(w.editor());
}

void TestTableView::arrowsStepOverLockedCells() {
    Window w(3);
    w.f.state.isConversionRunning = true;
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Audio));
    QTest::keyClick(&w.view, Qt::Key_Right);
    QCOMPARE(w.view.currentIndex(), w.f.cell(0, TableColumn::Progress));
    QTest::keyClick(&w.view, Qt::Key_Left);
    QCOMPARE(w.view.currentIndex(), w.f.cell(0, TableColumn::Audio));
    // A run that begins while such a cell is current does not hold the arrow keys up.
    w.f.state.isConversionRunning = false;
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Cmb));
    w.f.state.isConversionRunning = true;
    QTest::keyClick(&w.view, Qt::Key_Down);
    QCOMPARE(w.view.currentIndex().row(), 1);
    QTest::keyClick(&w.view, Qt::Key_Down);
    QCOMPARE(w.view.selectedRow(), 2);
}

void TestTableView::columnWidthsSurviveAResize() {
    Window w(2);
    const int name = static_cast<int>(TableColumn::Name);
    w.view.setColumnWidth(static_cast<int>(TableColumn::Cmb), 171);
    const auto fills = [&] {
        return w.view.horizontalHeader()->length() == w.view.viewport()->width();
    };
    QVERIFY(fills());
    w.view.resize(1200, 500);
    QVERIFY(fills());
    QCOMPARE(w.view.columnWidth(static_cast<int>(TableColumn::Cmb)), 171);
    w.view.resize(400, 300);
    QVERIFY(w.view.columnWidth(name) > 80);
    w.view.resize(1200, 500);
    QVERIFY(fills());
    QCOMPARE(w.view.columnWidth(static_cast<int>(TableColumn::Cmb)), 171);
}

void TestTableView::tenThousandRowsHaveNoWidgets() {
    Window w(3);
    const auto widgets = w.view.findChildren<QWidget*>().size();
    w.f.addRows(10000);
    for (int row = 0; row < 10003; ++row) {
        w.f.list.progressObjects[size_t(row)]->changestat(status::STATCR);
        w.f.list.progressObjects[size_t(row)]->incrementStep(row % 100);
    }
    w.f.model.reload();
    w.view.verticalScrollBar()->setValue(w.view.verticalScrollBar()->maximum() / 2);
    w.view.repaint();
    QCOMPARE(w.view.findChildren<QWidget*>().size(), widgets);
    QCOMPARE(w.f.model.rowCount(), 10003);
}

void TestTableView::screenReadersSeeTheCells() {
    Window w(2);
    w.f.list.check[1] = 0;
    w.f.list.progressObjects[1]->changestat(status::STATCR);
    w.f.list.progressObjects[1]->incrementStep(37);
    w.f.state.isConversionRunning = true;
    QAccessibleInterface* const table = w.accessible();
    QCOMPARE(table->role(), QAccessible::Table);
    QVERIFY(!table->text(QAccessible::Name).isEmpty());
    QCOMPARE(table->tableInterface()->rowCount(), 2);
    QCOMPARE(table->tableInterface()->columnCount(), 8);
    const auto cell = [&](TableColumn column) { return w.accessibleCell(1, column); };
    QCOMPARE(cell(TableColumn::Name)->text(QAccessible::Name), QStringLiteral("movie 1.mp4"));
    QCOMPARE(cell(TableColumn::Progress)->text(QAccessible::Name), QStringLiteral("37 %"));
    QVERIFY(!cell(TableColumn::Im)->text(QAccessible::Name).isEmpty());
    QVERIFY(cell(TableColumn::Check)->state().checkable);
    QVERIFY(!cell(TableColumn::Check)->state().checked);
    QVERIFY(w.accessibleCell(0, TableColumn::Check)->state().checked);
    QVERIFY(cell(TableColumn::Res)->state().disabled);
    QVERIFY(cell(TableColumn::Cmb)->state().disabled);
    QVERIFY(!cell(TableColumn::Im)->state().disabled);
    // Every child knows its parent and its place.
    bool hasBox = false;
    for (int i = 0; i < table->childCount(); ++i) {
        QAccessibleInterface* const child = table->child(i);
        QVERIFY(child && child->isValid());
        QCOMPARE(table->indexOfChild(child), i);
        QCOMPARE(child->parent(), table);
        hasBox = hasBox || child->object() == w.view.btnSelectAll();
    }
    QVERIFY(hasBox);
    QCOMPARE(cell(TableColumn::Name)->tableCellInterface()->columnHeaderCells().size(), 1);
    QCOMPARE(cell(TableColumn::Name)
                 ->tableCellInterface()
                 ->columnHeaderCells()
                 .first()
                 ->text(QAccessible::Name),
             w.f.model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString());
    const QRect rect = cell(TableColumn::Im)->rect();
    QCOMPARE(table->childAt(rect.center().x(), rect.center().y()), cell(TableColumn::Im));
}

void TestTableView::screenReadersPressTheCells() {
    Window w(2);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    QAccessibleActionInterface* const check =
        w.accessibleCell(1, TableColumn::Check)->actionInterface();
    QVERIFY(check->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    check->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 0}));
    check->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1}));
    w.accessibleCell(1, TableColumn::Im)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(pressed.size(), 0);
    QTRY_COMPARE(pressed.size(), 1);
    QCOMPARE(w.view.selectedRow(), 1);
    w.accessibleCell(0, TableColumn::Res)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(w.editor());
    w.view.closeEditors();
    w.f.state.isConversionRunning = true;
    QVERIFY(w.accessibleCell(0, TableColumn::Res)->actionInterface()->actionNames().isEmpty());
    w.accessibleCell(0, TableColumn::Res)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!w.editor());
}

void TestTableView::screenReadersAreRefusedUnderABox() {
    Window w(2);
    QDialog box;
    QTimer::singleShot(0, &box, [&] {
        w.accessibleCell(1, TableColumn::Check)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
        w.accessibleCell(1, TableColumn::Res)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        box.reject();
    });
    box.exec();
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1}));
    QVERIFY(!w.editor());
}

void TestTableView::screenReadersSelectRows() {
    Window w(3);
    QAccessibleTableInterface* const table = w.accessible()->tableInterface();
    const QSignalSpy selected(&w.view, &FileTableView::rowSelected);
    QVERIFY(table->selectRow(1));
    QVERIFY(table->selectRow(2));
    QVERIFY(!table->selectRow(3));
    QCOMPARE(table->selectedRows(), (QList<int>{1, 2}));
    QCOMPARE(w.view.selectedRow(), 2);
    QVERIFY(selected.size() >= 2);
    QVERIFY(table->unselectRow(1));
    QVERIFY(!table->isRowSelected(1));
    QVERIFY(w.accessibleCell(2, TableColumn::Name)->state().selected);
}

void TestTableView::accessibleCellsFollowRemovedRows() {
    Window w(3);
    QAccessibleInterface* const last = w.accessibleCell(2, TableColumn::Name);
    QCOMPARE(last->text(QAccessible::Name), QStringLiteral("movie 2.mp4"));
    w.f.removeRows({0});
    QCOMPARE(w.accessibleCell(1, TableColumn::Name), last);
    QCOMPARE(last->text(QAccessible::Name), QStringLiteral("movie 2.mp4"));
    w.f.removeRows({1});
    QVERIFY(!last->isValid());
    QVERIFY(last->state().invalid);
    QVERIFY(last->actionInterface()->actionNames().isEmpty());
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const StringTable texts(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c());
    TestTableView test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_table_view.moc"
