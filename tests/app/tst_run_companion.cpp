#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTest>

#include <algorithm>

using namespace std::chrono_literals;

/// What the desktop learns of a run, and what the window says about it.
class TestRunCompanion final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theMachineIsKeptAwakeDuringARun();
    void notWhileEverythingIsPaused();
    void theNextMovieAfterAPausedOneThatWasRemoved();
    void notAfterTheLastMovieWasRemoved();
    void notAfterAStop();
    void notAfterAFailure_data();
    void notAfterAFailure();
    void notAfterAFullDisk();
    void notAfterTheEnd();
    void notForNothing();
    void aRefusalIsSaidQuietly();
    void aRefusalIsTakenBackWhenALaterHoldIsGranted();
    void theUserElsewhereIsTold();
    void theUserAtTheWindowIsNot();
    void aBoxOverTheWindowIsTheWindow();
    void whatWasRemovedCountsForNothing();
    void aStopIsNoNews();
    void theIconShowsTheShareOfTheRun();
    void theBarTellsTheTimeLeft();

private:
    /// Another window of the program in front, and that one is not the main window.
    static void lookElsewhere(QWidget& other);
    static QString timeLeft(RunScene& scene, int row);
};

void TestRunCompanion::lookElsewhere(QWidget& other) {
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
}

void TestRunCompanion::theMachineIsKeptAwakeDuringARun() {
    RunScene scene;
    const FakeSleepInhibitor& sleep = scene.program.desktop.sleep;
    scene.add({a, b});
    QVERIFY(!sleep.isHeld);
    QVERIFY(scene.begin());
    QVERIFY(sleep.isHeld);
    scene.goToEnd(a);
    QVERIFY(scene.waitForPercent(1, 10));
    QVERIFY(sleep.isHeld);
    bool heldUnderTheSummary = true;
    scene.goToEnd(b);
    scene.program.boxes.promise(1000, false, [&] { heldUnderTheSummary = sleep.isHeld; });
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.boxes.allKept());
    QVERIFY(!heldUnderTheSummary);
    QVERIFY(!sleep.isHeld);
    // Once for the run, not once for each movie.
    QCOMPARE(sleep.reasons, QStringList{text("IDS_TXT_KEEP_AWAKE_REASON")});
}

void TestRunCompanion::notWhileEverythingIsPaused() {
    RunScene scene;
    const FakeSleepInhibitor& sleep = scene.program.desktop.sleep;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QVERIFY(!sleep.isHeld);
    scene.program.clickRowButton(0);
    QVERIFY(sleep.isHeld);
    QVERIFY(scene.pause(0, a, 2));
    QVERIFY(!sleep.isHeld);
    scene.program.clickRowButton(0);
    QCOMPARE(sleep.reasons.size(), 3);
    QVERIFY(scene.end({a}));
    QVERIFY(!sleep.isHeld);
}

void TestRunCompanion::theNextMovieAfterAPausedOneThatWasRemoved() {
    RunScene scene;
    const FakeSleepInhibitor& sleep = scene.program.desktop.sleep;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.program.files().setCheck(0, 1);
    scene.program.files().setCheck(1, 0);
    scene.program.click("btnRemoveFile");
    QVERIFY(eventually([&] { return scene.names() == QStringList{b} && sleep.isHeld; }));
    QVERIFY(scene.end({b}));
    QVERIFY(!sleep.isHeld);
}

void TestRunCompanion::notAfterTheLastMovieWasRemoved() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    scene.program.files().setCheck(0, 1);
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(!scene.program.desktop.sleep.isHeld);
}

void TestRunCompanion::notAfterAStop() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(!scene.program.desktop.sleep.isHeld);
    // And the next run begins afresh.
    QVERIFY(scene.begin());
    QVERIFY(scene.program.desktop.sleep.isHeld);
    QVERIFY(scene.end({a, b}));
    QVERIFY(!scene.program.desktop.sleep.isHeld);
}

void TestRunCompanion::notAfterAFailure_data() {
    QTest::addColumn<int>("answer");
    QTest::newRow("the run ends") << 1000;
    QTest::newRow("the movie is skipped") << 1001;
}

void TestRunCompanion::notAfterAFailure() {
    QFETCH(int, answer);
    RunScene scene;
    const FakeSleepInhibitor& sleep = scene.program.desktop.sleep;
    scene.addScript(a, {QStringLiteral("progress 1"), QStringLiteral("exit 1")});
    bool heldUnderTheQuestion = false;
    scene.program.boxes.promise(answer, false, [&] { heldUnderTheQuestion = sleep.isHeld; });
    bool heldUnderTheSummary = true;
    scene.program.boxes.promise(1000, false, [&] { heldUnderTheSummary = sleep.isHeld; });
    QVERIFY(scene.program.runToEnd());
    QVERIFY(scene.program.boxes.allKept());
    QVERIFY(heldUnderTheQuestion);
    QVERIFY(!heldUnderTheSummary);
    QVERIFY(!sleep.isHeld);
}

