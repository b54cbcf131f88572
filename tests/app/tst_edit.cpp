#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

/// Editing in the main window: the table's cells and the main quality list, by hand, by keyboard
/// and through the accessibility tree, before a run and during one.
class TestEdit final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aClickChangesAQuality();
    void f2TypesASize();
    void keysAlone();
    void aSizeThatIsNone();
    void mainListWithCheckedRows();
    void mainListWithASelectedRow();
    void mainListWithNeither();
    void mainListAfterCheckedRowsWereRemoved();
    void mainListByKeyboardCountsOnce();
    void selectingARowIsNoChange();
    void theChosenEncodersSettingsAreUsed();
    void whatIsShownIsWhatIsConverted_data();
    void whatIsShownIsWhatIsConverted();
    void aRunLocksTheCells();
    void aRunLeavesChecksAndSelectionAlone();
    void aRunClosesOpenEditors();
    void aPortraitMovieKeepsItsShape();
    void ownSizesStayWithTheirMovie();
    void theColumnsCellFollowsTheLastRow();

private:
    static QString shownQuality(RunScene& scene, int row) {
        return cell(scene, row, TableColumn::Cmb).data().toString();
    }
    static FileTableView& table(RunScene& scene);
    static QComboBox& mainList(RunScene& scene);
    static QModelIndex cell(RunScene& scene, int row, TableColumn column);
    static void click(RunScene& scene, int row, TableColumn column);
    static void choose(RunScene& scene, int item);
    static QComboBox* editor(RunScene& scene);
    /// Stores a text in a cell as an editor does.
    static bool edit(RunScene& scene, int row, TableColumn column, const QString& typed);
    static QStringList offeredAt(RunScene& scene, int row);
    static void addSmall(RunScene& scene, const QStringList& names);
};

FileTableView& TestEdit::table(RunScene& scene) {
    return *scene.program.window().findChild<FileTableView*>();
}

QComboBox& TestEdit::mainList(RunScene& scene) {
    return *scene.program.window().findChild<QComboBox*>(QStringLiteral("comboBox"));
}

QModelIndex TestEdit::cell(RunScene& scene, int row, TableColumn column) {
    return table(scene).fileModel()->index(row, static_cast<int>(column));
}

void TestEdit::click(RunScene& scene, int row, TableColumn column) {
    QTest::mouseClick(table(scene).viewport(), Qt::LeftButton, {},
                      table(scene).visualRect(cell(scene, row, column)).center());
}

// As the list does it when the user takes one of its items.
void TestEdit::choose(RunScene& scene, int item) {
    mainList(scene).setCurrentIndex(item);
    Q_EMIT mainList(scene).activated(item);
}

QComboBox* TestEdit::editor(RunScene& scene) {
    return qobject_cast<QComboBox*>(table(scene).openedEditor());
}

bool TestEdit::edit(RunScene& scene, int row, TableColumn column, const QString& typed) {
    return table(scene).fileModel()->setData(cell(scene, row, column), typed, Qt::EditRole);
}

/// What the opened editor of a row's size offers.
QStringList TestEdit::offeredAt(RunScene& scene, int row) {
    table(scene).setCurrentIndex(cell(scene, row, TableColumn::Res));
    QTest::keyClick(&table(scene), Qt::Key_F2);
    QStringList offered;
    for (int item = 0; editor(scene) && item < editor(scene)->count(); ++item)
        offered << editor(scene)->itemText(item);
    QTest::keyClick(editor(scene), Qt::Key_Escape);
    return offered;
}

// Movies of 1280x720, which have two sizes to choose from.
void TestEdit::addSmall(RunScene& scene, const QStringList& names) {
    QStringList paths;
    for (const QString& name : names)
        paths << scene.program.movie(name + QStringLiteral(".mp4"))
                     .probe(QStringLiteral("hevc"), QStringLiteral("1280x720"))
                     .write();
    scene.program.add(paths);
}

