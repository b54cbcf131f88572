#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "table/ProgressCell.h"
#include "table/TableApplication.h"
#include "table/TableFixture.h"

#include <QAbstractItemModelTester>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>

using Tester = QAbstractItemModelTester;

class TestTableModel final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void columnsInTheirOrder();
    void rowsAreShownOnlyAfterAReload();
    void halfBuiltRowsAreNotShown();
    void listsShorterThanTheModelAnswerNothing();
    void aReloadAnnouncesRowsAtTheEnd();
    void shownRecordsKeepTheirOrderAfterAReorder();
    void spokenTexts();
    void progressRoles();
    void removalIsAnnouncedInRanges_data();
    void removalIsAnnouncedInRanges();
    void neighboursAreRightWhileRangesGo();
    void manyRangesAreOneReset();
    void aRowChanges();
    void anEditAnnouncesTheHeader();
    void anEditIsPutOffByAWait();
    void anEditThatWaitedFindsItsRowAgain();
    void anEditThatWaitedIsRefusedByARun();
    void anEditIsRefusedUnderABox();
    void aClickOnAHeaderIsInert();
};

void TestTableModel::columnsInTheirOrder() {
    const TableFixture f;
    QStringList identifiers;
    for (int i = 0; i < f.model.columnCount(); ++i)
        identifiers << identifierOf(static_cast<TableColumn>(i));
    QCOMPARE(identifiers.join(QLatin1Char(' ')),
             QStringLiteral("check name duration audio res cmb progress im"));
    QCOMPARE(f.model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QString());
    QCOMPARE(f.model.headerData(7, Qt::Horizontal, Qt::DisplayRole).toString(), QString());
    for (int i = 1; i < 7; ++i)
        QVERIFY(!f.model.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty());
    for (int i = 0; i < 8; ++i)
        QVERIFY(
            !f.model.headerData(i, Qt::Horizontal, Qt::AccessibleTextRole).toString().isEmpty());
    QVERIFY(!f.model.headerData(8, Qt::Horizontal, Qt::DisplayRole).isValid());
}

void TestTableModel::rowsAreShownOnlyAfterAReload() {
    TableFixture f;
    const Tester tester(&f.model, Tester::FailureReportingMode::QtTest);
    f.addRows(3);
    QCOMPARE(f.model.rowCount(), 0);
    f.model.reload();
    QCOMPARE(f.model.rowCount(), 3);
    QCOMPARE(f.shown(2, TableColumn::Name), QStringLiteral("movie 2.mp4"));
    QCOMPARE(f.shown(2, TableColumn::Duration), QStringLiteral("00:01:23.45"));
    QCOMPARE(f.shown(2, TableColumn::Audio), QStringLiteral("AAC"));
}

void TestTableModel::halfBuiltRowsAreNotShown() {
    TableFixture f;
    const Tester tester(&f.model, Tester::FailureReportingMode::QtTest);
    f.addRows(2);
    // A movie that is being examined: it has neither a size nor a shown record yet.
    f.list.append(std::make_shared<JobRecord>(), f.list.cmbItems.at(1));
    f.model.reload();
    QCOMPARE(f.model.rowCount(), 2);
    f.list.appendResolution(QStringLiteral("1920x1080"));
    f.model.reload();
    QCOMPARE(f.model.rowCount(), 2);
    f.list.show(f.list.fileInfoArr.back());
    f.model.reload();
    QCOMPARE(f.model.rowCount(), 3);
}

