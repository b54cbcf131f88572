#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "filelist/ProgressObject.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QTest>

namespace {

QString caption(int rows) {
    return text("IDS_TXT_FILELIST") + QStringLiteral("  (%1)").arg(rows);
}

} // namespace

/// Removing rows by Remove File and by their own buttons, and checking all of them.
class TestRemove final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void checkedRowsGo();
    void nothingChecked();
    void everyRow();
    void countStaysStaleAfterRemoveFileAlone();
    void theButtonOfAWaitingRow();
    void theButtonOfTheLastRow();
    void theButtonOfAPausedWaitRow();
    void theButtonOfARowInNoKnownState();
    void theButtonOfARowThatIsNotThere();
    void theConvertedRowOfTheIndex();
    void aWaitingRowsFileIsLeftAlone();
    void selectAllFollowsTheHeaderBox();
    void selectAllDuringARun();
    void selectAllOfAnEmptyList();

private:
    static QCheckBox* header(RunScene& scene);
    static QWidget* removeButton(RunScene& scene);
    static void check(RunScene& scene, const std::vector<int>& rows);
    /// Removes a row by its button or as the only checked one.
    static void removeRow(RunScene& scene, int row, bool byButton);
};

QCheckBox* TestRemove::header(RunScene& scene) {
    return scene.program.window().findChild<FileTableView*>()->btnSelectAll();
}

QWidget* TestRemove::removeButton(RunScene& scene) {
    return scene.program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"));
}

void TestRemove::check(RunScene& scene, const std::vector<int>& rows) {
    FileTableModel* const model = scene.program.window().findChild<FileTableView*>()->fileModel();
    for (int row = 0; row < model->rowCount(); ++row) {
        const bool isChecked = std::find(rows.begin(), rows.end(), row) != rows.end();
        QVERIFY(model->setData(model->index(row, 0), isChecked ? Qt::Checked : Qt::Unchecked,
                               Qt::CheckStateRole));
    }
}

void TestRemove::removeRow(RunScene& scene, int row, bool byButton) {
    if (byButton) {
        scene.program.clickRowButton(row);
        return;
    }
    check(scene, {row});
    scene.program.click("btnRemoveFile");
}

void TestRemove::checkedRowsGo() {
    RunScene scene;
    scene.add({a, b, c});
    check(scene, {0, 2});
    const int id = scene.program.files().idList[1];
    const auto progress = scene.program.files().progressObjects[1];
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.isInStep());
    QCOMPARE(scene.program.files().idList, std::vector<int>{id});
    QCOMPARE(scene.program.files().progressObjects[0], progress);
    QCOMPARE(scene.program.state().fileCountStr, caption(1));
    QVERIFY(removeButton(scene)->isEnabled());
    QVERIFY(scene.program.boxes.seen.isEmpty()); // nothing is asked
}

void TestRemove::nothingChecked() {
    RunScene scene;
    scene.add({a, b});
    check(scene, {});
    scene.program.state().fileCountStr.clear();
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QCOMPARE(scene.program.state().fileCountStr, caption(2));
}

void TestRemove::everyRow() {
    RunScene scene;
    scene.add({a, b, c});
    QVERIFY(header(scene)->isChecked());
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.isInStep());
    QVERIFY(!removeButton(scene)->isEnabled());
    QVERIFY(!header(scene)->isChecked());
    QCOMPARE(scene.program.state().fileCountStr, caption(0));
    QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::noRow);
    scene.add({d});
    QVERIFY(removeButton(scene)->isEnabled());
    QVERIFY(header(scene)->isChecked());
}

// Kept: Remove File leaves `count` alone, a row's button does not.
void TestRemove::countStaysStaleAfterRemoveFileAlone() {
    RunScene scene;
    scene.add({a, b, c, d});
    const SharedState& state = scene.program.state();
    QCOMPARE(state.count, 4);
    removeRow(scene, 0, false);
    QCOMPARE(state.count, 4);
    QCOMPARE(state.fileCountStr, caption(3));
    removeRow(scene, 0, true);
    QCOMPARE(state.count, 2);
    QCOMPARE(state.fileCountStr, caption(2));
}

void TestRemove::theButtonOfAWaitingRow() {
    RunScene scene;
    scene.add({a, b, c});
    const auto progress = scene.program.files().progressObjects[1];
    progress->changestat(QStringLiteral("something"));
    scene.program.clickRowButton(1);
    QCOMPARE(scene.names(), (QStringList{a, c}));
    QVERIFY(scene.isInStep());
    QCOMPARE(progress->statusString(), QString());
    QCOMPARE(scene.program.state().count, 2);
    QCOMPARE(scene.program.state().fileCountStr, caption(2));
    QVERIFY(removeButton(scene)->isEnabled());
}

