#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTest>

#include <csignal>

#include <sys/ioctl.h>

using namespace std::chrono_literals;

/// Pausing and resuming a row, and everything that may happen to it in between.
class TestPause final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPausedEncoderIsSuspendedAndGoesOn();
    void thePauseWaitsForTheEncodersNextWord();
    void thePausedRowIsTheButtonsOwn();
    void aRemovalThatRecomputesTheRowLosesThePause();
    void theRowSaysWhatItIsAndItsButtonWhatItDoes();
    void whatIsLeftInThePipeWaitsForTheResume();
    void aSummaryJustBeforeTheSuspendIsNotLost();
    void damageJustBeforeTheSuspendIsNotLost();
    void resumeTakesTheEntryOfItsOwnRow();
    void resumeOfARowWithoutAnEntryStartsNothing();
    void resumeCountsTheRowOnce();
    void pausedTwice();
    void anEncoderThatHadEndedCountsAsConverted();
    void anEncoderThatHadFailedIsAFailure_data();
    void anEncoderThatHadFailedIsAFailure();
    void killedWhileSuspended();
    void aPausedListThatCannotBeResumedEndsTheRun();
    void quitWhilePaused();
    void idsOfPausedFilesAreOnlyLogged();
    void aReorderedListPausesAndResumes();
    void anotherRowIsClickedBeforeThePause();
};

void TestPause::aPausedEncoderIsSuspendedAndGoesOn() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    FileList& files = scene.program.files();
    SharedState& state = scene.program.state();
    QVERIFY(scene.pause(0, a));

    QCOMPARE(scene.encoderState(), 'T');
    QCOMPARE(state.convertingIndex, ConvertingIndex::pauseRequested);
    const JobRecord& record = *files.recordAt(0);
    QCOMPARE(record.text(key::image), rowimage::resume);
    QCOMPARE(record.text(key::progress), text("IDS_TXT_STATUS_PAUSED"));
    QCOMPARE(files.progressObjects[0]->statusString(), QString());
    QCOMPARE(files.pausedList.size(), size_t(1));
    const PausedTask& entry = files.pausedList.front();
    QCOMPARE(entry.task, scene.run()->task());
    QCOMPARE(entry.selectedError, entry.task->readEnd());
    QCOMPARE(qint64(entry.taskid), scene.encoderPid());
    QCOMPARE(entry.selectedrowid, files.idList[0]);
    // It keeps its place: no other movie is begun.
    QCOMPARE(files.conversionTaskList, files.idList);
    QCOMPARE(scene.program.status(1), status::STATWT);
    QVERIFY(state.isConversionRunning);

    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.status(0), status::STATPR);
    QCOMPARE(record.text(key::image), rowimage::pause);
    QCOMPARE(state.convertingIndex, 0);
    QVERIFY(!state.stopped);
    QVERIFY(state.isConversionRunning);
    QVERIFY(files.pausedList.empty());
    QVERIFY(eventually([&] { return scene.encoderState() != 'T'; }));
    QCOMPARE(scene.program.encodes().size(), 1);
    scene.go(a, 2);
    QVERIFY(scene.waitForPercent(0, 30));
    QCOMPARE(record.text(key::progress), QString());

    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QCOMPARE(files.rowCount(), 0);
    QVERIFY(scene.ranAlone());
}

void TestPause::thePauseWaitsForTheEncodersNextWord() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::pauseRequested);
    scene.program.mainThread().waitFor(150ms);
    QCOMPARE(scene.program.status(0), status::STATPR);
    QVERIFY(scene.encoderState() != 'T');
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    QCOMPARE(scene.encoderState(), 'T');
}

void TestPause::thePausedRowIsTheButtonsOwn() {
    RunScene scene;
    scene.add({a, b});
    auto* const table = scene.program.window().findChild<FileTableView*>();
    QVERIFY(scene.begin());
    table->selectRow(1);
    scene.program.clickRowButton(0);
    table->selectRow(1);
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    QCOMPARE(scene.program.files().pausedList.front().selectedrowid,
             scene.program.files().idList[0]);
    table->selectRow(1);
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.status(0), status::STATPR);
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
}