void TestRunCompanion::notAfterAFullDisk() {
    RunScene scene;
    scene.addScript(a, {QStringLiteral("print av_interleaved_write_frame(): No space left\\n"),
                        QStringLiteral("exit 1")});
    scene.program.boxes.promise(1000);
    scene.program.boxes.promise(1000);
    QVERIFY(scene.program.runToEnd());
    QVERIFY(!scene.program.desktop.sleep.reasons.isEmpty());
    QVERIFY(!scene.program.desktop.sleep.isHeld);
}

void TestRunCompanion::notAfterTheEnd() {
    for (const bool isPaused : {false, true}) {
        RunScene scene;
        scene.add({a});
        QVERIFY(scene.begin());
        if (isPaused)
            QVERIFY(scene.pause(0, a));
        scene.program.quit();
        QVERIFY(!scene.program.desktop.sleep.isHeld);
        QVERIFY(scene.program.desktop.launcher.hidden > 0);
        QVERIFY(scene.program.desktop.notifications.texts.isEmpty());
    }
}

void TestRunCompanion::notForNothing() {
    RunScene scene;
    QVERIFY(scene.program.runToEnd());
    QVERIFY(scene.program.desktop.sleep.reasons.isEmpty());
    QVERIFY(scene.program.desktop.notifications.texts.isEmpty());
    QVERIFY(scene.program.desktop.launcher.shares.isEmpty());
}

void TestRunCompanion::aRefusalIsSaidQuietly() {
    RunScene scene;
    scene.program.desktop.sleep.refuses = true;
    const auto* const line = scene.program.widget<QLabel>("notKeptAwake");
    QCOMPARE(line->text(), text("IDS_TXT_NOT_KEPT_AWAKE"));
    scene.add({a});
    QVERIFY(!line->isVisible());
    QVERIFY(scene.begin());
    QVERIFY(line->isVisible());
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QVERIFY(scene.pause(0, a));
    scene.program.clickRowButton(0);
    QVERIFY(line->isVisible());
    QVERIFY(scene.end({a}));
    QVERIFY(!line->isVisible());
    QCOMPARE(scene.program.boxes.messages(),
             QStringList{text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")});
}

void TestRunCompanion::aRefusalIsTakenBackWhenALaterHoldIsGranted() {
    RunScene scene;
    scene.program.desktop.sleep.refuses = true;
    const auto* const line = scene.program.widget<QLabel>("notKeptAwake");
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QVERIFY(line->isVisible());
    scene.program.desktop.sleep.refuses = false;
    scene.program.clickRowButton(0);
    QVERIFY(!line->isVisible());
    QVERIFY(scene.end({a}));
}

void TestRunCompanion::theUserElsewhereIsTold() {
    RunScene scene;
    scene.add({a});
    scene.addScript(b, {QStringLiteral("progress 1"), QStringLiteral("exit 1")});
    scene.add({QStringLiteral("c"), QStringLiteral("d")});
    QWidget other;
    lookElsewhere(other);
    QVERIFY(scene.begin());
    for (const char* each : {"a", "c", "d"})
        scene.goToEnd(QString::fromLatin1(each));
    scene.program.boxes.promise(1001); // the failed one is skipped
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QStringList toldBeforeTheSummary;
    scene.program.boxes.promise(
        1000, false, [&] { toldBeforeTheSummary = scene.program.desktop.notifications.texts; });
    QVERIFY(scene.program.waitUntilIdle());
    const QStringList expected{
        lines({text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL").section(u'\n', 0, 0),
               text("IDS_TXT_RUN_CONVERTED").arg(3), text("IDS_TXT_RUN_NOT_CONVERTED").arg(1)})};
    QCOMPARE(toldBeforeTheSummary, expected);
    QCOMPARE(scene.program.desktop.notifications.texts, expected);
}

void TestRunCompanion::theUserAtTheWindowIsNot() {
    RunScene scene;
    scene.add({a});
    scene.program.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&scene.program.window()));
    QVERIFY(scene.begin());
    QVERIFY(scene.end({a}));
    QVERIFY(scene.program.desktop.notifications.texts.isEmpty());
}

void TestRunCompanion::aBoxOverTheWindowIsTheWindow() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QDialog box(&scene.program.window());
    lookElsewhere(box);
    QVERIFY(scene.end({a}));
    QVERIFY(scene.program.desktop.notifications.texts.isEmpty());
}