void TestRemove::theButtonOfTheLastRow() {
    RunScene scene;
    scene.add({a});
    QVERIFY(header(scene)->isChecked());
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(!removeButton(scene)->isEnabled());
    QVERIFY(!header(scene)->isChecked());
    QCOMPARE(scene.program.state().fileCountStr, caption(0));
}

void TestRemove::theButtonOfAPausedWaitRow() {
    RunScene scene;
    scene.add({a, b});
    scene.program.files().recordAt(0)->set(key::status, status::STATPW);
    scene.program.state().noOfconvertingFileList.add(scene.program.files().idList[0]);
    scene.program.clickRowButton(0);
    QCOMPARE(scene.names(), QStringList{b});
    // Kept: only a waiting row, and one converted in this run, is counted out.
    QVERIFY(!scene.program.state().noOfconvertingFileList.isEmpty());
}

void TestRemove::theButtonOfARowInNoKnownState() {
    RunScene scene;
    scene.add({a});
    for (const QString& status : {status::STATCR, status::STATFL, QString()}) {
        scene.program.files().recordAt(0)->set(key::status, status);
        scene.program.clickRowButton(0);
        QCOMPARE(scene.names(), QStringList{a});
        QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::noRow);
    }
}

void TestRemove::theButtonOfARowThatIsNotThere() {
    RunScene scene;
    scene.add({a, b});
    for (const int row : {-1, 2, 4711})
        scene.program.clickRowButton(row); // logged, and nothing more
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QVERIFY(scene.isInStep());
    QVERIFY(scene.begin());
    QVERIFY(scene.end({a, b}));
}

void TestRemove::theConvertedRowOfTheIndex() {
    RunScene scene;
    scene.add({a, b});
    scene.program.files().recordAt(0)->set(key::status, status::STATCO);
    scene.program.state().convertingIndex = 0;
    scene.program.files().enqueue(scene.program.files().idList[1]);
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::noRow);
}

// What stands at a row's "path" is no partial output unless an encoder is at it.
void TestRemove::aWaitingRowsFileIsLeftAlone() {
    RunScene scene;
    scene.add({a, b});
    for (int row = 0; row < 2; ++row)
        scene.program.files().recordAt(row)->set(key::path, scene.source(row == 0 ? a : b));
    scene.program.files().recordAt(1)->set(key::status, status::STATPS);
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(QFile::exists(scene.source(a)));
    QVERIFY(QFile::exists(scene.source(b)));
    // Kept: it is marked though there was no paused encoder, until the next removal.
    QVERIFY(scene.program.state().pausedFileIsDeleted);
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.state().pausedFileIsDeleted); // the button is disabled
    scene.add({a});
    scene.program.click("btnRemoveFile");
    QVERIFY(!scene.program.state().pausedFileIsDeleted);
}

void TestRemove::selectAllFollowsTheHeaderBox() {
    RunScene scene;
    scene.add({a, b, c});
    FileList& files = scene.program.files();
    const auto recordChecks = [&] {
        std::vector<int> result;
        for (const JobRecordPtr& record : files.fileInfoArr)
            result.push_back(record->number(key::check));
        return result;
    };
    files.setCmb(1, files.cmbItems[0]);
    header(scene)->click();
    QVERIFY(!header(scene)->isChecked());
    QCOMPARE(files.check, (std::vector<int>{0, 0, 0}));
    QCOMPARE(recordChecks(), files.check);
    header(scene)->click();
    QVERIFY(header(scene)->isChecked());
    QCOMPARE(files.check, (std::vector<int>{1, 1, 1}));
    QCOMPARE(recordChecks(), files.check);
    QCOMPARE(files.cmb[1], files.cmbItems[0]);
    check(scene, {0, 2});
    QVERIFY(!header(scene)->isChecked());
    header(scene)->click();
    QCOMPARE(files.check, (std::vector<int>{1, 1, 1}));
}

void TestRemove::selectAllDuringARun() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    header(scene)->click();
    QCOMPARE(scene.program.files().check, (std::vector<int>{0, 0}));
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(b));
}

void TestRemove::selectAllOfAnEmptyList() {
    RunScene scene;
    header(scene)->click();
    QVERIFY(!header(scene)->isChecked()); // nothing is checked
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.program.files().check.empty());
    QCOMPARE(scene.program.state().count, 0);
}

REELSHIFT_TEST(tst_remove, TestRemove, QApplication)
#include "tst_remove.moc"
