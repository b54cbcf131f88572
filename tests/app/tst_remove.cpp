#include "app/RunScene.h"
#include "filelist/FileTableView.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "widgets/ProgressObject.h"

#include <QCheckBox>
#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");
const QString d = QStringLiteral("d");

QString caption(int rows) {
    return text("IDS_TXT_FILELIST") + QStringLiteral("  (%1)").arg(rows);
}

QStringList silent() {
    return {QStringLiteral("create"), QStringLiteral("write 100"), QStringLiteral("progress 1"),
            QStringLiteral("hang")};
}

} // namespace

/// Removing rows by Remove File and by their own buttons, in every state that a row can be in, and
/// checking all of them.
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
    void aRowAboveTheConvertingOne_data();
    void aRowAboveTheConvertingOne();
    void theConvertingRow_data();
    void theConvertingRow();
    void theConvertingRowAsTheOnlyOne();
    void theConvertingRowBeforeItsLaunch_data();
    void theConvertingRowBeforeItsLaunch();
    void aFinishedFileOfARemovedRowStays();
    void aConvertedRow_data();
    void aConvertedRow();
    void theConvertedRowOfTheIndex();
    void aQueuedRow_data();
    void aQueuedRow();
    void aPausedRow_data();
    void aPausedRow();
    void aPausedRowThatIsNotTheFirstEntry();
    void anotherRowThanThePausedOne();
    void aWaitingRowsFileIsLeftAlone();
    void aReorderedList_data();
    void aReorderedList();
    void selectAllFollowsTheHeaderBox();
    void selectAllDuringARun();
    void selectAllOfAnEmptyList();

private:
    static QCheckBox* header(RunScene& scene);
    static QWidget* removeButton(RunScene& scene);
    static void check(RunScene& scene, const std::vector<int>& rows);
    /// Removes a row by its button or as the only checked one.
    static void removeRow(RunScene& scene, int row, bool byButton);
    static void addByButton();
};

QCheckBox* TestRemove::header(RunScene& scene) {
    return scene.program.app().window().findChild<FileTableView*>()->btnSelectAll();
}

QWidget* TestRemove::removeButton(RunScene& scene) {
    return scene.program.app().window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"));
}

void TestRemove::check(RunScene& scene, const std::vector<int>& rows) {
    FileTableModel* const model =
        scene.program.app().window().findChild<FileTableView*>()->fileModel();
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

void TestRemove::addByButton() {
    QTest::addColumn<bool>("byButton");

    QTest::newRow("Remove File") << false;
    QTest::newRow("the row's button") << true;
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
    QCOMPARE(scene.program.state().convertingIndex, SharedState::noRow);
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
        QCOMPARE(scene.program.state().convertingIndex, SharedState::noRow);
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

void TestRemove::aRowAboveTheConvertingOne_data() {
    addByButton();
}

void TestRemove::aRowAboveTheConvertingOne() {
    QFETCH(bool, byButton);
    RunScene scene;
    scene.add({a, b, c});
    // The first row is no part of the run.
    scene.program.files().recordAt(0)->set(key::status, status::STATCO);
    QVERIFY(scene.begin());
    QCOMPARE(scene.program.state().convertingIndex, 1);
    scene.program.state().noOfConvertedFile = 1;
    removeRow(scene, 0, byButton);
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    scene.go(b, 1);
    QVERIFY(scene.waitForPercent(0, 20));
    QVERIFY(scene.end({b, c}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
}

void TestRemove::theConvertingRow_data() {
    QTest::addColumn<QStringList>("encode");

    QTest::newRow("talking") << QStringList{
        QStringLiteral("create"),     QStringLiteral("write 100"), QStringLiteral("loop 100000"),
        QStringLiteral("progress 1"), QStringLiteral("wait 3"),    QStringLiteral("end")};
    QTest::newRow("silent") << silent();
    QTest::newRow("silent and deaf") << (QStringList{QStringLiteral("on-term ignore")} + silent());
}

// Only Remove File: a press of its own button pauses it.
void TestRemove::theConvertingRow() {
    QFETCH(QStringList, encode);
    RunScene scene;
    scene.addScript(a, encode);
    scene.add({b, c});
    QVERIFY(scene.begin());
    const qint64 old = scene.encoderPid();
    QVERIFY(scene.hasOutput(a));
    removeRow(scene, 0, false);
    QCOMPARE(scene.program.state().convertingIndex, SharedState::noRow);
    QCOMPARE(scene.names(), (QStringList{b, c}));
    QCOMPARE(scene.program.files().conversionTaskList, scene.program.files().idList);
    QVERIFY(scene.waitForPercent(0, 10));
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QCOMPARE(processState(old), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.end({b, c}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    QVERIFY(scene.ranAlone());
    QCOMPARE(scene.program.boxes.seen.size(), 1);
}

void TestRemove::theConvertingRowAsTheOnlyOne() {
    RunScene scene;
    scene.addScript(a, silent());
    QVERIFY(scene.begin());
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.encoderState(), '\0');
    // Nothing of the run is left to sum up.
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QVERIFY(!removeButton(scene)->isEnabled());
    scene.add({b});
    QVERIFY(scene.begin());
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
}

void TestRemove::theConvertingRowBeforeItsLaunch_data() {
    addByButton();
}

void TestRemove::theConvertingRowBeforeItsLaunch() {
    QFETCH(bool, byButton);
    RunScene scene;
    scene.add({a, b});
    scene.program.click("btnConvertFile");
    QCOMPARE(scene.run()->life.phase(), EncoderLife::Phase::Preparing);
    QCOMPARE(scene.program.status(0), status::STATWT);
    removeRow(scene, 0, byButton);
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QCOMPARE(scene.program.encodes().size(), 1);
    QVERIFY(!scene.hasOutput(a));
}

void TestRemove::aFinishedFileOfARemovedRowStays() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const EncoderRunPtr first = scene.run();
    scene.goToEnd(a);
    QVERIFY(scene.blockUntilEnded());
    removeRow(scene, 0, false);
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
}

void TestRemove::aConvertedRow_data() {
    addByButton();
}

void TestRemove::aConvertedRow() {
    QFETCH(bool, byButton);
    RunScene scene;
    scene.add({a, b});
    scene.goToEnd(a);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATCO; }));
    QVERIFY(scene.waitForPercent(1, 10));
    QCOMPARE(scene.program.state().noOfConvertedFile, 1);
    removeRow(scene, 0, byButton);
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    QCOMPARE(scene.program.state().noOfconvertingFileList.ids(), scene.program.files().idList);
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QCOMPARE(scene.program.files().rowCount(), 0);
}

void TestRemove::theConvertedRowOfTheIndex() {
    RunScene scene;
    scene.add({a, b});
    scene.program.files().recordAt(0)->set(key::status, status::STATCO);
    scene.program.state().convertingIndex = 0;
    scene.program.files().conversionTaskList = {scene.program.files().idList[1]};
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.state().convertingIndex, SharedState::noRow);
}

