#include "TestProgram.h"
#include "app/RunChecks.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"

#include <QApplication>
#include <QFile>
#include <QTest>

#include <signal.h>

namespace {

/// Process numbers of all that this process has started and that still live, filters and all.
QList<qint64> descendants(qint64 pid) {
    QList<qint64> found;
    for (const QString& thread :
         QDir(QStringLiteral("/proc/%1/task").arg(pid)).entryList(QDir::Dirs)) {
        QFile file(QStringLiteral("/proc/%1/task/%2/children").arg(pid).arg(thread));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& each : file.readAll().simplified().split(' ')) {
            if (!each.isEmpty())
                found << each.toLongLong() << descendants(each.toLongLong());
        }
    }
    return found;
}

bool areGone(const QList<qint64>& pids) {
    return eventually([&] {
        return std::all_of(pids.begin(), pids.end(), [](qint64 pid) {
            const char state = processState(pid);
            return state == 0 || state == 'Z';
        });
    });
}

} // namespace

/// What every release of ffmpeg comes to through the launcher, and that what the user does to a run
/// is done to the encoder behind it.
class TestReleases final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void converted_data() { releases(); }
    void converted();
    void theDiskIsFull_data() { releases(); }
    void theDiskIsFull();
    void theIndexDoesNotFit_data() { releases(); }
    void theIndexDoesNotFit();
    void damagedBeforeTheFirstPosition_data() { releases(); }
    void damagedBeforeTheFirstPosition();
    void failed_data() { oneOfEachKind(); }
    void failed();
    void noPicture_data() { releases(); }
    void noPicture();
    void marksInNamesAndTitles_data() { oneOfEachKind(); }
    void marksInNamesAndTitles();
    void pauseAndResume_data() { oneOfEachKind(); }
    void pauseAndResume();
    void stop_data() { oneOfEachKind(); }
    void stop();
    void removal_data() { oneOfEachKind(); }
    void removal();
    void close_data() { oneOfEachKind(); }
    void close();
    void withoutX264();
    void theEncoderGoesAway();

private:
    static void releases() { rows({"4.4", "5.1", "6.0", "6.1", "7.0", "7.1", "8.0", "9.0"}); }
    static void oneOfEachKind() { rows({"5.1", "6.1", "7.1"}); }
    static void rows(std::initializer_list<const char*> names) {
        QTest::addColumn<QString>("release");
        for (const char* each : names)
            QTest::newRow(each) << QString::fromLatin1(each);
    }
};

void TestReleases::converted() {
    QFETCH(const QString, release);
    RunScene scene;
    scene.program.useLauncher(release);
    scene.add({a, b});
    QCOMPARE(scene.program.files().rowCount(), 2);
    QVERIFY(scene.begin());
    QVERIFY(scene.waitForPercent(0, 10));
    QVERIFY(scene.end({a, b}));
    QCOMPARE(scene.program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(scene.program.files().rowCount(), 0);
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
    QVERIFY(descendants(QCoreApplication::applicationPid()).isEmpty());
}

void TestReleases::theDiskIsFull() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    program.add(
        {program.movie(QStringLiteral("a.mp4"))
             .encode({"create", "header", "progress 2", "write-failure No space left on device",
                      "wait 120", "summary 2", "print Conversion failed!\\n", "exit 228"})
             .write(),
         program.movie(QStringLiteral("b.mp4")).write()});
    program.boxes.promise(okAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList({linesOf({"IDS_TXT_POPUP_MEMORYFULL", "IDS_TXT_DATA_NOTCONVERTED"}),
                          getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

void TestReleases::theIndexDoesNotFit() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "first-report", "progress 9", "write 10",
                              "index-failure No space left on device"})
                     .write()});
    program.boxes.promise(okAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages().first(),
             linesOf({"IDS_TXT_POPUP_MEMORYFULL", "IDS_TXT_DATA_NOTCONVERTED"}));
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

void TestReleases::damagedBeforeTheFirstPosition() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "damage", "first-report", "progress 5",
                              "write 10", "summary 10"})
                     .write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    program.boxes.promise(1001); // skips it
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.messages().first().startsWith(
        linesOf({"IDS_TXT_POPUP_ERROR", "IDS_TXT_POPUP_WANTTOSKIP"})));
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
}

void TestReleases::failed() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    program.add(
        {program.movie(QStringLiteral("a.mp4"))
             .encode({"create", "header", "summary N/A", "print Conversion failed!\\n", "exit 69"})
             .write(),
         program.movie(QStringLiteral("b.mp4")).write()});
    program.boxes.promise(1001); // skips it
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(program.boxes.messages().first().endsWith(QStringLiteral("a.mp4")));
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
}

