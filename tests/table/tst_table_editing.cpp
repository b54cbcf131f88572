#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "table/TableApplication.h"
#include "table/TableFixture.h"

#include <QTest>

#include <stdexcept>

class TestTableEditing final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCheckIsStoredInListAndRecord();
    void headerFollowsTheRows();
    void aQualityIsStoredAndItsProfileFollows_data();
    void aQualityIsStoredAndItsProfileFollows();
    void aSizeIsStoredInListAndRecord();
    void anotherColumnStoresNothingButRefreshes();
    void afterAReorderListsKeepTheirPlaces();
    void aRowOutOfRangeEndsTheEdit();
    void pictureSizes_data();
    void pictureSizes();
    void mainListChangesCheckedRowsOnly();
    void mainListWithNothingCheckedChangesTheSelectedProfileAlone();
    void mainListWithNothingCheckedOrSelectedChangesNothing();
    void mainListStartsAtTheSmallerOfCountAndRows_data();
    void mainListStartsAtTheSmallerOfCountAndRows();
    void aShortProfileNameEndsTheChange();
    void answersOfTheDataSource();
    void nameIsAnsweredFromAListThatIsNeverFilled();
    void offeredSizes_data();
    void offeredSizes();
    void lockOfARun();
};

void TestTableEditing::aCheckIsStoredInListAndRecord() {
    TableFixture f;
    f.addRows(2);
    f.editing.storeEdit(column::check, 0, 1);
    QCOMPARE(f.list.check, (std::vector<int>{1, 0}));
    QCOMPARE(f.list.recordAt(0)->number(key::check), 1);
    QCOMPARE(f.list.recordAt(1)->number(key::check), 0);
}

void TestTableEditing::headerFollowsTheRows() {
    TableFixture f;
    f.addRows(3);
    QCOMPARE(f.editing.storeEdit(column::check, 0, 1), std::optional<bool>(false));
    QCOMPARE(f.editing.storeEdit(column::check, 1, 1), std::optional<bool>(true));
    TableFixture empty;
    QVERIFY(!empty.editing.storeEdit(column::name, {}, 0).has_value());
    QVERIFY(!empty.list.allChecked());
    QCOMPARE(empty.model.source().numberOfRowsInTableView(), 0);
}

void TestTableEditing::aQualityIsStoredAndItsProfileFollows_data() {
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("profile");
    const TableFixture f;
    QTest::newRow("first") << 0 << f.list.cmbItems.at(0) << 0;
    QTest::newRow("second") << 1 << f.list.cmbItems.at(1) << 1;
    QTest::newRow("third") << 2 << f.list.cmbItems.at(2) << 2;
    QTest::newRow("any other") << -1 << QStringLiteral("typed") << 0;
}

void TestTableEditing::aQualityIsStoredAndItsProfileFollows() {
    QFETCH(QString, text);
    QFETCH(int, profile);
    TableFixture f;
    f.addRows(2);
    f.state.count = 7;
    f.editing.storeEdit(column::cmb, text, 1);
    QCOMPARE(f.list.cmb.at(1), text);
    QCOMPARE(f.list.recordAt(1)->text(key::profile), f.list.comboBoxItems.at(profile));
    QCOMPARE(f.state.count, 2);
    // Kept: these two of the record stay; the table shows what it is converted in all the same.
    QCOMPARE(f.list.recordAt(1)->text(key::cmb), f.list.cmbItems.at(1));
    QCOMPARE(f.list.recordAt(1)->text(key::profileForCol), f.list.cmbItems.at(1));
    f.model.reload();
    QCOMPARE(f.shown(1, TableColumn::Cmb), f.list.cmbItems.at(profile));
}

void TestTableEditing::aSizeIsStoredInListAndRecord() {
    TableFixture f;
    f.addRows(2);
    f.editing.storeEdit(column::res, QStringLiteral("960x540"), 0);
    QCOMPARE(f.list.resolutionListForTable.at(0), QStringLiteral("960x540"));
    QCOMPARE(f.list.recordAt(0)->text(key::resolution), QStringLiteral("960x540"));
    QCOMPARE(f.list.recordAt(1)->text(key::resolution), QStringLiteral("1920x1080"));
}

