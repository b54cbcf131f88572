#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "table/FileTableView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

QStringList talking() {
    return {QStringLiteral("create"),      QStringLiteral("write 100"),
            QStringLiteral("loop 100000"), QStringLiteral("progress 1"),
            QStringLiteral("wait 3"),      QStringLiteral("end")};
}

} // namespace

/// Stopping a run in every state that it can be in.
class TestStop final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingQueued();
    void cancelChangesNothing();
    void rightAfterARemovalNoSummaryIsShown();
    void stopped();
    void everyKindOfEncoderEnds_data();
    void everyKindOfEncoderEnds();
    void anOutputThatIsOpenedAfterwardsGoesToo();
    void aPausedRowGoesBackToWaiting();
    void aPausedEncoderThatWasKilled();
    void aPauseThatWasAskedForIsNoHindrance();
    void beforeTheEncoderIsLaunched();
    void whileTheNextMovieIsBegun();
    void justAsItFinishes();
    void afterItsSummary();
    void afterItsSummaryWithoutAnEnd();
    void theRunEndsUnderTheQuestion();
    void aFailureUnderTheQuestion();
    void theWindowStaysAliveInTheWait();
    void closeInsideTheWait();
    void allRowsConvertedByThen();
    void aReorderedList();

private:
    static void stop(RunScene& scene);
};

void TestStop::stop(RunScene& scene) {
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
}

void TestStop::nothingQueued() {
    RunScene scene;
    scene.program.click("btnStop");
    scene.add({a});
    const QString caption = scene.program.state().fileCountStr;
    scene.program.click("btnStop");
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QVERIFY(!scene.program.state().stopped);
    QCOMPARE(scene.program.state().fileCountStr, caption);
    QCOMPARE(scene.names(), QStringList{a});
}

