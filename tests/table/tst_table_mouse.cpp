#include "TestProgram.h"
#include "filelist/StatusWords.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

class TestTableMouse final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aClickChecksARow();
    void aClickOpensTheListOfACell_data();
    void aClickOpensTheListOfACell();
    void choosingFromTheListStoresAndCloses();
    void lockedCellsOpenNoEditor();
    void aRowButtonIsPressedFromTheEventLoop();
    void aPressThatEndsElsewhereIsNone();
    void theSecondOfTwoQuickClicksPressesNoButton();
    void aButtonThatChangedItsMeaningIsNotPressed();
    void rowButtonPressesPassTheGate();
    void clickingARowSelectsIt();
    void severalRowsAreSelected();
    void theHeaderBoxPassesTheGate();
};

void TestTableMouse::aClickChecksARow() {
    TableWindow w(2);
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

void TestTableMouse::aClickOpensTheListOfACell_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("res") << int(TableColumn::Res)
                         << QStringList{QStringLiteral("1280x720"), QStringLiteral("640x360")};
    QTest::newRow("cmb") << int(TableColumn::Cmb) << TableFixture().list.cmbItems;
}

void TestTableMouse::aClickOpensTheListOfACell() {
    QFETCH(int, column);
    QFETCH(QStringList, offered);
    TableWindow w(2);
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

void TestTableMouse::choosingFromTheListStoresAndCloses() {
    TableWindow w(2);
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

void TestTableMouse::lockedCellsOpenNoEditor() {
    TableWindow w(2);
    w.f.state.isConversionRunning = true;
    w.f.model.reload();
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
    w.f.model.reload();
    w.click(1, TableColumn::Res);
    QVERIFY(w.editor());
}

void TestTableMouse::aRowButtonIsPressedFromTheEventLoop() {
    TableWindow w(3);
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

void TestTableMouse::aPressThatEndsElsewhereIsNone() {
    TableWindow w(3);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    QTest::mousePress(w.view.viewport(), Qt::LeftButton, {}, w.center(1, TableColumn::Im));
    QTest::mouseRelease(w.view.viewport(), Qt::LeftButton, {}, w.center(2, TableColumn::Im));
    QTest::mouseClick(w.view.viewport(), Qt::RightButton, {}, w.center(1, TableColumn::Im));
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 0);
}

void TestTableMouse::theSecondOfTwoQuickClicksPressesNoButton() {
    TableWindow w(3);
    const QSignalSpy pressed(&w.view, &FileTableView::rowButtonPressed);
    w.doubleClick(1, TableColumn::Im);
    QTRY_COMPARE(pressed.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.size(), 1);
}

void TestTableMouse::aButtonThatChangedItsMeaningIsNotPressed() {
    TableWindow w(2);
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

void TestTableMouse::rowButtonPressesPassTheGate() {
    TableWindow w(2);
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

void TestTableMouse::clickingARowSelectsIt() {
    TableWindow w(3);
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

void TestTableMouse::severalRowsAreSelected() {
    TableWindow w(4);
    w.click(1, TableColumn::Name);
    w.click(3, TableColumn::Name, Qt::ControlModifier);
    QCOMPARE(w.selection(), (std::set<int>{1, 3}));
    QCOMPARE(w.view.selectedRow(), 3);
    w.click(0, TableColumn::Name, Qt::ShiftModifier);
    QVERIFY(w.selection().size() > 2);
}

void TestTableMouse::theHeaderBoxPassesTheGate() {
    TableWindow w(2);
    w.f.list.setCheck(0, 0);
    w.f.list.setCheck(1, 0);
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

REELSHIFT_TEST(tst_table_mouse, TestTableMouse, TableApplication)
#include "tst_table_mouse.moc"
