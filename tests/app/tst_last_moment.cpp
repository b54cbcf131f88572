#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "platform/MainThread.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

/// What is asked for as an encoder ends, or as soon as it has.
class TestLastMoment final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void convertAsSoonAsAStopAllowsIt_data();
    void convertAsSoonAsAStopAllowsIt();
    void pauseStopAndRemovalAsItFinishes_data();
    void pauseStopAndRemovalAsItFinishes();
};

void TestLastMoment::convertAsSoonAsAStopAllowsIt_data() {
    QTest::addColumn<QStringList>("encode");

    const QStringList talking{QStringLiteral("create"),      QStringLiteral("write 100"),
                              QStringLiteral("loop 100000"), QStringLiteral("progress 9"),
                              QStringLiteral("wait 3"),      QStringLiteral("end")};
    QTest::newRow("talking") << talking;
    QTest::newRow("silent") << QStringList{QStringLiteral("create"), QStringLiteral("write 100"),
                                           QStringLiteral("progress 9"), QStringLiteral("hang")};
    QTest::newRow("deaf") << (QStringList{QStringLiteral("on-term ignore")} + talking);
}

void TestLastMoment::convertAsSoonAsAStopAllowsIt() {
    QFETCH(QStringList, encode);
    RunScene scene;
    scene.addScript(a, encode);
    scene.add({b});
    QVERIFY(scene.begin());
    const JobPtr old = scene.run();
    const qint64 oldPid = scene.encoderPid();
    QTimer inWait;
    connect(&inWait, &QTimer::timeout, this, [&] {
        if (!scene.program.mainThread().isWaiting() || !scene.button("btnConvertFile")->isEnabled())
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

void TestLastMoment::pauseStopAndRemovalAsItFinishes_data() {
    QTest::addColumn<QString>("action");

    for (const char* action : {"pause", "stop", "removal"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

// A little later each time, from before its last words to after its end.
void TestLastMoment::pauseStopAndRemovalAsItFinishes() {
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

REELSHIFT_TEST(tst_last_moment, TestLastMoment, QApplication)
#include "tst_last_moment.moc"