void TestStop::cancelChangesNothing() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const std::vector<int> queue = scene.program.files().conversionTaskList;
    scene.program.boxes.promise(1000);
    scene.program.click("btnStop");
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    const BoxAnswers::Box& box = scene.program.boxes.seen[0];
    QCOMPARE(box.message,
             lines({text("IDS_TXT_POPUP_STOPCONVERTING"), text("IDS_TXT_POPUP_STOPCONVERTING2")}));
    QCOMPARE(box.buttons, (QStringList{text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_POPUP_OK")}));
    QVERIFY(!scene.program.state().stopped);
    QVERIFY(scene.program.state().isConversionRunning);
    QCOMPARE(scene.program.files().conversionTaskList, queue);
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
}

void TestStop::rightAfterARemovalNoSummaryIsShown() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    scene.program.files().setCheck(0, 1);
    scene.program.files().setCheck(1, 0);
    scene.program.click("btnRemoveFile");
    QCOMPARE(scene.names(), QStringList(b));
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
}

void TestStop::stopped() {
    RunScene scene;
    scene.add({a, b, c});
    scene.goToEnd(a);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATCO; }));
    QVERIFY(scene.waitForPercent(1, 10));
    QVERIFY(scene.hasOutput(b));
    stop(scene);

    // All of it is done when the wait is over.
    QVERIFY(scene.program.isIdle());
    QVERIFY(scene.program.state().stopped);
    QCOMPARE(scene.names(), (QStringList{b, c}));
    QVERIFY(scene.isInStep());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QCOMPARE(scene.program.status(1), status::STATWT);
    const JobRecord& record = *scene.program.files().recordAt(0);
    QCOMPARE(record.text(key::image), rowimage::remove);
    QCOMPARE(record.text(key::progress), text("IDS_TXT_STATUS_WAITING"));
    const ProgressObject& progress = *scene.program.files().progressObjects[0];
    QCOMPARE(progress.statusString(), QString());
    QCOMPARE(progress.currentStep(), 0);
    QCOMPARE(progress.textProgress().progress(), 0.0);
    QCOMPARE(scene.program.state().convertingIndex, ConvertingIndex::noRow);
    QVERIFY(scene.hasOutput(a));
    QVERIFY(!scene.hasOutput(b));
    QCOMPARE(scene.encoderState(), '\0');
    QVERIFY(scene.program.files().conversionTaskList.empty());
    QVERIFY(scene.program.files().convertedFileList.empty());
    QCOMPARE(scene.program.state().count, 2);
    QCOMPARE(scene.program.state().fileCountStr,
             QString(text("IDS_TXT_FILELIST") + QStringLiteral("  (2)")));
    for (const char* name :
         {"btnConvertFile", "btnAddFile", "btnSelectFolder", "comboBox", "btnRemoveFile"})
        QVERIFY2(scene.program.window().findChild<QWidget*>(QLatin1StringView(name))->isEnabled(),
                 name);
    // No summary: the question was the only box.
    QCOMPARE(scene.program.boxes.seen.size(), 1);

    QVERIFY(scene.begin());
    QVERIFY(!scene.program.state().stopped);
    QVERIFY(scene.end({b, c}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    QVERIFY(scene.ranAlone());
}

void TestStop::everyKindOfEncoderEnds_data() {
    QTest::addColumn<QStringList>("encode");
    QTest::addColumn<int>("leastSeconds");

    const auto deaf = [](QStringList steps) {
        steps.prepend(QStringLiteral("on-term ignore"));
        return steps;
    };
    QTest::newRow("talking") << talking() << 1;
    QTest::newRow("silent: ended after the second") << silent() << 1;
    QTest::newRow("dies without a word")
        << (QStringList{QStringLiteral("on-term die")} + silent()) << 1;
    QTest::newRow("ends without a summary")
        << (QStringList{QStringLiteral("on-term quit")} + talking()) << 1;
    QTest::newRow("silent and deaf: killed five seconds later") << deaf(silent()) << 5;
    QTest::newRow("talking and deaf") << deaf(talking()) << 5;
    const QStringList flooding{QStringLiteral("create"),        QStringLiteral("progress 1"),
                               QStringLiteral("wait-file a.1"), QStringLiteral("loop 1000000"),
                               QStringLiteral("progress 2"),    QStringLiteral("end")};
    QTest::newRow("flooding") << flooding << 1;
    QTest::newRow("flooding and deaf") << deaf(flooding) << 5;
    QTest::newRow("lines that never end")
        << QStringList{QStringLiteral("create"),      QStringLiteral("progress 1"),
                       QStringLiteral("loop 100000"), QStringLiteral("print ."),
                       QStringLiteral("wait 10"),     QStringLiteral("end")}
        << 1;
}

void TestStop::everyKindOfEncoderEnds() {
    QFETCH(QStringList, encode);
    QFETCH(int, leastSeconds);
    constexpr auto second = 50ms;
    RunScene scene(second);
    scene.addScript(a, encode);
    QVERIFY(scene.begin());
    QVERIFY(scene.hasOutput(a));
    QElapsedTimer time;
    scene.program.boxes.promise(1001, false, [&] {
        scene.go(a, 1);
        time.start();
    });
    scene.program.click("btnStop");
    QVERIFY(time.elapsed() >= leastSeconds * second.count());
    QVERIFY2(time.elapsed() < 4000, "the five seconds are not the test's own");
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.encoderState(), '\0');
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.program.boxes.seen.size(), 1);
}

// It is deleted when the encoder is told to end, and once more when it has ended.
void TestStop::anOutputThatIsOpenedAfterwardsGoesToo() {
    RunScene scene;
    scene.program.engine().setPatience({1s, 500ms});
    scene.addScript(a, {QStringLiteral("on-term ignore"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("create"),
                        QStringLiteral("write 100"), QStringLiteral("touch opened"),
                        QStringLiteral("hang")});
    QVERIFY(scene.begin());
    QTimer::singleShot(150, this, [&] { scene.go(a, 1); });
    stop(scene);
    QVERIFY(QFile::exists(scene.program.movies() + QStringLiteral("/opened")));
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.encoderState(), '\0');
}

