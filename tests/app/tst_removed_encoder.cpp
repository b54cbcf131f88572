#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QFile>
#include <QTest>

using namespace std::chrono_literals;

/// What becomes of an encoder whose row is removed, and of the run behind it.
class TestRemovedEncoder final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aShorterMovieAfterARemovedPausedOne();
    void nothingAfterARemovedPausedOne();
    void removalInTheHandlersSecond();
    void removalUnderABoxOfItsEncoder_data();
    void removalUnderABoxOfItsEncoder();
    void everyRowRemoved();
    void theConvertingRowRemovedLast();
};

// The dying encoder's summary is far short of its movie, the next one's stands beyond it.
void TestRemovedEncoder::aShorterMovieAfterARemovedPausedOne() {
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

void TestRemovedEncoder::nothingAfterARemovedPausedOne() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    scene.program.click("btnRemoveFile");
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.files().pausedList.empty());
    for (const char* name : {"btnConvertFile", "btnAddFile", "btnSelectFolder"})
        QVERIFY(scene.button(name)->isEnabled());
    QVERIFY(scene.program.boxes.seen.isEmpty());
    scene.add({b});
    QVERIFY(scene.begin());
    QVERIFY(scene.end({b}));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestRemovedEncoder::removalInTheHandlersSecond() {
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

void TestRemovedEncoder::removalUnderABoxOfItsEncoder_data() {
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

void TestRemovedEncoder::removalUnderABoxOfItsEncoder() {
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

void TestRemovedEncoder::everyRowRemoved() {
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
    QVERIFY(scene.button("btnConvertFile")->isEnabled());
    QVERIFY(!scene.button("btnRemoveFile")->isEnabled());
}

void TestRemovedEncoder::theConvertingRowRemovedLast() {
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

REELSHIFT_TEST(tst_removed_encoder, TestRemovedEncoder, QApplication)
#include "tst_removed_encoder.moc"
