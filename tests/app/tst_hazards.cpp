#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

/// What goes wrong where one encoder, one row or one run stands beside the next.
class TestHazards final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void convertAsSoonAsAStopAllowsIt_data();
    void convertAsSoonAsAStopAllowsIt();
    void aShorterMovieAfterARemovedPausedOne();
    void nothingAfterARemovedPausedOne();
    void anotherRowIsClickedBeforeThePause();
    void pauseStopAndRemovalAsItFinishes_data();
    void pauseStopAndRemovalAsItFinishes();
    void removalInTheHandlersSecond();
    void removalUnderABoxOfItsEncoder_data();
    void removalUnderABoxOfItsEncoder();
    void forAllAtAConflictAndThenAnError();
    void skipAtAConflictWithTwoMoreQueued();
    void cancelAtAConflict();
    void closeUnderABox();
    void closeWhilePaused();
    void endedUnderABox();
    void everyRowRemoved();
    void theConvertingRowRemovedLast();
    void actionsDuringARun();
    void actionsInsideAWait();

private:
    static QAbstractButton* button(RunScene& scene, const char* name);
    static void pressAll(RunScene& scene);
};

QAbstractButton* TestHazards::button(RunScene& scene, const char* name) {
    return scene.program.window().findChild<QAbstractButton*>(QString::fromLatin1(name));
}

// By key and through the accessibility tree, and by what needs neither.
void TestHazards::pressAll(RunScene& scene) {
    for (const char* name : {"btnAddFile", "btnConvertFile", "btnSelectFolder"}) {
        QAbstractButton* const each = button(scene, name);
        QTest::keyClick(each, Qt::Key_Space);
        QAccessible::queryAccessibleInterface(each)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    }
}

void TestHazards::convertAsSoonAsAStopAllowsIt_data() {
    QTest::addColumn<QStringList>("encode");

    const QStringList talking{QStringLiteral("create"),      QStringLiteral("write 100"),
                              QStringLiteral("loop 100000"), QStringLiteral("progress 9"),
                              QStringLiteral("wait 3"),      QStringLiteral("end")};
    QTest::newRow("talking") << talking;
    QTest::newRow("silent") << QStringList{QStringLiteral("create"), QStringLiteral("write 100"),
                                           QStringLiteral("progress 9"), QStringLiteral("hang")};
    QTest::newRow("deaf") << (QStringList{QStringLiteral("on-term ignore")} + talking);
}

void TestHazards::convertAsSoonAsAStopAllowsIt() {
    QFETCH(QStringList, encode);
    RunScene scene;
    scene.addScript(a, encode);
    scene.add({b});
    QVERIFY(scene.begin());
    const JobPtr old = scene.run();
    const qint64 oldPid = scene.encoderPid();
    QTimer inWait;
    connect(&inWait, &QTimer::timeout, this, [&] {
        if (!scene.program.mainThread().isWaiting() ||
            !button(scene, "btnConvertFile")->isEnabled())
            return;
        inWait.stop();
        // From now on the first movie is converted step by step.
        scene.program.movie(QStringLiteral("a.mp4"))
            .encode({"alone alone", "create", "progress 1", "wait-file a.1", "write 4096",
                     "summary 10"})
            .write();
        scene.program.click("btnConvertFile");
    });
    inWait.start(1);
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(!inWait.isActive());
    QCOMPARE(scene.run(), old); // put off
    QVERIFY(old->life().isSettled());
    QCOMPARE(processState(oldPid), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(eventually([&] { return scene.run() != old; }));
    QVERIFY(eventually([&] {
        return scene.program.encodes().size() == 2 &&
               scene.program.files().recordAt(0)->text(key::progressValue) ==
                   QStringLiteral("10 %");
    }));
    QCOMPARE(scene.program.status(0), status::STATPR);
    QCOMPARE(scene.program.status(1), status::STATWT);
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

// The dying encoder's summary is far short of its movie, the next one's stands beyond it.
void TestHazards::aShorterMovieAfterARemovedPausedOne() {
    RunScene scene;
    const QString longer =
        scene.program.movie(QStringLiteral("a.mp4"))
            .probe(QStringLiteral("hevc"), QStringLiteral("640x480"), QStringLiteral("02:00:00.00"))
            .encode({"alone alone", "create", "progress 1", "wait-file a.1", "progress 2", "hang"})
            .write();
    const QString shorter =
        scene.program.movie(QStringLiteral("b.mp4"))
            .probe(QStringLiteral("hevc"), QStringLiteral("640x480"), QStringLiteral("00:00:01.00"))
            .encode({"alone alone", "create", "progress 0.5", "wait-file b.1", "write 100",
                     "summary 1"})
            .write();
    scene.program.add({longer, shorter});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.program.click("btnSelectAll");
    FileTableModel& model = *scene.program.window().findChild<FileTableView*>()->fileModel();
    model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole);
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.waitForPercent(0, 50));
    QCOMPARE(scene.program.status(0), status::STATPR);
    QVERIFY(!scene.hasOutput(b) || QFile(scene.output(b)).size() == 0);
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    QVERIFY(scene.end({b}));
    QCOMPARE(QFile(scene.output(b)).size(), 100);
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.program.encodes().size(), 2);
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.ranAlone());
}