void TestTableEditing::anotherColumnStoresNothingButRefreshes() {
    TableFixture f;
    f.addRows(2);
    f.list.setCheck(0, 0);
    f.state.count = 0;
    QCOMPARE(f.editing.storeEdit(column::duration, QStringLiteral("x"), 0),
             std::optional<bool>(false));
    QCOMPARE(f.list.recordAt(0)->number(key::check), 0);
    QCOMPARE(f.list.recordAt(0)->text(key::duration), QStringLiteral("00:01:23.45"));
    QCOMPARE(f.state.count, 2);
}

void TestTableEditing::afterAReorderListsKeepTheirPlaces() {
    TableFixture f;
    f.addRows(2);
    f.list.setResolution(0, QStringLiteral("960x540"));
    f.list.moveRecords({1}, 0);
    f.editing.storeEdit(column::check, 0, 0);
    // Kept: a reorder moves the records alone, so the lists speak about the rows' places.
    QCOMPARE(f.list.fileInfoArr[0]->text(key::name), QStringLiteral("movie 1.mp4"));
    QCOMPARE(f.list.fileInfoArr[0]->number(key::check), 0);
    QCOMPARE(f.list.fileInfoArr[0]->text(key::resolution), QStringLiteral("960x540"));
}

void TestTableEditing::aRowOutOfRangeEndsTheEdit() {
    TableFixture f;
    f.addRows(1);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, f.editing.storeEdit(column::check, 0, 1));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, f.editing.storeEdit(column::res, QString(), -1));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, f.editing.storeEdit(column::cmb, QString(), 1));
    QCOMPARE(f.list.check, (std::vector<int>{1}));
}

void TestTableEditing::pictureSizes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isSize");
    for (const char* const good : {"1920x1080", "1x1", "640x480"})
        QTest::newRow(good) << QString::fromLatin1(good) << true;
    for (const char* const bad : {"", "x", "1920", "1920x", "x1080", "1920X1080", "1920 x 1080",
                                  "-1x5", "1920x1080 ", "1920x1080\n", "axb", "1x2x3"})
        QTest::newRow(bad) << QString::fromLatin1(bad) << false;
    QTest::newRow("other digits") << QStringLiteral(u"\u0661x\u0662") << false;
}

void TestTableEditing::pictureSizes() {
    QFETCH(QString, text);
    QFETCH(bool, isSize);
    QCOMPARE(TableEditing::isPictureSize(text), isSize);
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    QCOMPARE(f.model.setData(f.cell(0, TableColumn::Res), text, Qt::EditRole), isSize);
    QCOMPARE(f.shown(0, TableColumn::Res), isSize ? text : QStringLiteral("1920x1080"));
}

void TestTableEditing::mainListChangesCheckedRowsOnly() {
    TableFixture f;
    f.addRows(3);
    f.list.setCheck(1, 0);
    f.editing.comboBoxSelectionDidChange(2, 1);
    for (const int row : {0, 2}) {
        QCOMPARE(f.list.recordAt(row)->text(key::profile), f.list.comboBoxItems.at(2));
        QCOMPARE(f.list.recordAt(row)->text(key::cmb), f.list.cmbItems.at(2));
        QCOMPARE(f.list.recordAt(row)->text(key::profileForCol), f.list.cmbItems.at(2));
        QCOMPARE(f.list.cmb.at(row), f.list.cmbItems.at(2));
    }
    QCOMPARE(f.list.recordAt(1)->text(key::profile), f.list.comboBoxItems.at(1));
    QCOMPARE(f.list.cmb.at(1), f.list.cmbItems.at(1));
}