void TestEdit::aClickChangesAQuality() {
    RunScene scene;
    scene.add({a, b});
    click(scene, 1, TableColumn::Cmb);
    QVERIFY(editor(scene));
    QVERIFY(eventually([&] { return editor(scene)->view()->isVisible(); }));
    QCOMPARE(editor(scene)->count(), 3);
    QTest::keyClick(editor(scene)->view(), Qt::Key_Up);
    QTest::keyClick(editor(scene)->view(), Qt::Key_Return);
    FileList& files = scene.program.files();
    QVERIFY(eventually([&] { return files.cmb.at(1) == files.cmbItems.at(0); }));
    QCOMPARE(files.recordAt(1)->text(key::profile), files.comboBoxItems.at(0));
    QCOMPARE(files.recordAt(0)->text(key::profile), files.comboBoxItems.at(1));
    // Kept: an edit leaves these two alone.
    QCOMPARE(files.recordAt(1)->text(key::cmb), files.cmbItems.at(1));
    QCOMPARE(files.recordAt(1)->text(key::profileForCol), files.cmbItems.at(1));
    QCOMPARE(cell(scene, 1, TableColumn::Cmb).data().toString(), files.cmbItems.at(0));
}

void TestEdit::f2TypesASize() {
    RunScene scene;
    addSmall(scene, {a});
    table(scene).setCurrentIndex(cell(scene, 0, TableColumn::Res));
    QTest::keyClick(&table(scene), Qt::Key_F2);
    QVERIFY(editor(scene));
    QTest::keyClicks(editor(scene)->lineEdit(), QStringLiteral("800x600"));
    QTest::keyClick(editor(scene), Qt::Key_Return);
    QVERIFY(eventually([&] { return !editor(scene); }));
    FileList& files = scene.program.files();
    QCOMPARE(files.resolutionListForTable.at(0), QStringLiteral("800x600"));
    QCOMPARE(files.recordAt(0)->text(key::resolution), QStringLiteral("800x600"));
}

void TestEdit::keysAlone() {
    RunScene scene;
    addSmall(scene, {a, b});
    table(scene).setFocus();
    table(scene).setCurrentIndex(cell(scene, 0, TableColumn::Check));
    QTest::keyClick(&table(scene), Qt::Key_Down);
    QTest::keyClick(&table(scene), Qt::Key_Space);
    FileList& files = scene.program.files();
    QCOMPARE(files.check, (std::vector<int>{1, 0}));
    QVERIFY(!table(scene).btnSelectAll()->isChecked());
    QTest::keyClick(&table(scene), Qt::Key_Space);
    QVERIFY(table(scene).btnSelectAll()->isChecked());
    while (table(scene).currentIndex().column() != static_cast<int>(TableColumn::Res))
        QTest::keyClick(&table(scene), Qt::Key_Right);
    QTest::keyClick(&table(scene), Qt::Key_Return);
    QVERIFY(editor(scene));
    QVERIFY(eventually([&] { return editor(scene)->view()->isVisible(); }));
    QTest::keyClick(editor(scene)->view(), Qt::Key_Down);
    QTest::keyClick(editor(scene)->view(), Qt::Key_Return);
    QVERIFY(eventually([&] { return files.resolutionListForTable.at(1) == half; }));
    QCOMPARE(files.recordAt(1)->text(key::resolution), half);
    QCOMPARE(files.recordAt(0)->text(key::resolution), QStringLiteral("1280x720"));
}

void TestEdit::aSizeThatIsNone() {
    RunScene scene;
    addSmall(scene, {a});
    for (const char* typed :
         {"", "x", "12x", "x12", "12", "12 x 12", "-2x4", "12x12x12", "axb", "12x12\n"})
        QVERIFY2(!edit(scene, 0, TableColumn::Res, QString::fromLatin1(typed)), typed);
    QCOMPARE(scene.program.files().resolutionListForTable.at(0), QStringLiteral("1280x720"));
    QVERIFY(edit(scene, 0, TableColumn::Res, QStringLiteral("12x12")));
}

void TestEdit::mainListWithCheckedRows() {
    RunScene scene;
    scene.add({a, b, c});
    QVERIFY(table(scene).fileModel()->setData(cell(scene, 1, TableColumn::Check), Qt::Unchecked,
                                              Qt::CheckStateRole));
    table(scene).selectRow(1);
    choose(scene, 2);
    FileList& files = scene.program.files();
    for (const int row : {0, 1, 2}) {
        const int item = row == 1 ? 1 : 2;
        QCOMPARE(files.recordAt(row)->text(key::profile), files.comboBoxItems.at(item));
        QCOMPARE(files.recordAt(row)->text(key::cmb), files.cmbItems.at(item));
        QCOMPARE(files.recordAt(row)->text(key::profileForCol), files.cmbItems.at(item));
        QCOMPARE(files.cmb.at(row), files.cmbItems.at(item));
        QCOMPARE(cell(scene, row, TableColumn::Cmb).data().toString(), files.cmbItems.at(item));
    }
}