void TestStop::aPausedRowGoesBackToWaiting() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QCOMPARE(scene.encoderState(), 'T');
    stop(scene);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.encoderState(), '\0');
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(scene.program.files().conversionTaskList.empty());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QCOMPARE(scene.program.files().recordAt(0)->text(key::image), rowimage::remove);
    QCOMPARE(scene.program.progressText(0), text("IDS_TXT_STATUS_WAITING"));
    QCOMPARE(scene.program.boxes.seen.size(), 1);

    QVERIFY(scene.begin());
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.ranAlone());
}

void TestStop::aPausedEncoderThatWasKilled() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QVERIFY(scene.run()->task()->kill());
    QVERIFY(scene.blockUntilEnded());
    stop(scene);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.program.boxes.seen.size(), 1);
}

void TestStop::aPauseThatWasAskedForIsNoHindrance() {
    RunScene scene;
    scene.addScript(a, silent());
    QVERIFY(scene.begin());
    scene.program.clickRowButton(0);
    stop(scene);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(scene.program.files().pausedList.empty());
    QVERIFY(!scene.hasOutput(a));
}

void TestStop::beforeTheEncoderIsLaunched() {
    RunScene scene;
    scene.add({a, b});
    scene.program.click("btnConvertFile");
    QCOMPARE(scene.run()->life().phase(), EncoderLife::Phase::Preparing);
    scene.program.engine().stopping().stopConversion();
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(scene.program.files().conversionTaskList.empty());
    QVERIFY(scene.begin());
    QVERIFY(scene.end({a, b}));
    // The job that was given up has launched nothing.
    QCOMPARE(scene.program.encodes().size(), 2);
    QVERIFY(scene.ranAlone());
}

void TestStop::whileTheNextMovieIsBegun() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(QFile::remove(scene.source(a)));
    // Skipped; the next movie is begun a second later, and before that comes the stop.
    scene.program.boxes.promise(1000);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(eventually([&] { return scene.program.files().conversionTaskList.size() == 1; }));
    scene.program.engine().stopping().stopConversion();
    scene.program.mainThread().waitFor(200ms);
    QVERIFY(scene.program.isIdle());
    QVERIFY(scene.program.encodes().isEmpty());
    QCOMPARE(scene.program.boxes.seen.size(), 1);
}

void TestStop::justAsItFinishes() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const JobPtr first = scene.run();
    scene.program.boxes.promise(1001, false, [&] {
        scene.goToEnd(a);
        QVERIFY(first->task()->waitForEnd(20s).has_value());
    });
    scene.program.click("btnStop");
    QVERIFY(scene.program.isIdle());
    // Converted, and so taken out of the list by the stop.
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.names(), QStringList{b});
    QCOMPARE(scene.program.state().noOfConvertedFile, 1);
    QCOMPARE(scene.program.encodes().size(), 1);
    QCOMPARE(scene.program.boxes.seen.size(), 1);
}

void TestStop::afterItsSummary() {
    RunScene scene(500ms);
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("write 100"),
                        QStringLiteral("summary 10"), QStringLiteral("touch said"),
                        QStringLiteral("wait-file a.2")});
    QVERIFY(scene.begin());
    scene.program.boxes.promise(1001, false, [&] {
        scene.go(a, 1);
        while (!QFile::exists(scene.program.movies() + QStringLiteral("/said")))
            QThread::yieldCurrentThread();
        // Its file is finished, and it comes to its end by itself inside the stop's wait.
        QTimer::singleShot(50, this, [&] { scene.go(a, 2); });
    });
    scene.program.click("btnStop");
    QVERIFY(scene.program.isIdle());
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(
        !scene.program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"))->isEnabled());
}

void TestStop::afterItsSummaryWithoutAnEnd() {
    RunScene scene;
    scene.program.engine().setPatience({60s, 250ms});
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("summary 10"),
                        QStringLiteral("touch said"), QStringLiteral("hang")});
    QVERIFY(scene.begin());
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.run()->life().isSummarySeen(); }));
    QElapsedTimer time;
    scene.program.boxes.promise(1001, false, [&] { time.start(); });
    scene.program.click("btnStop");
    QVERIFY(time.elapsed() < 4000);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
    QCOMPARE(scene.encoderState(), '\0');
}

