#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

class TestTableView final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aReloadLeavesTypedTextAlone();
    void closeEditorsStoresAndCloses();
    void aReloadKeepsSelectionAndPlace();
    void removalKeepsTheOtherRowsSelected();
    void aThinningResetPutsSelectionAndPlaceBack();
    void theHeaderBoxStandsInItsSection();
    void columnWidthsSurviveAResize();
    void tenThousandRowsHaveNoWidgets();
};

void TestTableView::aReloadLeavesTypedTextAlone() {
    TableWindow w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QTest::keyClicks(w.editor()->lineEdit(), QStringLiteral("800x"));
    w.f.model.reload();
    w.f.model.rowChanged(0);
    QVERIFY(w.editor());
    QCOMPARE(w.editor()->currentText(), QStringLiteral("800x"));
}

void TestTableView::closeEditorsStoresAndCloses() {
    TableWindow w(1);
    w.key(0, TableColumn::Res, Qt::Key_F2);
    w.editor()->setEditText(QStringLiteral("640x480"));
    w.view.closeEditors();
    QCOMPARE(w.f.list.resolutionListForTable.at(0), QStringLiteral("640x480"));
    QVERIFY(!w.editor());
    w.view.closeEditors();
}

void TestTableView::aReloadKeepsSelectionAndPlace() {
    TableWindow w(100);
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
    TableWindow w(10);
    w.click(3, TableColumn::Name);
    w.click(7, TableColumn::Name, Qt::ControlModifier);
    w.f.removeRows({0, 3, 5});
    QCOMPARE(w.selection(), (std::set<int>{4}));
    QCOMPARE(w.f.shown(4, TableColumn::Name), QStringLiteral("movie 7.mp4"));
    QCOMPARE(w.view.currentIndex().row(), 4);
}

void TestTableView::aThinningResetPutsSelectionAndPlaceBack() {
    TableWindow w(1000);
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
    TableWindow w(3);
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

void TestTableView::columnWidthsSurviveAResize() {
    TableWindow w(2);
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
    TableWindow w(3);
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

REELSHIFT_TEST(tst_table_view, TestTableView, TableApplication)
#include "tst_table_view.moc"