void TestRunCompanion::whatWasRemovedCountsForNothing() {
    RunScene scene;
    scene.add({a, b, QStringLiteral("c")});
    QWidget other;
    lookElsewhere(other);
    QVERIFY(scene.begin());
    scene.program.clickRowButton(1); // waits, so it goes
    QCOMPARE(scene.names(), (QStringList{a, QStringLiteral("c")}));
    QVERIFY(scene.end({a, QStringLiteral("c")}));
    QCOMPARE(scene.program.desktop.notifications.texts,
             QStringList{lines({text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL").section(u'\n', 0, 0),
                                text("IDS_TXT_RUN_CONVERTED").arg(2),
                                text("IDS_TXT_RUN_NOT_CONVERTED").arg(0)})});
}

// The user has just done it.
void TestRunCompanion::aStopIsNoNews() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QWidget other;
    lookElsewhere(other);
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.desktop.notifications.texts.isEmpty());
}

void TestRunCompanion::theIconShowsTheShareOfTheRun() {
    RunScene scene;
    const FakeLauncherProgress& launcher = scene.program.desktop.launcher;
    scene.add({a, b}); // 10 s each
    QVERIFY(scene.begin());
    QCOMPARE(launcher.shares, (QList<double>{0, 0.05}));
    scene.go(a, 1);
    QVERIFY(eventually([&] { return launcher.shares.size() == 3; }));
    QCOMPARE(launcher.shares.last(), 0.1);
    scene.goToEnd(a);
    QVERIFY(scene.waitForPercent(1, 10));
    QCOMPARE(launcher.shares.last(), 0.55);
    QVERIFY(std::is_sorted(launcher.shares.begin(), launcher.shares.end()));
    QVERIFY(scene.end({b}));
    QCOMPARE(launcher.hidden, 1);
    QVERIFY(launcher.shares.isEmpty());
}

QString TestRunCompanion::timeLeft(RunScene& scene, int row) {
    const FileTableModel* const model =
        scene.program.window().findChild<FileTableView*>()->fileModel();
    const QModelIndex bar = model->index(row, static_cast<int>(TableColumn::Progress));
    const QString tip = bar.data(Qt::ToolTipRole).toString();
    return tip == bar.data(Qt::AccessibleDescriptionRole).toString() ? tip
                                                                     : QStringLiteral("differ");
}

void TestRunCompanion::theBarTellsTheTimeLeft() {
    TimeLeft::Moment now{0};
    RunScene scene;
    scene.program.engine().watch().setClock([&] { return now; });
    scene.add({a, b}); // 10 s each
    QVERIFY(scene.begin());
    // 1 s of 10 s has come at once: that tells nothing yet.
    QCOMPARE(timeLeft(scene, 0), QString());
    now = 20s;
    scene.go(a, 1);
    QVERIFY(scene.waitForPercent(0, 20));
    // One more took 20 s: 8 s of this one and 10 s of the other are left.
    const auto both = [](const QString& movie, const QString& run) {
        return lines({text("IDS_TXT_LEFT_MOVIE").arg(movie), text("IDS_TXT_LEFT_RUN").arg(run)});
    };
    const QString early =
        both(text("IDS_TXT_LEFT_MINUTES").arg(3), text("IDS_TXT_LEFT_MINUTES").arg(6));
    QCOMPARE(timeLeft(scene, 0), early);
    const auto* const line = scene.program.widget<QLabel>("quietLine");
    QCOMPARE(line->accessibleName(),
             text("IDS_TXT_LEFT_RUN").arg(text("IDS_TXT_LEFT_MINUTES").arg(6)));
    QVERIFY(line->isVisible());
    QCOMPARE(timeLeft(scene, 1), QString());

    // An hour's pause counts for nothing.
    QVERIFY(scene.pause(0, a, 2));
    QCOMPARE(timeLeft(scene, 0), QString());
    QVERIFY(!line->isVisible());
    now += 1h;
    scene.program.clickRowButton(0);
    now += 10s;
    scene.go(a, 3);
    QVERIFY(scene.waitForPercent(1, 10));
    QCOMPARE(timeLeft(scene, 0), QString());
    now += 5s;
    scene.go(b, 1);
    QVERIFY(scene.waitForPercent(1, 20));
    QCOMPARE(timeLeft(scene, 1),
             both(text("IDS_TXT_LEFT_SECONDS").arg(40), text("IDS_TXT_LEFT_SECONDS").arg(40)));
    QVERIFY(line->isVisible());
    QVERIFY(scene.end({b}));
    QVERIFY(!line->isVisible());
}

REELSHIFT_TEST(tst_run_companion, TestRunCompanion, QApplication)
#include "tst_run_companion.moc"