// Kept: without a checked row the selected one's profile changes, and what is shown does not.
void TestEdit::mainListWithASelectedRow() {
    RunScene scene;
    scene.add({a, b});
    table(scene).btnSelectAll()->click();
    table(scene).selectRow(1);
    choose(scene, 0);
    FileList& files = scene.program.files();
    QCOMPARE(files.recordAt(1)->text(key::profile), files.comboBoxItems.at(0));
    QCOMPARE(files.recordAt(1)->text(key::cmb), files.cmbItems.at(1));
    QCOMPARE(files.recordAt(1)->text(key::profileForCol), files.cmbItems.at(1));
    QCOMPARE(files.cmb.at(1), files.cmbItems.at(1));
    QCOMPARE(files.recordAt(0)->text(key::profile), files.comboBoxItems.at(1));
}

void TestEdit::mainListWithNeither() {
    RunScene scene;
    scene.add({a, b});
    table(scene).btnSelectAll()->click();
    table(scene).clearSelection();
    choose(scene, 0);
    for (const int row : {0, 1})
        QCOMPARE(scene.program.files().recordAt(row)->text(key::profile),
                 scene.program.files().comboBoxItems.at(1));
}

// `count` is stale then, and so is larger than the list.
void TestEdit::mainListAfterCheckedRowsWereRemoved() {
    RunScene scene;
    scene.add({a, b, c});
    table(scene).btnSelectAll()->click();
    table(scene).fileModel()->setData(cell(scene, 0, TableColumn::Check), Qt::Checked,
                                      Qt::CheckStateRole);
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.program.state().count, 3);
    table(scene).btnSelectAll()->click();
    QCOMPARE(scene.program.state().count, 3);
    choose(scene, 2);
    FileList& files = scene.program.files();
    for (const int row : {0, 1}) {
        QCOMPARE(files.recordAt(row)->text(key::profile), files.comboBoxItems.at(2));
        QCOMPARE(files.cmb.at(row), files.cmbItems.at(2));
    }
}

void TestEdit::mainListByKeyboardCountsOnce() {
    RunScene scene;
    scene.add({a});
    table(scene).selectRow(0);
    QComboBox& list = mainList(scene);
    QCOMPARE(list.currentIndex(), 1);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(list.currentIndex(), 2);
    QCOMPARE(scene.program.files().cmb.at(0), scene.program.files().cmbItems.at(2));
}

void TestEdit::selectingARowIsNoChange() {
    RunScene scene;
    scene.add({a, b});
    FileList& files = scene.program.files();
    QVERIFY(edit(scene, 0, TableColumn::Cmb, files.cmbItems.at(2)));
    QVERIFY(edit(scene, 1, TableColumn::Cmb, files.cmbItems.at(0)));
    click(scene, 0, TableColumn::Name);
    QCOMPARE(mainList(scene).currentText(), files.comboBoxItems.at(2));
    click(scene, 1, TableColumn::Name);
    QCOMPARE(mainList(scene).currentText(), files.comboBoxItems.at(0));
    QCOMPARE(files.cmb, (QStringList{files.cmbItems.at(2), files.cmbItems.at(0)}));
    QCOMPARE(files.recordAt(0)->text(key::profile), files.comboBoxItems.at(2));
}

void TestEdit::theChosenEncodersSettingsAreUsed() {
    RunScene scene;
    addSmall(scene, {a});
    FileList& files = scene.program.files();
    QVERIFY(edit(scene, 0, TableColumn::Cmb, files.cmbItems.at(0)));
    QVERIFY(edit(scene, 0, TableColumn::Res, half));
    scene.program.click("btnConvertFile");
    QVERIFY(scene.end({}));
    const QStringList arguments = scene.program.encodes().first().arguments;
    QVERIFY(arguments.contains(QStringLiteral("scale=640:360")));
    QCOMPARE(arguments.at(arguments.indexOf(QStringLiteral("-crf")) + 1), QStringLiteral("7"));
    QCOMPARE(arguments.last(), scene.program.output(QStringLiteral("a_Pro_640x360.mp4")));
}

void TestEdit::whatIsShownIsWhatIsConverted_data() {
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("crf");
    QTest::newRow("Pro") << 0 << QStringLiteral("7");
    QTest::newRow("Normal") << 2 << QStringLiteral("23");
}