void TestTableEditing::mainListWithNothingCheckedChangesTheSelectedProfileAlone() {
    TableFixture f;
    f.addRows(2);
    f.list.setCheck(0, 0);
    f.list.setCheck(1, 0);
    f.editing.comboBoxSelectionDidChange(0, 1);
    QCOMPARE(f.list.recordAt(1)->text(key::profile), f.list.comboBoxItems.at(0));
    // Kept: unlike a checked row's, the selected one's other texts stay; what is shown does not.
    QCOMPARE(f.list.recordAt(1)->text(key::cmb), f.list.cmbItems.at(1));
    QCOMPARE(f.list.recordAt(1)->text(key::profileForCol), f.list.cmbItems.at(1));
    QCOMPARE(f.list.cmb.at(1), f.list.cmbItems.at(1));
    f.model.reload();
    QCOMPARE(f.shown(1, TableColumn::Cmb), f.list.cmbItems.at(0));
    QCOMPARE(f.shown(0, TableColumn::Cmb), f.list.cmbItems.at(1));
    QCOMPARE(f.list.recordAt(0)->text(key::profile), f.list.comboBoxItems.at(1));
}

void TestTableEditing::mainListWithNothingCheckedOrSelectedChangesNothing() {
    TableFixture f;
    f.addRows(2);
    f.list.setCheck(0, 0);
    f.list.setCheck(1, 0);
    f.editing.comboBoxSelectionDidChange(0, -1);
    for (const int row : {0, 1}) {
        QCOMPARE(f.list.recordAt(row)->text(key::profile), f.list.comboBoxItems.at(1));
        QCOMPARE(f.list.cmb.at(row), f.list.cmbItems.at(1));
    }
}

void TestTableEditing::mainListStartsAtTheSmallerOfCountAndRows_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("changed");
    QTest::newRow("stale after checked rows were removed") << 9 << 3;
    QTest::newRow("equal") << 3 << 3;
    QTest::newRow("behind") << 2 << 2;
    QTest::newRow("zero") << 0 << 0;
}

void TestTableEditing::mainListStartsAtTheSmallerOfCountAndRows() {
    QFETCH(int, count);
    QFETCH(int, changed);
    TableFixture f;
    f.addRows(3);
    f.state.count = count;
    f.editing.comboBoxSelectionDidChange(0, -1);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(f.list.cmb.at(row), f.list.cmbItems.at(row < changed ? 0 : 1));
}

void TestTableEditing::aShortProfileNameEndsTheChange() {
    TableFixture f;
    f.addRows(1);
    QStringList profiles = f.list.comboBoxItems;
    profiles[2] = QStringLiteral("H.264 LV");
    f.list.setQualities(profiles, f.list.cmbItems);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, f.editing.comboBoxSelectionDidChange(2, -1));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, f.editing.comboBoxSelectionDidChange(3, -1));
    QCOMPARE(f.list.cmb.at(0), f.list.cmbItems.at(1));
}

void TestTableEditing::answersOfTheDataSource() {
    TableFixture f;
    f.addRows(2);
    f.list.progressObjects[1]->incrementStep(42);
    f.list.setCheck(1, 0);
    const FileTableSource& source = f.model.source();
    QCOMPARE(source.numberOfRowsInTableView(), 2);
    QCOMPARE(source.objectValueForTableColumn(column::progress, 1).toString(),
             QStringLiteral("42"));
    QCOMPARE(source.objectValueForTableColumn(column::check, 1).toInt(), 0);
    QCOMPARE(source.objectValueForTableColumn(column::res, 0).toString(),
             QStringLiteral("1920x1080"));
    QVERIFY(!source.objectValueForTableColumn(column::im, 0).isValid());
    QVERIFY(!source.objectValueForTableColumn(column::cmb, 0).isValid());
    QVERIFY(!source.objectValueForTableColumn(column::duration, 0).isValid());
    QVERIFY(source.shouldSelectRow(0));
    QVERIFY(source.shouldSelectRow(1));
    QVERIFY(!source.shouldSelectRow(2));
    QVERIFY(!source.shouldSelectRow(-1));
    QCOMPARE(source.numberOfItemsInComboBox(), 3);
    QCOMPARE(source.comboBoxObjectValueForItemAtIndex(true, 1), f.list.comboBoxItems.at(1));
    QVERIFY(source.comboBoxObjectValueForItemAtIndex(false, 1).isNull());
    QCOMPARE(FileTableSource::willDisplayCellImage(column::check),
             QStringLiteral("table_pause.png"));
    QVERIFY(FileTableSource::willDisplayCellImage(column::im).isEmpty());
    QVERIFY_THROWS_EXCEPTION(std::out_of_range,
                             (void)source.objectValueForTableColumn(column::check, 2));
}