void TestRemove::aQueuedRow_data() {
    addByButton();
}

void TestRemove::aQueuedRow() {
    QFETCH(bool, byButton);
    RunScene scene;
    scene.add({a, b, c});
    QVERIFY(scene.begin());
    const std::vector<int> left{scene.program.files().idList[0], scene.program.files().idList[2]};
    removeRow(scene, 1, byButton);
    QCOMPARE(scene.program.files().conversionTaskList, left);
    QCOMPARE(scene.program.state().noOfconvertingFileList.ids(), left);
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QVERIFY(scene.end({a, c}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(!scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
}

void TestRemove::aPausedRow_data() {
    QTest::addColumn<bool>("outputIsThere");

    QTest::newRow("with its partial output") << true;
    QTest::newRow("whose output has gone") << false;
}

void TestRemove::aPausedRow() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 paused = scene.encoderPid();
    QFETCH(bool, outputIsThere);
    if (!outputIsThere)
        QVERIFY(QFile::remove(scene.output(a)));
    QCOMPARE(scene.hasOutput(a), outputIsThere);
    removeRow(scene, 0, false);
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.program.state().isPausedRemove);
    QVERIFY(scene.program.files().pausedList.empty());
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(!scene.program.state().pausedFileIsDeleted);
    QCOMPARE(processState(paused), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

// Kept: only the first entry is looked at, and it goes whatever row it belongs to. The removed
// row's own encoder ends all the same.
void TestRemove::aPausedRowThatIsNotTheFirstEntry() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 paused = scene.encoderPid();
    FileList& files = scene.program.files();
    const auto other = scene.program.app().processes().launch(QStringLiteral("/bin/sleep"),
                                                              {QStringLiteral("60")});
    files.pausedList.insert(files.pausedList.begin(), {other, other->readEnd(), 0, 4711});
    removeRow(scene, 0, false);
    QVERIFY(!scene.program.state().isPausedRemove);
    QCOMPARE(files.pausedList.size(), size_t(1));
    QVERIFY(!other->end());
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(files.pausedList.empty());
    QCOMPARE(processState(paused), '\0');
    QVERIFY(scene.end({b}));
    QVERIFY(scene.ranAlone());
}

void TestRemove::anotherRowThanThePausedOne() {
    RunScene scene;
    scene.add({a, b, c});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    removeRow(scene, 2, true);
    removeRow(scene, 1, false);
    QCOMPARE(scene.names(), QStringList{a});
    QCOMPARE(scene.encoderState(), 'T');
    QCOMPARE(scene.program.files().pausedList.size(), size_t(1));
    QCOMPARE(scene.program.status(0), status::STATPS);
    scene.program.clickRowButton(0);
    QVERIFY(scene.end({a}));
    QVERIFY(scene.hasOutput(a));
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

void TestRemove::aReorderedList_data() {
    QTest::addColumn<bool>("paused");

    QTest::newRow("converting") << false;
    QTest::newRow("paused") << true;
}

// Kept: dragging moves the records alone, and the queue loses the id of the record. The encoder
// of the row ends in any case.
void TestRemove::aReorderedList() {
    QFETCH(bool, paused);
    RunScene scene;
    scene.add({a, b, c});
    auto& records = scene.program.files().fileInfoArr;
    std::swap(records[0], records[1]);
    QVERIFY(scene.begin());
    QCOMPARE(scene.run()->record->text(key::name), QStringLiteral("a.mp4"));
    const qint64 old = scene.encoderPid();
    if (paused)
        QVERIFY(scene.pause(1, a));
    removeRow(scene, 1, false);
    QCOMPARE(scene.names(), (QStringList{b, c}));
    QVERIFY(eventually([&] { return processState(old) == 0 && !scene.hasOutput(a); }));
    QVERIFY(scene.program.files().pausedList.empty());
    scene.goToEnd(b);
    QVERIFY(scene.end({c}));
    QVERIFY(scene.hasOutput(c));
    QVERIFY(scene.ranAlone());
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
    files.cmb[1] = files.cmbItems[0];
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
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.program.files().check.empty());
    QCOMPARE(scene.program.state().count, 0);
}

QTEST_MAIN(TestRemove)
#include "tst_remove.moc"