void TestHazards::nothingAfterARemovedPausedOne() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.files().pausedList.empty());
    for (const char* name : {"btnConvertFile", "btnAddFile", "btnSelectFolder"})
        QVERIFY(button(scene, name)->isEnabled());
    QVERIFY(scene.program.boxes.seen.isEmpty());
    scene.add({b});
    QVERIFY(scene.begin());
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestHazards::anotherRowIsClickedBeforeThePause() {
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

void TestHazards::pauseStopAndRemovalAsItFinishes_data() {
    QTest::addColumn<QString>("action");

    for (const char* action : {"pause", "stop", "removal"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

// A little later each time, from before its last words to after its end.
void TestHazards::pauseStopAndRemovalAsItFinishes() {
    QFETCH(QString, action);
    for (int moment = 0; moment < 10; ++moment) {
        RunScene scene(5ms);
        scene.program.engine().setPatience({5s, 1s});
        scene.addScript(a, {QStringLiteral("create"), QStringLiteral("write 4096"),
                            QStringLiteral("progress 1"), QStringLiteral("wait-file a.1"),
                            QStringLiteral("progress 9"), QStringLiteral("summary 10")});
        QVERIFY(scene.begin());
        scene.go(a, 1);
        scene.program.boxes.promise(1000); // a summary, where there is one
        const JobRecordPtr record = scene.program.files().recordAt(0);
        QElapsedTimer passed;
        passed.start();
        // The reader's work goes on meanwhile, as it would.
        while (passed.nsecsElapsed() < moment * 1'200'000)
            QCoreApplication::processEvents();
        const QString word = record->text(key::status);
        if (action == QStringLiteral("stop"))
            scene.program.engine().stopping().stopConversion();
        else if (action == QStringLiteral("removal"))
            scene.program.click("btnRemoveFile");
        else if (word == status::STATPR)
            scene.program.clickRowButton(0);
        QVERIFY(eventually(
            [&] { return scene.program.isIdle() || record->text(key::status) == status::STATPS; }));
        if (record->text(key::status) == status::STATPS)
            scene.program.clickRowButton(0);
        QVERIFY(scene.program.waitUntilIdle());
        const bool isConverted = record->text(key::status) == status::STATCO;
        const QByteArray facts = QByteArray::number(moment) + ' ' +
                                 record->text(key::status).toUtf8() + ' ' +
                                 QByteArray::number(scene.hasOutput(a));
        if (isConverted)
            QVERIFY2(scene.hasOutput(a), facts);
        else if (action != QStringLiteral("removal"))
            QVERIFY2(!scene.hasOutput(a) && action == QStringLiteral("stop"), facts);
        QVERIFY(scene.program.boxes.seen.size() <= 1);
        QCOMPARE(scene.program.encodes().size(), 1);
        QCOMPARE(scene.encoderState(), '\0');
    }
}

void TestHazards::removalInTheHandlersSecond() {
    RunScene scene(300ms);
    scene.add({a, b});
    QVERIFY(scene.begin());
    // The position has just been taken in: the handler sleeps its second.
    FileTableModel& model = *scene.program.window().findChild<FileTableView*>()->fileModel();
    model.setData(model.index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestHazards::removalUnderABoxOfItsEncoder_data() {
    QTest::addColumn<QString>("says");
    QTest::addColumn<bool>("byForce");
    QTest::addColumn<bool>("runGoesOn");

    const QString failure = QStringLiteral("print frame= 1 time=00:00:02.00 error\\r");
    const QString full =
        QStringLiteral("print av_interleaved_write_frame(): full time=00:00:02.00\\r");
    QTest::newRow("error, by the button") << failure << false << true;
    QTest::newRow("error, by what passes no gate") << failure << true << true;
    QTest::newRow("disk full, by what passes no gate") << full << true << false;
}

void TestHazards::removalUnderABoxOfItsEncoder() {
    QFETCH(QString, says);
    QFETCH(bool, byForce);
    QFETCH(bool, runGoesOn);
    RunScene scene;
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("write 10"),
                        QStringLiteral("progress 1"), QStringLiteral("wait-file a.1"), says,
                        QStringLiteral("hang")});
    scene.add({b});
    QVERIFY(scene.begin());
    FileTableModel& model = *scene.program.window().findChild<FileTableView*>()->fileModel();
    model.setData(model.index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
    scene.program.boxes.promise(runGoesOn ? 1001 : 1000, false, [&] {
        if (byForce)
            scene.program.app().remove();
        else
            scene.program.click("btnRemoveFile");
    });
    if (!runGoesOn)
        scene.program.boxes.promise(1000); // the summary
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QCOMPARE(scene.names(), byForce ? QStringList{b} : (QStringList{a, b}));
    if (!runGoesOn) {
        QVERIFY(scene.program.waitUntilIdle());
        QCOMPARE(scene.program.encodes().size(), 1);
        QVERIFY(scene.begin());
    }
    QVERIFY(scene.waitForPercent(byForce ? 0 : 1, 10));
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestHazards::forAllAtAConflictAndThenAnError() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a});
    scene.addScript(
        b, {QStringLiteral("create"), QStringLiteral("progress 1"), QStringLiteral("exit 1")});
    scene.add({c});
    scene.program.boxes.promise(1003, true); // replace, for all
    scene.goToEnd(a);
    scene.program.boxes.promise(1001);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(scene.program.boxes.seen.last().message.startsWith(text("IDS_TXT_POPUP_ERROR")));
    QVERIFY(scene.end({c}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(c));
    QCOMPARE(scene.names(), QStringList{b});
}

void TestHazards::skipAtAConflictWithTwoMoreQueued() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a, b, c});
    scene.program.boxes.promise(1002);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(eventually([&] { return scene.program.encodes().size() == 1; }));
    QVERIFY(scene.waitForPercent(1, 10));
    QCOMPARE(scene.program.state().convertingIndex, 1);
    // The launch without arguments is no job: the next one can be paused beside it.
    QVERIFY(scene.pause(1, b));
    QCOMPARE(scene.encoderState(), 'T');
    scene.program.clickRowButton(1);
    QVERIFY(scene.end({b, c}));
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    QCOMPARE(QFile(scene.output(a)).size(), 0);
    QVERIFY(scene.ranAlone());
}

void TestHazards::cancelAtAConflict() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a, b});
    scene.program.boxes.promise(1000);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.encodes().isEmpty());
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QVERIFY(button(scene, "btnConvertFile")->isEnabled());
}