void TestTableEditing::nameIsAnsweredFromAListThatIsNeverFilled() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    QVERIFY_THROWS_EXCEPTION(std::out_of_range,
                             (void)f.model.source().objectValueForTableColumn(column::name, 0));
    QCOMPARE(f.shown(0, TableColumn::Name), QStringLiteral("movie 0.mp4"));
}

void TestTableEditing::offeredSizes_data() {
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("sizes");
    QTest::newRow("0") << 0 << "3840x2160;1920x1080;960x540";
    QTest::newRow("1") << 1 << "4096x2160;2048x1080;1024x540";
    QTest::newRow("2") << 2 << "2560x1440;1280x720";
    QTest::newRow("3") << 3 << "1920x1080;960x540";
    QTest::newRow("4") << 4 << "1280x720;640x360";
    QTest::newRow("5") << 5 << "640x480";
    QTest::newRow("6") << 6 << "";
    QTest::newRow("-1") << -1 << "720x1280;360x640";
}

void TestTableEditing::offeredSizes() {
    QFETCH(int, id);
    QFETCH(QString, sizes);
    TableFixture f;
    f.addRows(1);
    f.list.recordAt(0)->set(key::resolutionID, id);
    // Only a movie whose size selects none of the lists is asked for its own.
    f.list.recordAt(0)->set(key::ownSizes,
                            QStringList{QStringLiteral("720x1280"), QStringLiteral("360x640")});
    QCOMPARE(f.model.source().dataCellForTableColumn(column::res, 0),
             sizes.split(QLatin1Char(';'), Qt::SkipEmptyParts));
    QCOMPARE(f.model.source().dataCellForTableColumn(column::res, 1), QStringList());
    QCOMPARE(f.model.source().dataCellForTableColumn(column::cmb, 0), f.list.cmbItems);
}

void TestTableEditing::lockOfARun() {
    TableFixture f;
    f.addRows(1);
    f.model.reload();
    for (const bool isRunning : {true, false}) {
        f.state.isConversionRunning = isRunning;
        for (int i = 0; i < tableColumnCount; ++i) {
            const auto column = static_cast<TableColumn>(i);
            const bool isLocked =
                isRunning && (column == TableColumn::Res || column == TableColumn::Cmb);
            QCOMPARE(f.model.source().willDisplayCellEnabled(identifierOf(column)), !isLocked);
            QCOMPARE(bool(f.cell(0, column).flags() & Qt::ItemIsEnabled), !isLocked);
            QVERIFY(f.cell(0, column).flags() & Qt::ItemIsSelectable);
        }
    }
    f.state.isConversionRunning = true;
    QVERIFY(!f.model.setData(f.cell(0, TableColumn::Res), QStringLiteral("960x540"), Qt::EditRole));
    QVERIFY(!f.model.setData(f.cell(0, TableColumn::Cmb), f.list.cmbItems.at(0), Qt::EditRole));
    QVERIFY(f.model.setData(f.cell(0, TableColumn::Check), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(f.list.resolutionListForTable.at(0), QStringLiteral("1920x1080"));
    QCOMPARE(f.list.cmb.at(0), f.list.cmbItems.at(1));
    QCOMPARE(f.list.check.at(0), 0);
}

REELSHIFT_TEST(tst_table_editing, TestTableEditing, TableApplication)
#include "tst_table_editing.moc"
