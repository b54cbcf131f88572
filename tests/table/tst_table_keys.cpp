#include "TestProgram.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

class TestTableKeys final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void spaceChecksTheRow();
    void spaceChecksAllSelectedRows();
    void aSelectionOfManyRowsIsCheckedAsOne();
    void theMenuKeyOffersTheRowsButton();
    void theMenuOfARowThatChangedDoesNothing();
    void theFocusOfAnEmptyListIsSeen();
    void keysOpenTheEditor_data();
    void keysOpenTheEditor();
    void aTypedSizeIsStored();
    void whatIsNoSizeIsNotStored();
    void aTypedQualityTakesTheOfferedSpelling();
    void escapeLeavesTheCellAsItWas();
    void anArrowKeyOpensTheListAndStoresNothing();
    void anEditorLeftOpenStoresNothingDuringARun();
    void tabLeavesTheTable();
    void arrowsGoFromCellToCell();
    void arrowsStepOverLockedCells();
};

void TestTableKeys::spaceChecksTheRow() {
    TableWindow w(2);
    w.key(1, TableColumn::Check, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 0}));
    w.key(1, TableColumn::Name, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1}));
}

void TestTableKeys::spaceChecksAllSelectedRows() {
    TableWindow w(4);
    w.f.list.setCheck(0, 0);
    w.f.list.setCheck(1, 1);
    w.f.list.setCheck(2, 0);
    w.f.list.setCheck(3, 0);
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Name));
    QTest::keyClick(&w.view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&w.view, Qt::Key_Down, Qt::ShiftModifier);
    // The current row is the third one, and all take its new state.
    QTest::keyClick(&w.view, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1, 1, 0}));
    QCOMPARE(w.f.list.recordAt(2)->number(key::check), 1);
    QTest::keySequence(&w.view, QKeySequence(QKeySequence::SelectAll));
    QCOMPARE(w.selection().size(), size_t{4});
    const QSignalSpy header(&w.f.model, &FileTableModel::headerStateChanged);
    QTest::keyClick(&w.view, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{0, 0, 0, 0}));
    QTest::keyClick(&w.view, Qt::Key_Space);
    QCOMPARE(w.f.list.check, (std::vector<int>{1, 1, 1, 1}));
    QCOMPARE(header.size(), 2);
    QVERIFY(header.last().first().toBool());
    QCOMPARE(w.selection().size(), size_t{4});
}

void TestTableKeys::aSelectionOfManyRowsIsCheckedAsOne() {
    TableWindow w(10000);
    w.view.selectAll();
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Name));
    w.view.selectAll();
    const QSignalSpy header(&w.f.model, &FileTableModel::headerStateChanged);
    QTest::keyClick(&w.view, Qt::Key_Space);
    QCOMPARE(header.size(), 1);
    QCOMPARE(std::count(w.f.list.check.begin(), w.f.list.check.end(), 0), 10000);
}

void TestTableKeys::theMenuKeyOffersTheRowsButton() {
    TableWindow w(2);
    w.f.list.recordAt(1)->set(key::name, QStringLiteral("R&B.mp4"));
    w.f.list.recordAt(1)->set(key::image, rowimage::pause);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    w.view.setCurrentIndex(w.f.cell(1, TableColumn::Name));
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&w.view, &ask);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->activeAction(), menu->actions().constFirst());
    QCOMPARE(menu->actions().constFirst()->text(),
             getLocalString("IDS_A11Y_ROW_PAUSE").arg(QStringLiteral("R&&B.mp4")));
    QTest::keyClick(menu, Qt::Key_Return);
    QTRY_COMPARE(pressed.size(), 1);
    QCOMPARE(pressed.first().first().toInt(), 1);
    QTRY_VERIFY(w.view.findChildren<QMenu*>().isEmpty());
}

void TestTableKeys::theMenuOfARowThatChangedDoesNothing() {
    TableWindow w(2);
    w.f.list.recordAt(1)->set(key::image, rowimage::pause);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    w.view.setCurrentIndex(w.f.cell(1, TableColumn::Name));
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&w.view, &ask);
    QVERIFY(QApplication::activePopupWidget());
    w.f.list.recordAt(1)->set(key::image, rowimage::remove);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 0);
}

void TestTableKeys::theFocusOfAnEmptyListIsSeen() {
    TableWindow w(0);
    w.view.clearFocus();
    const QImage without = w.view.grab().toImage();
    w.view.setFocus(Qt::TabFocusReason);
    QVERIFY(w.view.grab().toImage() != without);
    w.view.clearFocus();
    QCOMPARE(w.view.grab().toImage(), without);
}

void TestTableKeys::keysOpenTheEditor_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("hasList");
    QTest::newRow("F2") << int(Qt::Key_F2) << false;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << true;
    QTest::newRow("Return") << int(Qt::Key_Return) << true;
    QTest::newRow("Space") << int(Qt::Key_Space) << true;
}

void TestTableKeys::keysOpenTheEditor() {
    QFETCH(int, key);
    QFETCH(bool, hasList);
    TableWindow w(2);
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

void TestTableKeys::aTypedSizeIsStored() {
    TableWindow w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x600"));
    QTest::keyClick(w.editor(), Qt::Key_Return);
    QTRY_COMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("800x600"));
    QTRY_VERIFY(!w.editor());
}

void TestTableKeys::whatIsNoSizeIsNotStored() {
    TableWindow w(1);
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

void TestTableKeys::aTypedQualityTakesTheOfferedSpelling() {
    TableWindow w(1);
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

void TestTableKeys::escapeLeavesTheCellAsItWas() {
    TableWindow w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x600"));
    QTest::keyClick(w.editor(), Qt::Key_Escape);
    QTRY_VERIFY(!w.editor());
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableKeys::anArrowKeyOpensTheListAndStoresNothing() {
    TableWindow w(1);
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

void TestTableKeys::anEditorLeftOpenStoresNothingDuringARun() {
    TableWindow w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    w.editor()->setEditText(QStringLiteral("640x480"));
    w.f.state.isConversionRunning = true;
    QTest::keyClick(w.editor(), Qt::Key_Return);
    QTRY_VERIFY(!w.editor());
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableKeys::tabLeavesTheTable() {
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

void TestTableKeys::arrowsGoFromCellToCell() {
    TableWindow w(2);
    w.view.setCurrentIndex(w.f.cell(0, TableColumn::Check));
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&w.view, Qt::Key_Right);
    QTest::keyClick(&w.view, Qt::Key_Down);
    QCOMPARE(w.view.currentIndex(), w.f.cell(1, TableColumn::Res));
    QTest::keyClick(&w.view, Qt::Key_F2);
    QVERIFY(w.editor());
}

void TestTableKeys::arrowsStepOverLockedCells() {
    TableWindow w(3);
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

REELSHIFT_TEST(tst_table_keys, TestTableKeys, TableApplication)
#include "tst_table_keys.moc"