// Both ways leave the list beside the records behind the record that is converted.
void TestEdit::whatIsShownIsWhatIsConverted() {
    QFETCH(const int, item);
    QFETCH(const QString, crf);
    RunScene scene;
    scene.add({a, b});
    FileList& files = scene.program.files();
    const QString chosen = files.cmbItems.at(item);
    // The list of qualities with a selected row and nothing checked.
    table(scene).btnSelectAll()->click();
    table(scene).selectRow(0);
    choose(scene, item);
    QCOMPARE(shownQuality(scene, 0), chosen);
    QCOMPARE(files.cmb.at(0), files.cmbItems.at(1));
    // A movie that is rejected below a row whose quality was changed.
    table(scene).btnSelectAll()->click();
    choose(scene, item);
    scene.program.boxes.promise(1000);
    scene.program.add(
        {scene.program.movie(QStringLiteral("c.mp4")).probe(QStringLiteral("h264")).write()});
    QCOMPARE(files.cmb, (QStringList{chosen, files.cmbItems.at(1)}));
    QCOMPARE(shownQuality(scene, 0), chosen);
    QCOMPARE(shownQuality(scene, 1), chosen);
    QVERIFY(scene.begin());
    QVERIFY(scene.end({a, b}));
    const QList<EncoderStart> encodes = scene.program.encodes();
    QCOMPARE(encodes.size(), 2);
    for (const EncoderStart& each : encodes)
        QCOMPARE(each.arguments.value(each.arguments.indexOf(QStringLiteral("-crf")) + 1), crf);
}

void TestEdit::aRunLocksTheCells() {
    RunScene scene;
    addSmall(scene, {b});
    scene.add({a});
    const auto isEnabled = [&](TableColumn column) {
        return (cell(scene, 0, column).flags() & Qt::ItemIsEnabled) != 0;
    };
    QVERIFY(isEnabled(TableColumn::Cmb) && isEnabled(TableColumn::Res));
    scene.program.click("btnConvertFile");
    // At once, before anything was painted.
    QVERIFY(!isEnabled(TableColumn::Cmb) && !isEnabled(TableColumn::Res));
    QVERIFY(isEnabled(TableColumn::Check) && isEnabled(TableColumn::Im));
    QVERIFY(!mainList(scene).isEnabled());
    FileList& files = scene.program.files();
    const QStringList sizes = files.resolutionListForTable;
    const QStringList qualities = files.cmb;
    QVERIFY(!edit(scene, 0, TableColumn::Res, half));
    QVERIFY(!edit(scene, 0, TableColumn::Cmb, files.cmbItems.at(2)));
    QAccessible::queryAccessibleInterface(&table(scene))
        ->tableInterface()
        ->cellAt(0, static_cast<int>(TableColumn::Res))
        ->setText(QAccessible::Value, half);
    click(scene, 0, TableColumn::Res);
    QVERIFY(!editor(scene));
    table(scene).setCurrentIndex(cell(scene, 0, TableColumn::Cmb));
    QTest::keyClick(&table(scene), Qt::Key_F2);
    QVERIFY(!editor(scene));
    QCOMPARE(files.resolutionListForTable, sizes);
    QCOMPARE(files.cmb, qualities);
    QVERIFY(scene.end({a}));
    scene.add({c});
    QVERIFY(isEnabled(TableColumn::Cmb) && isEnabled(TableColumn::Res));
}

void TestEdit::aRunLeavesChecksAndSelectionAlone() {
    RunScene scene;
    scene.add({a, b});
    table(scene).selectRow(1);
    QVERIFY(scene.begin());
    QCOMPARE(table(scene).selectedRow(), 1); // no reload has lost it
    click(scene, 1, TableColumn::Check);
    QCOMPARE(scene.program.files().check, (std::vector<int>{1, 0}));
    QCOMPARE(scene.program.files().recordAt(1)->number(key::check), 0);
    QVERIFY(!table(scene).btnSelectAll()->isChecked());
    click(scene, 0, TableColumn::Name);
    QCOMPARE(table(scene).selectedRow(), 0);
    scene.go(a, 1);
    QVERIFY(scene.waitForPercent(0, 20));
    QCOMPARE(table(scene).selectedRow(), 0);
    // Unchecked or not, it is converted.
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(b));
}

void TestEdit::aRunClosesOpenEditors() {
    RunScene scene;
    addSmall(scene, {a});
    table(scene).setCurrentIndex(cell(scene, 0, TableColumn::Res));
    QTest::keyClick(&table(scene), Qt::Key_F2);
    QVERIFY(editor(scene));
    editor(scene)->setEditText(half);
    scene.program.click("btnConvertFile");
    QVERIFY(!editor(scene));
    // What was typed before the run counts for it.
    QCOMPARE(scene.program.files().resolutionListForTable.at(0), half);
    QVERIFY(scene.end({}));
    QVERIFY(scene.program.encodes().first().arguments.contains(QStringLiteral("scale=640:360")));
}