void TestTableModel::listsShorterThanTheModelAnswerNothing() {
    TableFixture f;
    f.addRows(3);
    f.model.reload();
    f.list.removeRows({1, 2}); // the model has not heard of it yet
    for (int column = 0; column < tableColumnCount; ++column) {
        const QModelIndex index = f.model.index(1, column);
        for (int role = 0; role < Qt::UserRole + 110; ++role)
            QVERIFY(!index.data(role).isValid());
        (void)index.flags();
    }
    QVERIFY(!f.model.setData(f.cell(1, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(f.list.check, std::vector<int>{1});
}

void TestTableModel::aReloadAnnouncesRowsAtTheEnd() {
    TableFixture f;
    f.addRows(2);
    f.model.reload();
    const QSignalSpy inserted(&f.model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(&f.model, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy changed(&f.model, &QAbstractItemModel::dataChanged);
    const QSignalSpy reset(&f.model, &QAbstractItemModel::modelReset);
    f.addRows(3);
    f.model.reload();
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.first().at(1).toInt(), 2);
    QCOMPARE(inserted.first().at(2).toInt(), 4);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(1).toModelIndex(), f.model.index(1, 7));
    QCOMPARE(removed.size() + reset.size(), 0);
}

void TestTableModel::shownRecordsKeepTheirOrderAfterAReorder() {
    TableFixture f;
    f.addRows(2);
    f.model.reload();
    f.list.moveRecords({1}, 0);
    f.model.reload();
    // Kept: the shown rows follow with the next movies that are added.
    QCOMPARE(f.shown(0, TableColumn::Name), QStringLiteral("movie 0.mp4"));
    f.list.showRecords();
    f.model.reload();
    QCOMPARE(f.shown(0, TableColumn::Name), QStringLiteral("movie 1.mp4"));
}

void TestTableModel::spokenTexts() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    const auto spoken = [&](TableColumn column) {
        return f.cell(0, column).data(Qt::AccessibleTextRole).toString();
    };
    QCOMPARE(spoken(TableColumn::Name), QStringLiteral("movie 0.mp4"));
    QCOMPARE(spoken(TableColumn::Progress), QStringLiteral("Waiting"));
    QCOMPARE(spoken(TableColumn::Check), QStringLiteral("checked"));
    f.list.setCheck(0, 0);
    QCOMPARE(spoken(TableColumn::Check), QStringLiteral("not checked"));
    f.list.progressObjects[0]->changestat(status::STATCR);
    f.list.progressObjects[0]->incrementStep(37);
    QCOMPARE(spoken(TableColumn::Progress), QStringLiteral("37 %"));
    QStringList spokenButtons;
    for (const QString& image : {rowimage::remove, rowimage::pause, rowimage::resume}) {
        f.list.recordAt(0)->set(key::image, image);
        QVERIFY(spoken(TableColumn::Im).contains(QStringLiteral("movie 0.mp4")));
        QVERIFY(!f.cell(0, TableColumn::Im).data(Qt::ToolTipRole).toString().isEmpty());
        spokenButtons << spoken(TableColumn::Im);
    }
    QCOMPARE(spokenButtons.removeDuplicates(), 0);
}

void TestTableModel::progressRoles() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    f.list.progressObjects[0]->incrementStep(37);
    const QModelIndex cell = f.cell(0, TableColumn::Progress);
    QCOMPARE(cell.data(ProgressCell::StatusTextRole).toString(), QStringLiteral("Waiting"));
    QCOMPARE(cell.data(ProgressCell::StepTextRole).toString(), QStringLiteral("37 %"));
    QCOMPARE(cell.data(ProgressCell::BarProgressRole).toDouble(), 0.37);
    QCOMPARE(cell.data(ProgressCell::ShowsBarRole).toBool(), false);
    QVERIFY(!f.cell(0, TableColumn::Name).data(ProgressCell::StepTextRole).isValid());
}

void TestTableModel::removalIsAnnouncedInRanges_data() {
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("ranges");
    QTest::newRow("none") << QList<int>{} << 0;
    QTest::newRow("first and last of three") << QList<int>{0, 9} << 2;
    QTest::newRow("neighbours are one") << QList<int>{5, 4, 3} << 1;
    QTest::newRow("all") << QList<int>{9, 8, 7, 6, 5, 4, 3, 2, 1, 0} << 1;
    QTest::newRow("every second") << QList<int>{8, 6, 4, 2, 0} << 5;
    QTest::newRow("twice the same") << QList<int>{2, 2} << 1;
}

void TestTableModel::removalIsAnnouncedInRanges() {
    QFETCH(QList<int>, rows);
    QFETCH(int, ranges);
    TableFixture f;
    f.addRows(10);
    f.model.reload();
    const Tester tester(&f.model, Tester::FailureReportingMode::QtTest);
    const QSignalSpy removed(&f.model, &QAbstractItemModel::rowsRemoved);
    std::vector<int> once(rows.begin(), rows.end());
    once.erase(std::unique(once.begin(), once.end()), once.end());
    std::vector<QPersistentModelIndex> places;
    QStringList names;
    for (int row = 0; row < 10; ++row) {
        places.emplace_back(f.cell(row, TableColumn::Name));
        names << f.shown(row, TableColumn::Name);
    }
    f.removeRows(once);
    QCOMPARE(removed.size(), ranges);
    QCOMPARE(f.model.rowCount(), 10 - static_cast<int>(once.size()));
    for (int row = 0; row < 10; ++row) {
        QCOMPARE(places[size_t(row)].isValid(), !rows.contains(row));
        if (places[size_t(row)].isValid())
            QCOMPARE(places[size_t(row)].data().toString(), names.at(row));
    }
}

void TestTableModel::neighboursAreRightWhileRangesGo() {
    TableFixture f;
    f.addRows(6);
    f.model.reload();
    QStringList seen;
    connect(&f.model, &QAbstractItemModel::rowsRemoved, this, [&] {
        for (int row = 0; row < f.model.rowCount(); ++row)
            seen << f.shown(row, TableColumn::Name);
        seen << QStringLiteral("|");
    });
    f.removeRows({1, 4});
    // After the first of two signals row 1 is gone from the lists, but not from the view yet.
    QCOMPARE(
        seen.join(QLatin1Char(',')).remove(QStringLiteral("movie ")).remove(QStringLiteral(".mp4")),
        QStringLiteral("0,,2,3,5,|,0,2,3,5,|"));
}

void TestTableModel::manyRangesAreOneReset() {
    for (const bool isMany : {false, true}) {
        TableFixture f;
        f.addRows(2 * FileTableModel::mostRanges + 2);
        f.model.reload();
        const Tester tester(&f.model, Tester::FailureReportingMode::QtTest);
        const QSignalSpy reset(&f.model, &QAbstractItemModel::modelReset);
        const QSignalSpy thinned(&f.model, &FileTableModel::thinnedOut);
        std::vector<int> rows;
        for (int i = 0; i < FileTableModel::mostRanges + (isMany ? 1 : 0); ++i)
            rows.push_back(2 * i);
        f.removeRows(rows);
        QCOMPARE(reset.size(), isMany ? 1 : 0);
        QCOMPARE(thinned.size(), isMany ? 1 : 0);
        QCOMPARE(f.model.rowCount(), f.list.rowCount());
        QCOMPARE(f.shown(0, TableColumn::Name), QStringLiteral("movie 1.mp4"));
    }
}

void TestTableModel::aRowChanges() {
    TableFixture f;
    f.addRows(3);
    f.model.reload();
    const QSignalSpy changed(&f.model, &QAbstractItemModel::dataChanged);
    f.model.rowChanged(1);
    f.model.rowChanged(3);
    f.model.rowChanged(-1);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(0).toModelIndex(), f.model.index(1, 0));
    QCOMPARE(changed.first().at(1).toModelIndex(), f.model.index(1, 7));
}

