#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

class TestTableAccessible final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void screenReadersSeeTheCells();
    void screenReadersPressTheCells();
    void screenReadersAreRefusedUnderABox();
    void screenReadersSelectRows();
    void accessibleCellsFollowRemovedRows();
    void aRowIsCalledByItsMovie();
    void theBarHasAValue();
    void anEmptyListSaysWhatToDo();
};

void TestTableAccessible::screenReadersSeeTheCells() {
    TableWindow w(2);
    w.f.list.setCheck(1, 0);
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

void TestTableAccessible::screenReadersPressTheCells() {
    TableWindow w(2);
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

void TestTableAccessible::screenReadersAreRefusedUnderABox() {
    TableWindow w(2);
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

void TestTableAccessible::screenReadersSelectRows() {
    TableWindow w(3);
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

void TestTableAccessible::accessibleCellsFollowRemovedRows() {
    TableWindow w(3);
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

void TestTableAccessible::aRowIsCalledByItsMovie() {
    TableWindow w(2);
    const auto headers =
        w.accessibleCell(1, TableColumn::Progress)->tableCellInterface()->rowHeaderCells();
    QCOMPARE(headers.size(), 1);
    QCOMPARE(headers.first()->role(), QAccessible::RowHeader);
    QCOMPARE(headers.first()->text(QAccessible::Name), QStringLiteral("movie 1.mp4"));
    QVERIFY(
        w.accessibleCell(1, TableColumn::Name)->tableCellInterface()->rowHeaderCells().isEmpty());
    w.f.removeRows({0});
    QCOMPARE(w.accessibleCell(0, TableColumn::Progress)
                 ->tableCellInterface()
                 ->rowHeaderCells()
                 .first()
                 ->text(QAccessible::Name),
             QStringLiteral("movie 1.mp4"));
}

void TestTableAccessible::theBarHasAValue() {
    TableWindow w(1);
    QAccessibleInterface* const cell = w.accessibleCell(0, TableColumn::Progress);
    QVERIFY(!cell->valueInterface());
    ProgressObject& progress = *w.f.list.progressObjects.front();
    progress.changestat(status::STATCR);
    progress.incrementStep(37);
    QAccessibleValueInterface* const value = cell->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->currentValue().toInt(), 37);
    QCOMPARE(value->minimumValue().toInt(), 0);
    QCOMPARE(value->maximumValue().toInt(), 100);
    progress.setBar(1.4);
    QCOMPARE(value->currentValue().toInt(), 100);
    value->setCurrentValue(3);
    QCOMPARE(value->currentValue().toInt(), 100);
    QVERIFY(!w.accessibleCell(0, TableColumn::Name)->valueInterface());
}

void TestTableAccessible::anEmptyListSaysWhatToDo() {
    TableWindow w(0);
    QCOMPARE(w.accessible()->text(QAccessible::Description), getLocalString("IDS_TXT_EMPTY_LIST"));
    w.f.addRows(1);
    w.f.model.reload();
    QCOMPARE(w.accessible()->text(QAccessible::Description), getLocalString("IDS_TIP_TABLE"));
}

REELSHIFT_TEST(tst_table_accessible, TestTableAccessible, TableApplication)
#include "tst_table_accessible.moc"