void TestPause::aRemovalThatRecomputesTheRowLosesThePause() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    scene.program.clickRowButton(0);
    scene.program.clickRowButton(1); // removes the waiting one
    QCOMPARE(scene.names(), QStringList{a});
    QCOMPARE(scene.program.state().convertingIndex, 0);
    scene.go(a, 1);
    QVERIFY(scene.waitForPercent(0, 20));
    QCOMPARE(scene.program.status(0), status::STATPR);
    QVERIFY(scene.pause(0, a, 2));
    QCOMPARE(scene.encoderState(), 'T');
}

void TestPause::theRowSaysWhatItIsAndItsButtonWhatItDoes() {
    RunScene scene;
    scene.add({a});
    const auto spoken = [&](TableColumn column) {
        const FileTableModel* const model =
            scene.program.window().findChild<FileTableView*>()->fileModel();
        return model->index(0, static_cast<int>(column)).data(Qt::AccessibleTextRole).toString();
    };
    const auto says = [&](const QString& status, const char* button) {
        return eventually([&] { return spoken(TableColumn::Progress) == status; }) &&
               spoken(TableColumn::Im) == text(button).arg(QStringLiteral("a.mp4"));
    };
    QVERIFY(says(text("IDS_TXT_STATUS_WAITING"), "IDS_A11Y_ROW_REMOVE"));
    QVERIFY(scene.begin());
    QVERIFY(says(QStringLiteral("10 %"), "IDS_A11Y_ROW_PAUSE"));
    QVERIFY(scene.pause(0, a));
    QVERIFY(says(text("IDS_TXT_STATUS_PAUSED"), "IDS_A11Y_ROW_RESUME"));
    scene.program.clickRowButton(0);
    scene.go(a, 2);
    QVERIFY(says(QStringLiteral("30 %"), "IDS_A11Y_ROW_PAUSE"));
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(says(text("IDS_TXT_STATUS_WAITING"), "IDS_A11Y_ROW_REMOVE"));
}

void TestPause::whatIsLeftInThePipeWaitsForTheResume() {
    RunScene scene;
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("progress 2"),
                        QStringLiteral("loop 1000000"), QStringLiteral("progress 5"),
                        QStringLiteral("end")});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const auto waiting = [&] {
        int bytes = 0;
        ::ioctl(scene.run()->task()->readEnd(), FIONREAD, &bytes);
        return bytes;
    };
    const int before = waiting();
    QVERIFY(before > 0);
    scene.program.mainThread().waitFor(200ms);
    QCOMPARE(waiting(), before);
    QCOMPARE(scene.program.status(0), status::STATPS);
    QCOMPARE(scene.program.files().recordAt(0)->text(key::progressValue), QStringLiteral("10 %"));
    scene.program.clickRowButton(0);
    QVERIFY(scene.waitForPercent(0, 50));
}

void TestPause::aSummaryJustBeforeTheSuspendIsNotLost() {
    RunScene scene;
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("write 4096"),
                        QStringLiteral("summary 10"), QStringLiteral("wait-file a.2")});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QCOMPARE(scene.encoderState(), 'T');
    scene.go(a, 2);
    scene.program.clickRowButton(0);
    QVERIFY(scene.end({}));
    QCOMPARE(scene.program.boxes.messages(),
             QStringList{text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")});
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.files().rowCount(), 0);
}

// The piece that the pause takes up is looked at all the same.
void TestPause::damageJustBeforeTheSuspendIsNotLost() {
    RunScene scene;
    scene.addScript(
        a, {QStringLiteral("create"), QStringLiteral("header"), QStringLiteral("progress 1"),
            QStringLiteral("wait-file a.1"),
            QStringLiteral("print [hevc @ 0x1] Invalid data\\nframe=  2 time=00:00:02.00 \\r"),
            QStringLiteral("wait-file a.2"), QStringLiteral("write 4096"),
            QStringLiteral("summary 10")});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.go(a, 2);
    scene.program.boxes.promise(1001);
    scene.program.clickRowButton(0);
    QVERIFY(scene.end({}));
    QCOMPARE(scene.program.boxes.messages().first(),
             lines({text("IDS_TXT_POPUP_ERROR"), text("IDS_TXT_POPUP_WANTTOSKIP"),
                    QStringLiteral("a.mp4")}));
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
}

