#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunChecks.h"
#include "app/RunScene.h"
#include "convert/ConversionEngine.h"
#include "platform/ChildProcess.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

namespace {

constexpr int timedOut = 99;

} // namespace

/// Closing the program, whatever it is about: no encoder and no partial output is left, and nobody
/// else's file is gone.
class TestQuit final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void encoding_data();
    void encoding();
    void aReplacedOutputThatWasNotTouchedStays();
    void beforeTheLaunch();
    void aQuestionAboutTheSource();
    void aQuestionAboutAnError();
    void aFileThatIsNotWhole_data();
    void aFileThatIsNotWhole();
    void underTheSummary();
    void betweenTwoJobs();
    void pausedAndSuspended();
    void theLaunchWithoutArguments();
    void aWaitingRowThatNamesItsOwnSource();
    void theLastWindowClosedKeepsTheFolders();
    void theSessionEndsUnderABox();
    void closeUnderABox();
    void closeWhilePaused();
    void endedUnderABox();

private:
    template <typename When> static int runUntilQuit(ControllerFixture& program, When when);
    static void terminateUnderBox(ControllerFixture& program, int boxes);
};

/// Runs the main loop as main() does and terminates the program as soon as `when` says so.
template <typename When> int TestQuit::runUntilQuit(ControllerFixture& program, When when) {
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, qApp, [&] {
        if (!when())
            return;
        watch.stop();
        program.app().quit();
    });
    watch.start(1);
    QTimer::singleShot(15000, &watch, [] { QCoreApplication::exit(timedOut); });
    const int result = QApplication::exec();
    program.quit();
    return result;
}