/// An encrypted movie whose sound can be copied: the encoder itself finds nothing wrong.
void TestReleases::noPicture() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "write 100", "summary 0"})
                     .write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    program.boxes.promise(1001); // skips it
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(program.boxes.messages().first().endsWith(QStringLiteral("a.mp4")));
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
}

/// Nothing of it is the last report, nor a failure.
void TestReleases::marksInNamesAndTitles() {
    QFETCH(const QString, release);
    ControllerFixture program;
    program.useLauncher(release);
    const QString name = QStringLiteral("x\nframe=  1 Lsize= 1 time=00:00:09.00.mp4");
    const QString movie =
        program.movie(name)
            .encode({"create", "header title=\"frame= 1 Lsize= time=00:00:09.00\"", "progress 1",
                     "wait-file go", "print Conversion failed!\\n", "exit 1"})
            .write();
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 1);
    program.click("btnConvertFile");
    const JobPtr run = program.engine().jobs().current();
    QVERIFY(eventually(
        [&] { return run->row.record->text(key::progressValue) == QStringLiteral("10 %"); }));
    QVERIFY(!run->life().isSummarySeen());
    program.boxes.promise(1001);
    program.boxes.promise(okAnswer);
    writeContent(program.movies() + QStringLiteral("/go"));
    QVERIFY(program.waitUntilIdle());
    QVERIFY(isWaiting(0, program));
}

void TestReleases::pauseAndResume() {
    QFETCH(const QString, release);
    RunScene scene;
    scene.program.useLauncher(release);
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    QCOMPARE(scene.program.status(0), status::STATPS);
    // The process that the program knows is the encoder, and it is the one that stands still.
    QCOMPARE(qint64(scene.run()->task()->processIdentifier()), scene.encoderPid());
    QCOMPARE(scene.encoderState(), 'T');
    scene.program.clickRowButton(0);
    QVERIFY(eventually([&] { return scene.encoderState() != 'T'; }));
    QVERIFY(scene.end({a}));
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.program.encodes().size(), 1);
}

void TestReleases::stop() {
    QFETCH(const QString, release);
    RunScene scene;
    scene.program.useLauncher(release);
    scene.add({a, b});
    QVERIFY(scene.begin());
    const QList<qint64> processes = descendants(QCoreApplication::applicationPid());
    QVERIFY(processes.contains(scene.encoderPid()));
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(isWaiting(0, scene.program));
    QVERIFY(isWaiting(1, scene.program));
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(areGone(processes));
}

void TestReleases::removal() {
    QFETCH(const QString, release);
    RunScene scene;
    scene.program.useLauncher(release);
    scene.add({a, b});
    QVERIFY(scene.begin());
    const qint64 first = scene.encoderPid();
    const QList<qint64> processes = descendants(QCoreApplication::applicationPid());
    QVERIFY(processes.contains(first));
    scene.program.files().setCheck(0, 1);
    scene.program.files().setCheck(1, 0);
    scene.program.click("btnRemoveFile");
    QVERIFY(areGone(processes));
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.end({b}));
    QVERIFY(!scene.hasOutput(a));
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.ranAlone());
}

void TestReleases::close() {
    QFETCH(const QString, release);
    RunScene scene;
    scene.program.useLauncher(release);
    scene.add({a, b});
    QVERIFY(scene.begin());
    const QList<qint64> processes = descendants(QCoreApplication::applicationPid());
    QVERIFY(processes.contains(scene.encoderPid()));
    scene.program.quit();
    QVERIFY(areGone(processes));
    QVERIFY(!scene.hasOutput(a));
}

/// A job is a failed conversion then; that it would be was said when the movie was added.
void TestReleases::withoutX264() {
    ControllerFixture program;
    program.useLauncher(QStringLiteral("7.1 without-x264"));
    program.boxes.promise(okAnswer);
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.boxes.promise(1001);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages().first(), getLocalString("IDS_TXT_ENCODER_UNSUITABLE"));
    QVERIFY(program.boxes.allKept());
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

void TestReleases::theEncoderGoesAway() {
    ControllerFixture program;
    program.useLauncher(QStringLiteral("7.1"));
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.useLauncher(QString());
    program.boxes.promise(1001);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

REELSHIFT_TEST(tst_releases, TestReleases, QApplication)
#include "tst_releases.moc"