void TestPause::resumeTakesTheEntryOfItsOwnRow() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    FileList& files = scene.program.files();
    const auto other =
        scene.program.processes().launch(QStringLiteral("/bin/sleep"), {QStringLiteral("60")});
    QVERIFY(other->suspend());
    const PausedTask own = files.pausedList.front();
    files.clearPaused();
    files.pause({other, other->readEnd(), int(other->processIdentifier()), files.idList[1]});
    files.pause(own);
    scene.program.clickRowButton(0);
    QCOMPARE(files.pausedList.size(), size_t(1));
    QCOMPARE(files.pausedList.front().task, other);
    QCOMPARE(processState(other->processIdentifier()), 'T');
    QVERIFY(eventually([&] { return scene.encoderState() != 'T'; }));
    QCOMPARE(scene.program.engine().jobs().runningTask(), scene.run()->task());
    files.clearPaused();
    QVERIFY(scene.end({a, b}));
}

void TestPause::resumeOfARowWithoutAnEntryStartsNothing() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    SharedState& state = scene.program.state();
    state.noOfconvertingFileList.clear();
    scene.program.engine().rows().setConvertingIndexForResume(1);
    QVERIFY(state.noOfconvertingFileList.contains(scene.program.files().idList[1]));
    QCOMPARE(scene.program.files().pausedList.size(), size_t(1));
    QCOMPARE(state.convertingIndex, ConvertingIndex::pauseRequested);
    QCOMPARE(scene.encoderState(), 'T');
}

void TestPause::resumeCountsTheRowOnce() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    const std::vector<int> counted = scene.program.files().idList;
    QCOMPARE(scene.program.state().noOfconvertingFileList.ids(), counted);
    QVERIFY(scene.pause(0, a));
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.state().noOfconvertingFileList.ids(), counted);
}

void TestPause::pausedTwice() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    for (int step = 1; step <= 2; ++step) {
        QVERIFY(scene.pause(0, a, step));
        QCOMPARE(scene.encoderState(), 'T');
        scene.program.clickRowButton(0);
        QCOMPARE(scene.program.status(0), status::STATPR);
    }
    QVERIFY(scene.end({a}));
    QCOMPARE(scene.program.encodes().size(), 1);
    QVERIFY(scene.hasOutput(a));
}

// A pause that comes too late is no failure of the movie's. Kept: such a row is not among those
// that the summary or a later stop takes out of the list.
void TestPause::anEncoderThatHadEndedCountsAsConverted() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    scene.program.clickRowButton(0);
    scene.goToEnd(a);
    QVERIFY(scene.blockUntilEnded());
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATCO; }));
    const JobRecord& record = *scene.program.files().recordAt(0);
    QCOMPARE(record.text(key::image), rowimage::remove);
    QCOMPARE(record.text(key::progress), text("IDS_TXT_STATUS_CONVERTED"));
    QCOMPARE(record.text(key::conversionstat), status::CONCOMPLETE);
    QCOMPARE(scene.program.files().progressObjects[0]->statusString(), QString());
    QCOMPARE(scene.program.state().noOfConvertedFile, 1);
    QVERIFY(scene.program.files().convertedFileList.empty());
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.waitForPercent(1, 10));

    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QCOMPARE(scene.program.status(0), status::STATCO);
    QVERIFY(scene.hasOutput(a));
    QVERIFY(!scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestPause::anEncoderThatHadFailedIsAFailure_data() {
    QTest::addColumn<QStringList>("end");

    QTest::newRow("no summary") << QStringList{QStringLiteral("progress 2"),
                                               QStringLiteral("exit 1")};
    QTest::newRow("no summary, status 0") << QStringList{QStringLiteral("progress 2")};
    QTest::newRow("summary, status 69")
        << QStringList{QStringLiteral("summary 10"), QStringLiteral("exit 69")};
    QTest::newRow("crash") << QStringList{QStringLiteral("progress 2"), QStringLiteral("abort")};
}

void TestPause::anEncoderThatHadFailedIsAFailure() {
    QFETCH(QStringList, end);
    RunScene scene;
    scene.addScript(a, QStringList{QStringLiteral("create"), QStringLiteral("write 100"),
                                   QStringLiteral("progress 1"), QStringLiteral("wait-file a.1")} +
                           end);
    QVERIFY(scene.begin());
    scene.program.clickRowButton(0);
    scene.go(a, 1);
    QVERIFY(scene.blockUntilEnded());
    scene.program.boxes.promise(1001);
    QVERIFY(scene.end({}));
    QCOMPARE(scene.program.boxes.messages().first(),
             lines({text("IDS_TXT_POPUP_ERROR"), text("IDS_TXT_POPUP_WANTTOSKIP"),
                    QStringLiteral("a.mp4")}));
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(!scene.hasOutput(a));
}

void TestPause::killedWhileSuspended() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    ::kill(static_cast<pid_t>(scene.encoderPid()), SIGKILL);
    QVERIFY(scene.blockUntilEnded());
    scene.program.mainThread().waitFor(150ms);
    QCOMPARE(scene.program.status(0), status::STATPS);

    scene.program.boxes.promise(1001);
    scene.program.clickRowButton(0);
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QCOMPARE(scene.program.boxes.messages(),
             QStringList{lines({text("IDS_TXT_POPUP_ERROR"), text("IDS_TXT_POPUP_WANTTOSKIP"),
                                QStringLiteral("a.mp4")})});
    QVERIFY(scene.end({b}));
    QCOMPARE(scene.names(), QStringList{a});
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
}

