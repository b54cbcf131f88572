#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "platform/ChildProcess.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QTest>

using namespace std::chrono_literals;

/// What the program has and does not call: a second start of a run, and the offer to go on with
/// paused jobs.
class TestUncalled final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void replicaOfConvertQueuesCheckedRows();
    void replicaOfConvertWithoutAFolder();
    void goOnWithPausedJobs();
    void goOnWithPausedJobsThatAreNone();
    void leavePausedJobs_data();
    void leavePausedJobs();

private:
    static UncalledRuns& engine(RunScene& scene);
    static QCheckBox& openFolder(RunScene& scene);
};

UncalledRuns& TestUncalled::engine(RunScene& scene) {
    return scene.program.engine().uncalled();
}

QCheckBox& TestUncalled::openFolder(RunScene& scene) {
    return *scene.program.window().findChild<QCheckBox*>(QStringLiteral("openFolderCheckBtn"));
}

void TestUncalled::replicaOfConvertQueuesCheckedRows() {
    RunScene scene;
    scene.add({a, b, c});
    scene.program.files().recordAt(1)->set(key::check, 0);
    scene.program.state().stopped = true;
    engine(scene).replicaOfConvert();
    const std::vector<int> ids = scene.program.files().idList;
    QCOMPARE(scene.program.files().conversionTaskList, (std::vector<int>{ids[0], ids[2]}));
    QVERIFY(!scene.program.state().stopped);
    QVERIFY(scene.program.state().isConversionRunning);
    for (const char* name : {"btnConvertFile", "btnAddFile", "btnSelectFolder", "comboBox"})
        QVERIFY(!scene.program.window().findChild<QWidget*>(QLatin1StringView(name))->isEnabled());
    scene.goToEnd(a);
    scene.goToEnd(c);
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.hasOutput(a));
    QVERIFY(!scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    // It counts nothing for the summary, which so does not come.
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QCOMPARE(scene.program.status(0), status::STATCO);
}

void TestUncalled::replicaOfConvertWithoutAFolder() {
    RunScene scene;
    scene.add({a});
    QVERIFY(QDir(scene.program.documents()).removeRecursively());
    scene.program.boxes.promise(1000);
    engine(scene).replicaOfConvert();
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QCOMPARE(scene.program.boxes.seen[0].message, text("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"));
    QCOMPARE(scene.program.boxes.seen[0].buttons, QStringList{text("IDS_BTN_POPUP_OK")});
    QVERIFY(scene.program.files().conversionTaskList.empty());
    QVERIFY(!scene.program.state().isConversionRunning);
}

// Their suspended encoders end first: never two at a time, and none is left behind.
void TestUncalled::goOnWithPausedJobs() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 paused = scene.encoderPid();
    bool startedFresh = false;
    scene.program.boxes.promise(1001);
    engine(scene).popUpForStartResumePausedFiles();
    startedFresh = processState(paused) == 0;
    QVERIFY(startedFresh);
    const BoxAnswers::Box& box = scene.program.boxes.seen[0];
    QCOMPARE(box.message,
             lines({text("IDS_TXT_POPUP_PUASEDJOBS"), text("IDS_TXT_POPUP_CLICKTOCONTINUE")}));
    QCOMPARE(box.buttons, (QStringList{text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_CONVERT")}));
    QCOMPARE(scene.program.status(0), status::STATPW);
    QCOMPARE(scene.program.progressText(0), text("IDS_TXT_STATUS_WAITING"));
    QCOMPARE(scene.program.files().recordAt(0)->text(key::image), rowimage::remove);
    // At the end of the queue, and only there.
    const std::vector<int> ids = scene.program.files().idList;
    QCOMPARE(scene.program.files().conversionTaskList, (std::vector<int>{ids[1], ids[0]}));
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestUncalled::goOnWithPausedJobsThatAreNone() {
    RunScene scene;
    scene.add({a});
    scene.program.boxes.promise(1001);
    engine(scene).popUpForStartResumePausedFiles();
    QVERIFY(scene.program.isIdle());
    QVERIFY(scene.program.encodes().isEmpty());
    QCOMPARE(scene.program.status(0), status::STATWT);
}

void TestUncalled::leavePausedJobs_data() {
    QTest::addColumn<bool>("openFolderIsTicked");

    QTest::newRow("folder opened") << true;
    QTest::newRow("folder left alone") << false;
}

void TestUncalled::leavePausedJobs() {
    QFETCH(bool, openFolderIsTicked);
    RunScene scene;
    scene.add({a, b});
    openFolder(scene).setChecked(openFolderIsTicked);
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.program.boxes.promise(1000);
    scene.program.boxes.promise(1000); // the summary
    engine(scene).popUpForStartResumePausedFiles();
    QVERIFY(scene.program.boxes.allKept());
    QCOMPARE(scene.program.boxes.seen.last().message, text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL"));
    QCOMPARE(scene.program.fileManager.shown.size(), openFolderIsTicked ? 1 : 0);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.encoderState(), '\0');
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.begin());
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
}

REELSHIFT_TEST(tst_uncalled, TestUncalled, QApplication)
#include "tst_uncalled.moc"