void TestStop::theRunEndsUnderTheQuestion() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    BoxAnswers& boxes = scene.program.boxes;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (boxes.seen.size() == 1)
            scene.goToEnd(a);
        if (boxes.seen.size() < 2)
            return;
        // The summary over the question, and then the question itself.
        timer.stop();
        boxes.promise(1000);
        boxes.promise(1001);
    });
    timer.start(5);
    scene.program.click("btnStop");
    QCOMPARE(boxes.seen[1].message, text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL"));
    QVERIFY(boxes.allKept());
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.hasOutput(a));
}

void TestStop::aFailureUnderTheQuestion() {
    RunScene scene;
    scene.addScript(a, {QStringLiteral("create"), QStringLiteral("progress 1"),
                        QStringLiteral("wait-file a.1"), QStringLiteral("exit 1")});
    scene.add({b});
    QVERIFY(scene.begin());
    const JobPtr first = scene.run();
    scene.program.boxes.promise(1001, false, [&] {
        scene.go(a, 1);
        QVERIFY(first->task()->waitForEnd(20s).has_value());
    });
    scene.program.click("btnStop");
    QVERIFY(scene.program.isIdle());
    // The stop is the outcome: nothing is asked about the failure.
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
}

void TestStop::theWindowStaysAliveInTheWait() {
    RunScene scene(300ms);
    scene.addScript(a, talking());
    QVERIFY(scene.begin());
    int turns = 0;
    QTimer pulse;
    connect(&pulse, &QTimer::timeout, this,
            [&] { turns += scene.program.mainThread().isWaiting(); });
    pulse.start(10);
    stop(scene);
    QVERIFY(turns > 3);
}

void TestStop::closeInsideTheWait() {
    RunScene scene;
    scene.addScript(a, silent());
    QVERIFY(scene.begin());
    MainWindow& window = scene.program.window();
    bool closedInWait = true;
    QTimer inWait;
    connect(&inWait, &QTimer::timeout, this, [&] {
        if (!scene.program.mainThread().isWaiting())
            return;
        inWait.stop();
        window.close();
        closedInWait = !window.isVisible();
    });
    inWait.start(1);
    stop(scene);
    QVERIFY(!closedInWait);
    QVERIFY(eventually([&] { return !window.isVisible(); }));
    QCOMPARE(scene.program.status(0), status::STATWT);
    QVERIFY(!scene.hasOutput(a));
}

void TestStop::allRowsConvertedByThen() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    const JobPtr first = scene.run();
    scene.program.boxes.promise(1001, false, [&] {
        scene.goToEnd(a);
        QVERIFY(first->task()->waitForEnd(20s).has_value());
    });
    scene.program.click("btnStop");
    QCOMPARE(scene.program.files().rowCount(), 0);
    QCOMPARE(scene.program.state().count, 0);
    QCOMPARE(scene.program.state().fileCountStr,
             QString(text("IDS_TXT_FILELIST") + QStringLiteral("  (0)")));
    QVERIFY(
        !scene.program.window().findChild<QWidget*>(QStringLiteral("btnRemoveFile"))->isEnabled());
}

void TestStop::aReorderedList() {
    RunScene scene;
    scene.add({a, b});
    scene.program.files().moveRecords({1}, 0);
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(1, a));
    stop(scene);
    QVERIFY(scene.program.isIdle());
    QCOMPARE(scene.encoderState(), '\0');
    QCOMPARE(scene.program.status(1), status::STATWT);
    QCOMPARE(scene.program.files().progressObjects[1]->statusString(), QString());
    QVERIFY(!scene.hasOutput(a));
}

REELSHIFT_TEST(tst_stop, TestStop, QApplication)
#include "tst_stop.moc"
