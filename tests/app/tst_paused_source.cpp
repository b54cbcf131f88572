#include "TestProgram.h"
#include "app/RunScene.h"

#include <QApplication>
#include <QFile>
#include <QTest>

/// The source of a paused movie that is not there any more when the row is resumed.
class TestPausedSource final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goneThenSkip();
    void goneThenTryAgain();
    void stillGoneAtTheNextTry();
};

void TestPausedSource::goneThenSkip() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const qint64 pid = scene.encoderPid();
    QVERIFY(QFile::remove(scene.source(a)));
    bool wasWaiting = false;
    bool hadEnded = false;
    scene.program.boxes.promise(1000, false, [&] {
        wasWaiting =
            scene.program.status(0) == status::STATWT && scene.program.state().isConversionRunning;
        hadEnded = processState(pid) == 0 && !scene.hasOutput(a);
    });
    scene.program.clickRowButton(0);
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QCOMPARE(scene.program.boxes.seen[0].message, text("IDS_TXT_POPUP_SOURCE_UNAVAILABLE"));
    QCOMPARE(scene.program.boxes.seen[0].buttons,
             (QStringList{text("IDS_BTN_POPUP_SKIP"), text("IDS_TXT_POPUP_TRYAGAIN")}));
    QVERIFY(wasWaiting);
    QVERIFY(hadEnded);
    QVERIFY(scene.program.files().pausedList.empty());
    QCOMPARE(scene.program.progressText(0), text("IDS_TXT_STATUS_WAITING"));
    QCOMPARE(scene.program.files().recordAt(0)->text(key::image), rowimage::remove);
    QCOMPARE(scene.program.files().conversionTaskList.size(), size_t(1));
    QVERIFY(scene.end({b}));
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestPausedSource::goneThenTryAgain() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    const QString aside = scene.program.path(QStringLiteral("aside"));
    QVERIFY(QFile::rename(scene.source(a), aside));
    scene.program.boxes.promise(1001, false,
                                [&] { QVERIFY(QFile::rename(aside, scene.source(a))); });
    scene.program.clickRowButton(0);
    QVERIFY(scene.end({a}));
    QCOMPARE(scene.program.encodes().size(), 2);
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.ranAlone());
}

void TestPausedSource::stillGoneAtTheNextTry() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QVERIFY(QFile::remove(scene.source(a)));
    scene.program.boxes.promise(1001);
    scene.program.boxes.promise(1001);
    scene.program.boxes.promise(1000);
    scene.program.clickRowButton(0);
    QVERIFY(scene.end({}));
    const QString gone = text("IDS_TXT_POPUP_SOURCE_UNAVAILABLE");
    QCOMPARE(scene.program.boxes.messages(),
             (QStringList{gone, gone, gone, text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QCOMPARE(scene.program.encodes().size(), 1);
    QCOMPARE(scene.program.status(0), status::STATWT);
}

REELSHIFT_TEST(tst_paused_source, TestPausedSource, QApplication)
#include "tst_paused_source.moc"