void TestHazards::closeUnderABox() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    MainWindow& window = scene.program.window();
    scene.program.boxes.promise(1000, false, [&] { window.close(); });
    scene.program.click("btnStop");
    QVERIFY(window.isVisible());
    QVERIFY(scene.end({a}));
    QVERIFY(window.isVisible());
    window.close();
    QVERIFY(!window.isVisible());
}

void TestHazards::closeWhilePaused() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 pid = scene.encoderPid();
    scene.program.window().close();
    QVERIFY(!scene.program.window().isVisible());
    scene.program.app().quit(); // as the closing of the last window does it
    scene.program.quit();
    QCOMPARE(processState(pid), '\0');
    QVERIFY(!scene.hasOutput(a));
}

void TestHazards::endedUnderABox() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const qint64 pid = scene.encoderPid();
    QTimer underTheBox;
    connect(&underTheBox, &QTimer::timeout, this, [&] {
        if (scene.program.boxes.seen.isEmpty())
            return;
        underTheBox.stop();
        scene.program.app().quit();
    });
    underTheBox.start(1);
    scene.program.click("btnStop");
    QVERIFY(!QApplication::activeModalWidget());
    scene.program.quit();
    QCOMPARE(processState(pid), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(QFile::exists(scene.source(a)));
}

void TestHazards::everyRowRemoved() {
    RunScene scene;
    scene.add({a, b, c});
    QVERIFY(scene.begin());
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.program.encodes().size(), 1);
    QCOMPARE(scene.encoderState(), '\0');
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QVERIFY(button(scene, "btnConvertFile")->isEnabled());
    QVERIFY(!button(scene, "btnRemoveFile")->isEnabled());
}