/// Starts the run and terminates the program under its `boxes`th box.
void TestQuit::terminateUnderBox(ControllerFixture& program, int boxes) {
    QTimer::singleShot(0, qApp, [&] { program.click("btnConvertFile"); });
    const int result =
        runUntilQuit(program, [&, boxes] { return program.boxes.seen.size() == boxes; });
    QCOMPARE(result, 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestQuit::encoding_data() {
    QTest::addColumn<QStringList>("encode");
    const auto row = [](const char* name, std::initializer_list<const char*> steps) {
        QStringList lines;
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines;
    };
    row("just started", {"touch begun", "hang"});
    row("opening, deaf", {"ignore-term", "touch begun", "hang"});
    row("encoding", {"create", "header", "progress 1", "write 10", "touch begun", "hang"});
    row("encoding, deaf",
        {"ignore-term", "create", "header", "progress 1", "write 10", "touch begun", "hang"});
    row("opens its output after it was told to end",
        {"ignore-term", "touch begun", "wait 300", "create", "write 10", "hang"});
    row("says a lot", {"create", "write 10", "touch begun", "loop 100000", "flood 100000", "end"});
    row("in its last second",
        {"create", "header", "write 10", "summary 10", "touch begun", "hang"});
}

void TestQuit::encoding() {
    QFETCH(QStringList, encode);
    ControllerFixture program;
    const QString movie = program.movie(soleMovie).encode(encode).write();
    const QString other = program.movie(QStringLiteral("b.mp4")).write();
    const QString older = writeContent(program.output(QStringLiteral("b_HQ_640x480.mp4")), "old");
    const QByteArray source = contentOf(movie);
    program.add({movie, other});
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    program.quit();
    QVERIFY(noEncoderLives(program.encodes()));
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(namesIn(program.documents()).filter(QStringLiteral("HQ")),
             QStringList(QStringLiteral("b_HQ_640x480.mp4")));
    QCOMPARE(contentOf(older), QByteArray("old"));
    QCOMPARE(contentOf(movie), source);
    QVERIFY(QFile::exists(other));
}

void TestQuit::aReplacedOutputThatWasNotTouchedStays() {
    ControllerFixture program;
    const QString output = writeContent(program.output(soleOutput), "old");
    program.add({program.movie(soleMovie).encode({"touch begun", "hang"}).write()});
    program.boxes.promise(1003);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    program.quit();
    QVERIFY(noEncoderLives(program.encodes()));
    QCOMPARE(contentOf(output), QByteArray("old"));
}

void TestQuit::beforeTheLaunch() {
    ControllerFixture program;
    const QString output = writeContent(program.output(soleOutput), "old");
    program.add({program.movie(soleMovie).write()});
    terminateUnderBox(program, 1);
    // The question went without an answer: no launch, not even the one without arguments.
    QVERIFY(program.encodes().isEmpty());
    QCOMPARE(startsWithoutArguments(program), 0);
    QCOMPARE(contentOf(output), QByteArray("old"));
}

void TestQuit::aQuestionAboutTheSource() {
    ControllerFixture program;
    const QString movie = program.movie(soleMovie).write();
    program.add({movie, program.movie(QStringLiteral("b.mp4")).write()});
    QVERIFY(QFile::remove(movie));
    terminateUnderBox(program, 1);
    QCOMPARE(program.boxes.seen.size(), 1);
    QVERIFY(program.encodes().isEmpty());
}

void TestQuit::aQuestionAboutAnError() {
    ControllerFixture program;
    program.add({program.movie(soleMovie)
                     .encode({"create", "write 10", "header",
                              "print an error\\nframe=  1 time=00:00:01.00 bitrate=\\r", "hang"})
                     .write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    terminateUnderBox(program, 1);
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(noEncoderLives(program.encodes()));
    QVERIFY(namesIn(program.documents()).filter(QStringLiteral("HQ")).isEmpty());
}

void TestQuit::aFileThatIsNotWhole_data() {
    QTest::addColumn<QStringList>("encode");
    QTest::addColumn<bool>("underTheBox");
    QTest::addColumn<bool>("stays");
    const QStringList failed{
        QStringLiteral("create"),
        QStringLiteral("header"),
        QStringLiteral("progress 1"),
        QStringLiteral("write 10"),
        QStringLiteral("print Error writing trailer of x: No space left on device\\n"),
        QStringLiteral("summary 10"),
        QStringLiteral("exit 0")};
    QTest::newRow("the index did not fit, under the box") << failed << true << false;
    QTest::newRow("the index did not fit, before that is read") << failed << false << false;
    QTest::newRow("no summary, before that is read")
        << QStringList{QStringLiteral("create"), QStringLiteral("header"),
                       QStringLiteral("progress 1"), QStringLiteral("write 10")}
        << false << false;
    const QStringList begun{QStringLiteral("create"), QStringLiteral("header"),
                            QStringLiteral("progress 1"), QStringLiteral("write 10")};
    QTest::newRow("no picture, before that is read")
        << begun + QStringList{QStringLiteral("summary 0")} << false << false;
    QTest::newRow("damage, before that is read")
        << begun + QStringList{QStringLiteral("damage"), QStringLiteral("summary 10")} << false
        << false;
    QTest::newRow("whole, before that is read")
        << QStringList{QStringLiteral("create"), QStringLiteral("header"),
                       QStringLiteral("progress 1"), QStringLiteral("write 10"),
                       QStringLiteral("summary 10")}
        << false << true;
}

// Status 0 alone says nothing of the file.
void TestQuit::aFileThatIsNotWhole() {
    QFETCH(QStringList, encode);
    QFETCH(bool, underTheBox);
    QFETCH(bool, stays);
    ControllerFixture program(underTheBox ? std::chrono::milliseconds(50)
                                          : std::chrono::minutes(1));
    program.add({program.movie(soleMovie).encode(encode).write()});
    if (underTheBox) {
        terminateUnderBox(program, 1);
    } else {
        program.click("btnConvertFile");
        // Its reader waits a second, which is a minute here.
        QTRY_VERIFY(program.engine().jobs().current()->row.record->contains(key::progressValue));
        QVERIFY(program.engine().jobs().current()->task()->waitForEnd(std::chrono::seconds(20)));
        program.quit();
    }
    QCOMPARE(QFile::exists(program.output(soleOutput)), stays);
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestQuit::underTheSummary() {
    ControllerFixture program;
    program.add({program.movie(soleMovie).write()});
    terminateUnderBox(program, 1);
    // What was converted stays.
    QCOMPARE(contentOf(program.output(soleOutput)).size(), 4096);
}

void TestQuit::betweenTwoJobs() {
    ControllerFixture program(std::chrono::minutes(1));
    const QString movie = program.movie(soleMovie).write();
    program.add({movie, program.movie(QStringLiteral("b.mp4")).write()});
    QVERIFY(QFile::remove(movie));
    program.boxes.promise(1000); // skip: the second between the jobs begins
    QTimer::singleShot(0, qApp, [&] { program.click("btnConvertFile"); });
    QCOMPARE(runUntilQuit(program,
                          [&] {
                              return program.boxes.allKept() &&
                                     program.files().conversionTaskList.size() == 1;
                          }),
             0);
    QVERIFY(program.encodes().isEmpty());
}

void TestQuit::pausedAndSuspended() {
    ControllerFixture program;
    program.add({program.movie(soleMovie)
                     .encode({"create", "write 10", "header", "progress 1", "touch begun",
                              "loop 1000", "progress 2", "wait 20", "end"})
                     .write()});
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    program.clickRowButton(0);
    QTRY_COMPARE(program.status(0), status::STATPS);
    program.quit();
    QVERIFY(noEncoderLives(program.encodes()));
    QVERIFY(namesIn(program.documents()).filter(QStringLiteral("HQ")).isEmpty());
}

void TestQuit::theLaunchWithoutArguments() {
    ControllerFixture program;
    writeContent(program.output(soleOutput), "old");
    program.add({program.movie(soleMovie).write(),
                 program.movie(QStringLiteral("b.mp4")).encode({"touch begun", "hang"}).write()});
    program.boxes.promise(1002);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    QTRY_COMPARE(startsWithoutArguments(program), 1);
    program.quit();
    QVERIFY(noEncoderLives(program.starts()));
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("old"));
}

void TestQuit::aWaitingRowThatNamesItsOwnSource() {
    ControllerFixture program;
    program.state().outputFolder = program.movies(); // as Select Folder sets it
    const QString movie =
        program.movie(soleMovie).encode({"create", "header", "touch begun", "hang"}).write();
    const QString other = program.movie(QStringLiteral("b.mp4")).write();
    program.add({movie, other});
    QCOMPARE(program.files().recordAt(1)->text(key::path), other);
    QCOMPARE(program.files().recordAt(1)->text(key::conversionstat), status::CONRUNNING);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    program.quit();
    QVERIFY(QFile::exists(movie));
    QVERIFY(QFile::exists(other));
    QVERIFY(namesIn(program.documents()).filter(QStringLiteral("HQ")).isEmpty());
}

void TestQuit::theLastWindowClosedKeepsTheFolders() {
    ControllerFixture program;
    program.add({program.movie(soleMovie).encode({"create", "touch begun", "hang"}).write()});
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/begun"))));
    QVERIFY(program.app().applicationShouldTerminateAfterLastWindowClosed());
    QVERIFY(QFile::exists(program.documents() + QStringLiteral("/default_hevc_path.txt")));
    program.quit();
    QVERIFY(noEncoderLives(program.encodes()));
}

// The session manager's last word comes as the toolkit's own event.
void TestQuit::theSessionEndsUnderABox() {
    ControllerFixture program;
    const QString movie = program.movie(soleMovie).write();
    program.add({movie});
    QVERIFY(QFile::remove(movie));
    QTimer::singleShot(0, qApp, [&] { program.click("btnConvertFile"); });
    QTimer watch;
    connect(&watch, &QTimer::timeout, qApp, [&] {
        if (program.boxes.seen.isEmpty())
            return;
        watch.stop();
        QEvent end(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &end);
    });
    watch.start(1);
    QTimer::singleShot(15000, &watch, [] { QCoreApplication::exit(timedOut); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!program.window().isVisible());
    QVERIFY(QFile::exists(program.documents() + QStringLiteral("/default_hevc_path.txt")));
    program.quit();
    QVERIFY(program.encodes().isEmpty());
}

void TestQuit::closeUnderABox() {
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

void TestQuit::closeWhilePaused() {
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

void TestQuit::endedUnderABox() {
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

REELSHIFT_TEST(tst_quit, TestQuit, QApplication)
#include "tst_quit.moc"
