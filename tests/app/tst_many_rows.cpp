#include "TestProgram.h"
#include "app/RunScene.h"
#include "filelist/ProgressObject.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "table/MadeUpRow.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QScrollBar>
#include <QTest>

namespace {

/// The program with a long list that no probe has made. Entry by entry the lists tell their row.
struct LongList {
    explicit LongList(int rows) {
        for (int row = 0; row < rows; ++row) {
            const QString name = QStringLiteral("movie %1.mp4").arg(row);
            const JobRecordPtr record = addMadeUpRow(files, state, name);
            record->set(key::resolution, size(record->id()));
            files.setResolution(row, size(record->id()));
            files.progressObjects.back()->incrementStep(record->id() % 100);
        }
        model.reload();
        scene.program.widget<QWidget>("btnRemoveFile")->setEnabled(true);
        // As the header's box is set by the closing steps of an add.
        box().setChecked(true);
    }

    static QString size(int id) { return QStringLiteral("%1x2").arg(id); }

    [[nodiscard]] QCheckBox& box() { return *view.btnSelectAll(); }
    [[nodiscard]] int shownId(int row) const {
        return model.index(row, 0).data(FileTableModel::IdRole).toInt();
    }
    [[nodiscard]] int topId() const { return shownId(view.rowAt(0)); }
    void check(const std::function<bool(int row)>& isChecked) {
        for (int row = 0; row < files.rowCount(); ++row) {
            files.setCheck(row, isChecked(row) ? 1 : 0);
            files.recordAt(row)->set(key::check, isChecked(row) ? 1 : 0);
        }
        model.reload();
        box().setChecked(files.allChecked());
    }
    void select(const std::vector<int>& rows) {
        QItemSelection selection;
        for (const int row : rows)
            selection.select(model.index(row, 0), model.index(row, tableColumnCount - 1));
        view.selectionModel()->setCurrentIndex(model.index(rows.back(), 1),
                                               QItemSelectionModel::NoUpdate);
        view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    [[nodiscard]] std::vector<int> selectedIds() const {
        std::vector<int> ids;
        for (const QModelIndex& each : view.selectionModel()->selectedRows())
            ids.push_back(shownId(each.row()));
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    /// The ids of rows that are not in order in every list; the model's too.
    [[nodiscard]] std::vector<int> rowsOutOfStep() {
        std::vector<int> wrong;
        for (int row = 0; row < files.rowCount(); ++row) {
            const auto at = static_cast<size_t>(row);
            const int id = files.recordAt(row)->id();
            const bool isRight =
                files.idList[at] == id && shownId(row) == id &&
                files.check[at] == files.recordAt(row)->number(key::check) &&
                files.cmb.at(row) == files.recordAt(row)->text(key::cmb) &&
                files.resolutionListForTable.at(row) == size(id) &&
                files.progressObjects[at]->currentStep() == id % 100 &&
                model.index(row, int(TableColumn::Res)).data().toString() == size(id);
            if (!isRight)
                wrong.push_back(id);
        }
        return wrong;
    }

    RunScene scene;
    FileList& files = scene.program.files();
    SharedState& state = scene.program.state();
    FileTableView& view = *scene.program.widget<FileTableView>("theTableNew");
    FileTableModel& model = *view.fileModel();
};

} // namespace

/// Lists so long that whatever goes through them more than once per action would be noticed. It
/// is what comes out that is looked at here, not how long it takes.
class TestManyRows final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everySecondRowGoes_data() { lengths(); }
    void everySecondRowGoes();
    void rowsInOnePieceGo_data() { lengths(); }
    void rowsInOnePieceGo();
    void allRowsGo_data() { lengths(); }
    void allRowsGo();
    void allRowsAreChecked_data() { lengths(); }
    void allRowsAreChecked();
    void oneRowIsEdited_data() { lengths(); }
    void oneRowIsEdited();
    void theQueueLosesTheRemovedRows_data() { lengths(); }
    void theQueueLosesTheRemovedRows();

private:
    static void lengths();
};

void TestManyRows::lengths() {
    QTest::addColumn<int>("rows");
    QTest::newRow("10,000") << 10000;
    QTest::newRow("100,000") << 100000;
}

void TestManyRows::everySecondRowGoes() {
    QFETCH(int, rows);
    LongList list(rows);
    const QAbstractItemModelTester tester(&list.model);
    const int middle = rows / 2;
    list.select({10, 11, middle, middle + 1, rows - 1});
    list.view.scrollTo(list.model.index(middle + 1, 0), QAbstractItemView::PositionAtTop);
    const int top = list.topId();
    QCOMPARE(top, list.shownId(middle + 1));

    list.check([](int row) { return row % 2 == 0; });
    list.scene.program.click("btnRemoveFile");
    QCOMPARE(list.files.rowCount(), rows / 2);
    QCOMPARE(list.model.rowCount(), rows / 2);
    QVERIFY(list.scene.isInStep());
    QCOMPARE(list.rowsOutOfStep(), std::vector<int>());
    // Ids begin with 1, so it is the even ones that stay.
    for (int row = 0; row < rows / 2; ++row) {
        if (list.files.idList[static_cast<size_t>(row)] != 2 * (row + 1))
            QFAIL(qPrintable(QStringLiteral("row %1 is another one").arg(row)));
    }
    QCOMPARE(list.selectedIds(), (std::vector<int>{12, middle + 2, rows}));
    QCOMPARE(list.shownId(list.view.currentIndex().row()), rows);
    QCOMPARE(list.topId(), top);
    QVERIFY(!list.box().isChecked());
    QVERIFY(list.state.fileCountStr.endsWith(QStringLiteral("(%1)").arg(rows / 2)));
}

void TestManyRows::rowsInOnePieceGo() {
    QFETCH(int, rows);
    LongList list(rows);
    const QAbstractItemModelTester tester(&list.model);
    const int first = rows / 4;
    const int last = rows * 3 / 4 - 1;
    list.select({first - 1, first, last, last + 1});
    list.view.verticalScrollBar()->setValue(0);

    list.check([&](int row) { return row >= first && row <= last; });
    list.scene.program.click("btnRemoveFile");
    QCOMPARE(list.model.rowCount(), rows / 2);
    QVERIFY(list.scene.isInStep());
    QCOMPARE(list.rowsOutOfStep(), std::vector<int>());
    QCOMPARE(list.files.idList[static_cast<size_t>(first - 1)], first);
    QCOMPARE(list.files.idList[static_cast<size_t>(first)], last + 2);
    QCOMPARE(list.selectedIds(), (std::vector<int>{first, last + 2}));
    QCOMPARE(list.topId(), 1);
}

void TestManyRows::allRowsGo() {
    QFETCH(int, rows);
    LongList list(rows);
    const QAbstractItemModelTester tester(&list.model);
    list.scene.program.click("btnRemoveFile");
    QCOMPARE(list.files.rowCount(), 0);
    QCOMPARE(list.model.rowCount(), 0);
    QVERIFY(list.scene.isInStep());
    QVERIFY(!list.box().isChecked());
    QVERIFY(!list.scene.program.widget<QWidget>("btnRemoveFile")->isEnabled());
    // The next row starts the list anew.
    const int id = addMadeUpRow(list.files, list.state, QStringLiteral("next.mp4"))->id();
    list.model.reload();
    QCOMPARE(id, rows + 1);
    QCOMPARE(list.shownId(0), id);
}

void TestManyRows::allRowsAreChecked() {
    QFETCH(int, rows);
    LongList list(rows);
    const QAbstractItemModelTester tester(&list.model);
    list.select({rows / 2});
    for (const bool wished : {false, true}) {
        list.box().click();
        QCOMPARE(list.box().isChecked(), wished);
        const auto& check = list.files.check;
        QCOMPARE(std::count(check.begin(), check.end(), wished ? 1 : 0), rows);
        QCOMPARE(list.rowsOutOfStep(), std::vector<int>());
        QCOMPARE(list.model.index(rows - 1, 0).data(Qt::CheckStateRole).toInt(),
                 wished ? Qt::Checked : Qt::Unchecked);
    }
    QCOMPARE(list.selectedIds(), std::vector<int>{rows / 2 + 1});
}

void TestManyRows::oneRowIsEdited() {
    QFETCH(int, rows);
    LongList list(rows);
    const QAbstractItemModelTester tester(&list.model);
    const int row = rows - 7;
    list.view.scrollTo(list.model.index(row, 0));
    const int top = list.topId();
    QVERIFY(list.model.setData(list.model.index(row, int(TableColumn::Check)), Qt::Unchecked,
                               Qt::CheckStateRole));
    QVERIFY(list.model.setData(list.model.index(row, int(TableColumn::Cmb)),
                               list.files.cmbItems.at(2), Qt::EditRole));
    QCOMPARE(std::count(list.files.check.begin(), list.files.check.end(), 0), 1);
    QCOMPARE(list.files.recordAt(row)->number(key::check), 0);
    QCOMPARE(list.files.cmb.count(list.files.cmbItems.at(2)), 1);
    QCOMPARE(list.files.recordAt(row)->text(key::profile), list.files.comboBoxItems.at(2));
    QCOMPARE(list.files.recordAt(row - 1)->text(key::profile), list.files.comboBoxItems.at(1));
    QVERIFY(!list.box().isChecked());
    QCOMPARE(list.topId(), top);
}

void TestManyRows::theQueueLosesTheRemovedRows() {
    QFETCH(int, rows);
    LongList list(rows);
    for (const int id : list.files.idList) {
        list.files.enqueue(id);
        list.state.noOfconvertingFileList.add(id);
    }
    // The row that converts stands before others and behind others that go.
    list.state.convertingIndex = 5;
    for (int done = 0; done < 5; ++done)
        list.files.dequeueHead(list.files.conversionTaskList.front());
    list.check([](int row) { return row % 2 == 0; });
    list.scene.program.click("btnRemoveFile");
    QVERIFY(list.scene.isInStep());
    QCOMPARE(list.state.convertingIndex, 2);
    QCOMPARE(list.state.convertingId, 6);
    QCOMPARE(list.files.conversionTaskList.size(), static_cast<size_t>(rows / 2 - 2));
    QCOMPARE(list.files.conversionTaskList.front(), 6);
    QCOMPARE(list.files.conversionTaskList.back(), rows);
    QCOMPARE(list.state.noOfconvertingFileList.ids(), list.files.idList);
}

REELSHIFT_TEST(tst_many_rows, TestManyRows, QApplication)
#include "tst_many_rows.moc"
