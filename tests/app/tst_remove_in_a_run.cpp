#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

/// Removing rows during a run, by Remove File and by their own buttons.
class TestRemoveInARun final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRowAboveTheConvertingOne_data();
    void aRowAboveTheConvertingOne();
    void theConvertingRow_data();
    void theConvertingRow();
    void theConvertingRowAsTheOnlyOne();
    void theConvertingRowBeforeItsLaunch_data();
    void theConvertingRowBeforeItsLaunch();
    void aFinishedFileOfARemovedRowStays();
    void asItsOutcomeIsOnItsWay_data();
    void asItsOutcomeIsOnItsWay();
    void aConvertedRow_data();
    void aConvertedRow();
    void aQueuedRow_data();
    void aQueuedRow();
    void aPausedRow_data();
    void aPausedRow();
    void aPausedRowThatIsNotTheFirstEntry();
    void anotherRowThanThePausedOne();
    void aReorderedList_data();
    void aReorderedList();
    void aReorderedListLosesNoMovie_data();
    void aReorderedListLosesNoMovie();

private:
    static QWidget* removeButton(RunScene& scene);
    static void check(RunScene& scene, const std::vector<int>& rows);
    /// Removes a row by its button or as the only checked one.
    static void removeRow(RunScene& scene, int row, bool byButton);
    static void addByButton();
};

QWidget* TestRemoveInARun::removeButton(RunScene& scene) {
    return scene.program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"));
}

void TestRemoveInARun::check(RunScene& scene, const std::vector<int>& rows) {
    FileTableModel* const model = scene.program.window().findChild<FileTableView*>()->fileModel();
    for (int row = 0; row < model->rowCount(); ++row) {
        const bool isChecked = std::find(rows.begin(), rows.end(), row) != rows.end();
        QVERIFY(model->setData(model->index(row, 0), isChecked ? Qt::Checked : Qt::Unchecked,
                               Qt::CheckStateRole));
    }
}

void TestRemoveInARun::removeRow(RunScene& scene, int row, bool byButton) {
    if (byButton) {
        scene.program.clickRowButton(row);
        return;
    }
    check(scene, {row});
    scene.program.click("btnRemoveFile");
}

void TestRemoveInARun::addByButton() {
    QTest::addColumn<bool>("byButton");

    QTest::newRow("Remove File") << false;
    QTest::newRow("the row's button") << true;
}

void TestRemoveInARun::aRowAboveTheConvertingOne_data() {
    addByButton();
}

void TestRemoveInARun::aRowAboveTheConvertingOne() {
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

void TestRemoveInARun::theConvertingRow_data() {
    QTest::addColumn<QStringList>("encode");

    QTest::newRow("talking") << QStringList{
        QStringLiteral("create"),     QStringLiteral("write 100"), QStringLiteral("loop 100000"),
        QStringLiteral("progress 1"), QStringLiteral("wait 3"),    QStringLiteral("end")};
    QTest::newRow("silent") << silent();
    QTest::newRow("silent and deaf") << (QStringList{QStringLiteral("on-term ignore")} + silent());
}

// Only Remove File: a press of its own button pauses it.
void TestRemoveInARun::theConvertingRow() {
    QFETCH(QStringList, encode);
    RunScene scene;
    scene.addScript(a, encode);
    scene.add({b, c});
    QVERIFY(scene.begin());
    const qint64 old = scene.encoderPid();
    QVERIFY(scene.hasOutput(a));
    removeRow(scene, 0, false);
    QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::noRow);
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

void TestRemoveInARun::theConvertingRowAsTheOnlyOne() {
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

void TestRemoveInARun::theConvertingRowBeforeItsLaunch_data() {
    addByButton();
}

void TestRemoveInARun::theConvertingRowBeforeItsLaunch() {
    QFETCH(bool, byButton);
    RunScene scene;
    scene.add({a, b});
    scene.program.click("btnConvertFile");
    QCOMPARE(scene.run()->life().phase(), EncoderLife::Phase::Preparing);
    QCOMPARE(scene.program.status(0), status::STATWT);
    removeRow(scene, 0, byButton);
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QCOMPARE(scene.program.encodes().size(), 1);
    QVERIFY(!scene.hasOutput(a));
}

void TestRemoveInARun::aFinishedFileOfARemovedRowStays() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const JobPtr first = scene.run();
    scene.goToEnd(a);
    QVERIFY(scene.blockUntilEnded());
    removeRow(scene, 0, false);
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
}

void TestRemoveInARun::asItsOutcomeIsOnItsWay_data() {
    QTest::addColumn<int>("moment");
    QTest::addColumn<bool>("andStop");

    for (int moment = 0; moment < 5; ++moment) {
        QTest::addRow("removed %d", moment) << moment << false;
        QTest::addRow("removed and stopped %d", moment) << moment << true;
    }
}

// Its encoder's end is known, what it means is being settled: between any two steps of that.
void TestRemoveInARun::asItsOutcomeIsOnItsWay() {
    QFETCH(int, moment);
    QFETCH(bool, andStop);
    RunScene scene(5ms);
    scene.program.engine().setPatience({5s, 1s});
    scene.add({a, b});
    removeRow(scene, 1, true);
    QVERIFY(scene.begin());
    const JobPtr run = scene.run();
    scene.goToEnd(a);
    scene.program.boxes.promise(1000); // a summary, where it was too late
    QVERIFY(eventually([&] { return run->life().isFinished(); }));
    for (int step = 0; step < moment && !run->life().isSettled(); ++step)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    scene.program.click("btnRemoveFile");
    if (andStop)
        scene.program.engine().stopping().stopConversion();
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.program.boxes.seen.size() <= 1);
    scene.add({c});
    QVERIFY(scene.begin());
    scene.goToEnd(c);
    if (scene.program.boxes.allKept())
        scene.program.boxes.promise(1000);
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.hasOutput(c));
}