void TestPause::aPausedListThatCannotBeResumedEndsTheRun() {
    RunScene scene;
    const auto stray =
        scene.program.processes().launch(QStringLiteral("/bin/sleep"), {QStringLiteral("60")});
    scene.program.files().pause({stray, stray->readEnd(), 0, 4711});
    scene.program.click("btnConvertFile");
    QVERIFY(scene.program.isIdle());
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(scene.program.boxes.seen.isEmpty());
}

void TestPause::quitWhilePaused() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QVERIFY(scene.hasOutput(a));
    const qint64 pid = scene.encoderPid();
    scene.program.quit();
    QCOMPARE(processState(pid), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(QFile::exists(scene.source(a)));
}

void TestPause::idsOfPausedFilesAreOnlyLogged() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    std::vector<int>& ids = scene.program.files().filePausedId;
    QVERIFY(ids.empty()); // nothing fills it
    ids = {4711};
    QLoggingCategory::setFilterRules(QStringLiteral("reelshift.convert.debug=true"));
    QTest::ignoreMessage(QtDebugMsg, "paused: 4711");
    scene.program.clickRowButton(0);
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(ids, std::vector<int>{4711});
    QCOMPARE(scene.program.status(0), status::STATPR);
}

// Kept: dragging moves the records alone. The row's place counts, in whatever order they stand.
void TestPause::aReorderedListPausesAndResumes() {
    RunScene scene;
    scene.add({a, b});
    scene.program.files().moveRecords({1}, 0);
    QVERIFY(scene.begin());
    // The queue begins with the id of the second movie, whose row now holds the first one.
    QCOMPARE(scene.run()->row.record->text(key::name), QStringLiteral("a.mp4"));
    QVERIFY(scene.pause(1, a));
    QCOMPARE(scene.encoderState(), 'T');
    scene.program.clickRowButton(1);
    QVERIFY(eventually([&] { return scene.encoderState() != 'T'; }));
    QVERIFY(scene.pause(1, a, 2));
    QVERIFY(QFile::remove(scene.source(a)));
    scene.program.boxes.promise(1000);
    scene.program.clickRowButton(1);
    QVERIFY(scene.end({b}));
    QCOMPARE(scene.encoderState(), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestPause::anotherRowIsClickedBeforeThePause() {
    RunScene scene;
    scene.add({a, b});
    FileTableView& table = *scene.program.window().findChild<FileTableView*>();
    const auto click = [&](int row, TableColumn column) {
        const QModelIndex cell = table.fileModel()->index(row, static_cast<int>(column));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(cell).center());
    };
    QVERIFY(scene.begin());
    click(0, TableColumn::Im);
    QVERIFY(eventually(
        [&] { return scene.program.state().convertingIndex == ConvertingIndex::pauseRequested; }));
    click(1, TableColumn::Name);
    QCOMPARE(table.selectedRow(), 1);
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    click(0, TableColumn::Im);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPR; }));
    scene.go(a, 2);
    QVERIFY(scene.waitForPercent(0, 30));
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
}

REELSHIFT_TEST(tst_pause, TestPause, QApplication)
#include "tst_pause.moc"