void TestEdit::aPortraitMovieKeepsItsShape() {
    RunScene scene;
    QStringList paths;
    for (const QString& name : {a, b, c})
        paths << scene.program.movie(name + QStringLiteral(".mp4"))
                     .probe(QStringLiteral("hevc"), QStringLiteral("720x1280"))
                     .write();
    scene.program.add(paths);
    const QString whole = QStringLiteral("720x1280");
    for (const int row : {0, 1, 2}) {
        QCOMPARE(cell(scene, row, TableColumn::Res).data().toString(), whole);
        QCOMPARE(offeredAt(scene, row), (QStringList{whole, QStringLiteral("360x640")}));
    }
    // One stays, one is halved, one is typed.
    click(scene, 1, TableColumn::Res);
    QVERIFY(editor(scene));
    QVERIFY(eventually([&] { return editor(scene)->view()->isVisible(); }));
    QTest::keyClick(editor(scene)->view(), Qt::Key_Down);
    QTest::keyClick(editor(scene)->view(), Qt::Key_Return);
    FileList& files = scene.program.files();
    QVERIFY(eventually(
        [&] { return files.resolutionListForTable.at(1) == QStringLiteral("360x640"); }));
    QVERIFY(edit(scene, 2, TableColumn::Res, QStringLiteral("180x320")));
    scene.program.click("btnConvertFile");
    QVERIFY(scene.end({}));
    const QList<EncoderStart> encodes = scene.program.encodes();
    const auto isFor = [&](int at, const QString& output, const char* scale) {
        return encodes.value(at).arguments.contains(QString::fromLatin1(scale)) &&
               QFile::exists(scene.program.output(output));
    };
    QCOMPARE(encodes.size(), 3);
    QVERIFY(isFor(0, QStringLiteral("a_HQ_720x1280.mp4"), "scale=720:1280"));
    QVERIFY(isFor(1, QStringLiteral("b_HQ_360x640.mp4"), "scale=360:640"));
    QVERIFY(isFor(2, QStringLiteral("c_HQ_180x320.mp4"), "scale=180:320"));
}

void TestEdit::ownSizesStayWithTheirMovie() {
    RunScene scene;
    QStringList paths;
    for (const char* size : {"1920x1080", "720x1280", "640x360"})
        paths << scene.program.movie(QString::fromLatin1(size) + QStringLiteral(".mp4"))
                     .probe(QStringLiteral("hevc"), QString::fromLatin1(size))
                     .write();
    scene.program.add(paths);
    const QStringList portrait{QStringLiteral("720x1280"), QStringLiteral("360x640")};
    const QStringList small{QStringLiteral("640x360"), QStringLiteral("320x180")};
    QCOMPARE(offeredAt(scene, 1), portrait);
    QCOMPARE(offeredAt(scene, 2), small);
    const FileTableSource& source = table(scene).fileModel()->source();
    QCOMPARE(source.updateResolutionCell({}), small);
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.files().rowCount(), 2);
    QCOMPARE(offeredAt(scene, 0), portrait);
    QCOMPARE(cell(scene, 0, TableColumn::Res).data().toString(), portrait.first());
    // The records alone are moved; the shown sizes follow with the next add.
    scene.program.files().moveRecords({1}, 0);
    QCOMPARE(offeredAt(scene, 0), small);
    QCOMPARE(source.updateResolutionCell({}), portrait);
}

// Nothing calls it: each row has sizes of its own.
void TestEdit::theColumnsCellFollowsTheLastRow() {
    RunScene scene;
    scene.add({a});
    addSmall(scene, {b});
    const FileTableSource& source = table(scene).fileModel()->source();
    const QStringList before{QStringLiteral("before")};
    FileList& files = scene.program.files();
    QCOMPARE(source.updateResolutionCell(before), (QStringList{QStringLiteral("1280x720"), half}));
    files.recordAt(1)->set(key::resolutionID, 6); // leaves the cell as it is
    QCOMPARE(source.updateResolutionCell(before), QStringList{QStringLiteral("640x480")});
    files.recordAt(0)->set(key::resolutionID, -1);
    QCOMPARE(source.updateResolutionCell(before), before);
}

REELSHIFT_TEST(tst_edit, TestEdit, QApplication)
#include "tst_edit.moc"