void TestTableModel::anEditAnnouncesTheHeader() {
    TableFixture f;
    f.addRows(2);
    f.model.reload();
    const QSignalSpy header(&f.model, &FileTableModel::headerStateChanged);
    QVERIFY(f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(f.model.setData(f.cell(0, TableColumn::Check), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(header.size(), 2);
    QCOMPARE(header.at(0).at(0).toBool(), false);
    QCOMPARE(header.at(1).at(0).toBool(), true);
    QVERIFY(!f.model.setData(f.cell(0, TableColumn::Name), QStringLiteral("x"), Qt::EditRole));
    QVERIFY(!f.model.setData(f.cell(0, TableColumn::Check), 0, Qt::EditRole));
    QCOMPARE(header.size(), 2);
}

void TestTableModel::anEditIsPutOffByAWait() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        QVERIFY(!f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(f.list.check.at(0), 1);
        isOver = true;
        f.mainThread.wake();
    });
    f.mainThread.waitUntil([&] { return isOver; });
    QTRY_COMPARE(f.list.check.at(0), 0);
}

void TestTableModel::anEditThatWaitedFindsItsRowAgain() {
    TableFixture f;
    f.addRows(3);
    f.model.reload();
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        (void)f.model.setData(f.cell(1, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole);
        (void)f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole);
        f.removeRows({0});
        isOver = true;
        f.mainThread.wake();
    });
    f.mainThread.waitUntil([&] { return isOver; });
    QTRY_COMPARE(f.list.check, (std::vector<int>{0, 1}));
}

void TestTableModel::anEditThatWaitedIsRefusedByARun() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    bool isOver = false;
    QTimer::singleShot(0, this, [&] {
        (void)f.model.setData(f.cell(0, TableColumn::Res), QStringLiteral("960x540"), Qt::EditRole);
        (void)f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole);
        f.state.isConversionRunning = true;
        isOver = true;
        f.mainThread.wake();
    });
    f.mainThread.waitUntil([&] { return isOver; });
    QTRY_COMPARE(f.list.check.at(0), 0);
    QCOMPARE(f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
}

void TestTableModel::anEditIsRefusedUnderABox() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    QDialog box;
    bool isStored = true;
    QTimer::singleShot(0, &box, [&] {
        isStored =
            f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole);
        box.reject();
    });
    box.exec();
    QVERIFY(!isStored);
    QCoreApplication::processEvents();
    QCOMPARE(f.list.check.at(0), 1);
}

void TestTableModel::aClickOnAHeaderIsInert() {
    TableFixture f;
    f.addRows(2);
    f.list.setCheck(1, 0);
    f.model.reload();
    f.model.didClickTableColumn();
    QCOMPARE(f.list.check, (std::vector<int>{1, 0}));
    QCOMPARE(f.cell(1, TableColumn::Check).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
}

REELSHIFT_TEST(tst_table_model, TestTableModel, TableApplication)
#include "tst_table_model.moc"