void TestRemoveInARun::aConvertedRow_data() {
    addByButton();
}

void TestRemoveInARun::aConvertedRow() {
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

void TestRemoveInARun::aQueuedRow_data() {
    addByButton();
}

void TestRemoveInARun::aQueuedRow() {
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

void TestRemoveInARun::aPausedRow_data() {
    QTest::addColumn<bool>("outputIsThere");

    QTest::newRow("with its partial output") << true;
    QTest::newRow("whose output has gone") << false;
}

void TestRemoveInARun::aPausedRow() {
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
void TestRemoveInARun::aPausedRowThatIsNotTheFirstEntry() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 paused = scene.encoderPid();
    FileList& files = scene.program.files();
    const auto other =
        scene.program.processes().launch(QStringLiteral("/bin/sleep"), {QStringLiteral("60")});
    const PausedTask own = files.pausedList.front();
    files.clearPaused();
    files.pause({other, other->readEnd(), 0, 4711});
    files.pause(own);
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

void TestRemoveInARun::anotherRowThanThePausedOne() {
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

void TestRemoveInARun::aReorderedList_data() {
    QTest::addColumn<bool>("paused");

    QTest::newRow("converting") << false;
    QTest::newRow("paused") << true;
}

// Dragging moves the records alone; with the removal all lists are in line again.
void TestRemoveInARun::aReorderedList() {
    QFETCH(bool, paused);
    RunScene scene;
    scene.add({a, b, c});
    scene.program.files().moveRecords({1}, 0);
    QVERIFY(scene.begin());
    QCOMPARE(scene.run()->row.record->text(key::name), QStringLiteral("a.mp4"));
    const qint64 old = scene.encoderPid();
    if (paused)
        QVERIFY(scene.pause(1, a));
    removeRow(scene, 1, false);
    QCOMPARE(scene.names(), (QStringList{b, c}));
    QVERIFY(eventually([&] { return processState(old) == 0 && !scene.hasOutput(a); }));
    QVERIFY(scene.program.files().pausedList.empty());
    QCOMPARE(scene.program.files().idList, (std::vector<int>{2, 3}));
    QCOMPARE(scene.program.files().conversionTaskList, (std::vector<int>{2, 3}));
    QVERIFY(scene.end({b, c}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    QVERIFY(scene.ranAlone());
}

void TestRemoveInARun::aReorderedListLosesNoMovie_data() {
    QTest::addColumn<bool>("byButton");
    QTest::addColumn<bool>("paused");

    for (const bool byButton : {false, true}) {
        for (const bool paused : {false, true})
            QTest::addRow("%s, %s", byButton ? "by its button" : "Remove File",
                          paused ? "paused" : "converting")
                << byButton << paused;
    }
}

// The queue was filled from the moved records, and its ids found other movies until the removal:
// what is left is converted all the same, each movie once.
void TestRemoveInARun::aReorderedListLosesNoMovie() {
    QFETCH(const bool, byButton);
    QFETCH(const bool, paused);
    RunScene scene;
    scene.add({a, b, c, d});
    FileList& files = scene.program.files();
    files.moveRecords({3}, 0);
    QVERIFY(scene.begin());
    QCOMPARE(scene.names(), (QStringList{d, a, b, c}));
    QCOMPARE(scene.run()->row.record->text(key::name), QStringLiteral("c.mp4"));
    if (paused)
        QVERIFY(scene.pause(3, c));
    removeRow(scene, 1, byButton);
    QCOMPARE(scene.names(), (QStringList{d, b, c}));
    QVERIFY(scene.isInStep());
    QCOMPARE(files.idList, (std::vector<int>{4, 2, 3}));
    if (paused) {
        QCOMPARE(files.pausedList.front().selectedrowid, 3);
        scene.program.clickRowButton(2);
        QVERIFY(eventually([&] { return scene.program.status(2) == status::STATPR; }));
    }
    // The bar has moved with its movie.
    scene.go(c, paused ? 2 : 1);
    QVERIFY(scene.waitForPercent(2, paused ? 30 : 20));
    QVERIFY(eventually([&] { return files.progressObjects[2]->showsBar(); }));
    QVERIFY(!files.progressObjects[0]->showsBar() && !files.progressObjects[1]->showsBar());
    QVERIFY(scene.end({b, c, d}));
    for (const QString& name : {b, c, d})
        QVERIFY2(scene.hasOutput(name), qPrintable(name));
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.program.encodes().size(), 3);
    QCOMPARE(files.rowCount(), 0);
    QVERIFY(scene.ranAlone());
}

REELSHIFT_TEST(tst_remove_in_a_run, TestRemoveInARun, QApplication)
#include "tst_remove_in_a_run.moc"