void TestHazards::theConvertingRowRemovedLast() {
    RunScene scene;
    scene.add({a, b, c});
    scene.goToEnd(a);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATCO; }));
    QVERIFY(scene.waitForPercent(1, 10));
    scene.program.clickRowButton(2);
    scene.program.clickRowButton(0);
    QCOMPARE(scene.names(), QStringList{b});
    QCOMPARE(scene.program.state().convertingIndex, 0);
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(scene.program.state().noOfConvertedFile, 0);
    QVERIFY(scene.hasOutput(a));
    QVERIFY(!scene.hasOutput(b));
    scene.add({c});
    QVERIFY(scene.begin());
    QVERIFY(scene.end({c}));
    QVERIFY(scene.hasOutput(c));
}

void TestHazards::actionsDuringARun() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const std::vector<int> queue = scene.program.files().conversionTaskList;
    pressAll(scene);
    scene.program.mainThread().waitFor(200ms); // an accessible press lasts 100 ms
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(scene.program.files().conversionTaskList, queue);
    FileTableModel& model = *scene.program.window().findChild<FileTableView*>()->fileModel();
    model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    QTest::keyClick(button(scene, "btnRemoveFile"), Qt::Key_Space);
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.end({a}));
    QCOMPARE(scene.program.encodes().size(), 1);
}

void TestHazards::actionsInsideAWait() {
    RunScene scene;
    scene.add({a, b});
    bool nothingYet = false;
    QTimer::singleShot(0, this, [&] {
        // The run takes the movie that was dropped before it, and Remove File looks afresh: by
        // then the run is on and its rows are checked.
        scene.program.drop({scene.program.movie(QStringLiteral("d.mp4")).write()});
        QTest::keyClick(button(scene, "btnConvertFile"), Qt::Key_Space);
        QTest::keyClick(button(scene, "btnSelectFolder"), Qt::Key_Space);
        nothingYet =
            scene.program.files().rowCount() == 2 && !scene.program.state().isConversionRunning;
    });
    scene.program.mainThread().waitFor(20ms);
    QVERIFY(nothingYet);
    QVERIFY(eventually([&] { return scene.program.state().isConversionRunning; }));
    QCOMPARE(scene.program.files().rowCount(), 3);
    QCOMPARE(scene.program.files().conversionTaskList.size(), size_t(3));
    QVERIFY(!QApplication::activeModalWidget()); // Select Folder is disabled by then
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(QStringLiteral("d")));
}

REELSHIFT_TEST(tst_hazards, TestHazards, QApplication)
#include "tst_hazards.moc"
