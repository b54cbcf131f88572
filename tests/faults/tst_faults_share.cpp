#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/PersistedFolders.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "convert/RunNote.h"
#include "faults/FaultRows.h"
#include "platform/DeadShare.h"
#include "platform/MainThread.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>

#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

// Of what may take two seconds at the most; a share that holds the program would take for ever.
constexpr qint64 longestHold = 12000; // milliseconds

} // namespace

/// File systems that do not answer: every call hangs until the share is back. Nothing can be
/// finished there; the window must not hang with it, and nothing may be left or lost.
class TestFaultsShare final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startWithAFolderFileThatDoesNotAnswer();
    void startWithAnOutputFolderThatDoesNotAnswer();
    void endWithAFolderFileThatDoesNotAnswer();
    void closeWhileEncodingThere();
    void closeWhilePausedThere();
    void closeDuringAWaitForTheShare();
    void closeDuringAStopThere();
    void removeAPausedRowThere();
    void stopWhileTheSourceOfAFailureIsLookedFor_data();
    void stopWhileTheSourceOfAFailureIsLookedFor();
    void aStoppedRunAsksNothingInTheNextOne();
    void startAfterADeathInARunThere();
    void aStateFolderThatDoesNotAnswer();
    void theShareComesBackInTime_data();
    void theShareComesBackInTime();

private:
    void report(const char* fault, const char* answer, const QString& outcome);

    FaultTable table_;
};

void TestFaultsShare::report(const char* fault, const char* answer, const QString& outcome) {
    table_.add(
        {QString::fromLatin1(fault), QStringLiteral("scripted"), QString::fromLatin1(answer),
         outcome,
         QTest::currentTestFailed() ? QStringLiteral("FAILED") : QStringLiteral("survived")});
}

namespace {

/// A program whose output folder is on a share, with a run that is under way there.
class ShareScene final {
public:
    explicit ShareScene(const QStringList& encode) {
        program.engine().setPatience({1s, 500ms});
        QDir().mkpath(folder());
        program.widget<QLineEdit>("outputFolderPath")->setText(folder());
        movie = program.movie(badName).encode(encode).write();
        program.add({movie, program.movie(goodName).write()});
        source = contentOf(movie);
        older = writeContent(folder() + QStringLiteral("/older.mp4"), "old");
        program.click("btnConvertFile");
    }
    ~ShareScene() { share.reset(); }
    Q_DISABLE_COPY_MOVE(ShareScene)

    [[nodiscard]] QString folder() const { return program.path(QStringLiteral("share")); }
    [[nodiscard]] QString output() const { return folder() + u'/' + badOutput; }
    [[nodiscard]] bool isUnderWay() {
        return QTest::qWaitFor(
            [this] {
                return program.files().recordAt(0)->contains(key::progressValue) &&
                       QFile::exists(output());
            },
            20000);
    }
    void dies() { share = std::make_unique<DeadShare>(folder()); }
    /// Ends the program as main() does; false when a thread is left behind. Its time in `held`.
    [[nodiscard]] bool end() {
        QElapsedTimer clock;
        clock.start();
        program.app().applicationShouldTerminateAfterLastWindowClosed();
        const bool ended = program.app().awaitEnd();
        held = clock.elapsed();
        return ended;
    }
    [[nodiscard]] bool isUntouched() const {
        return contentOf(movie) == source && contentOf(older) == QByteArray("old");
    }

    ControllerFixture program;
    std::unique_ptr<DeadShare> share;
    QString movie;
    QString older;
    QByteArray source;
    qint64 held = 0;
};

/// Does this once while the main thread waits and a call hangs.
class InTheWait final {
public:
    InTheWait(ControllerFixture& program, const std::function<void()>& action) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, &program, action] {
            if (!program.mainThread().isWaiting() || DeadShare::hangingCalls() == 0)
                return;
            timer_.stop();
            action();
        });
        timer_.start(1);
    }

private:
    QTimer timer_;
};

const QStringList talking =
    steps({"create", "header", "write 10", "loop 10000", "progress 1", "wait 20", "end"});

} // namespace

void TestFaultsShare::startWithAFolderFileThatDoesNotAnswer() {
    ControllerFixture program;
    program.quit();
    const QString file = program.output(PersistedFolders::DEFAULT_PATH_COMPONENT);
    QVERIFY(QFile::remove(file));
    // It would hold whoever opens it.
    QCOMPARE(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    QElapsedTimer clock;
    clock.start();
    program.restart();
    QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(program.shownOutputFolder(), program.documents());
    const int writer = ::open(QFile::encodeName(file).constData(), O_WRONLY | O_NONBLOCK);
    QVERIFY2(writer < 0, "somebody opened it");
    report("the folder file is a FIFO", "none asked", QStringLiteral("the default folder"));
}

void TestFaultsShare::startWithAnOutputFolderThatDoesNotAnswer() {
    ControllerFixture program;
    program.quit();
    const QString folder = program.path(QStringLiteral("share"));
    QDir().mkpath(folder);
    writeContent(program.output(PersistedFolders::DEFAULT_PATH_COMPONENT), folder.toUtf8());
    writeContent(program.output(PersistedFolders::ADD_FILE_COMPONENT), program.movies().toUtf8());
    {
        const DeadShare share(folder);
        QElapsedTimer clock;
        clock.start();
        program.restart();
        QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    }
    QCOMPARE(program.shownOutputFolder(), program.documents());
    program.quit();
    QCOMPARE(contentOf(program.output(PersistedFolders::ADD_FILE_COMPONENT)),
             program.movies().toUtf8());
    report("the remembered output folder is on a dead share", "none asked",
           QStringLiteral("the default folder"));
}

void TestFaultsShare::endWithAFolderFileThatDoesNotAnswer() {
    ControllerFixture program;
    {
        const DeadShare share(program.documents());
        QElapsedTimer clock;
        clock.start();
        program.app().applicationShouldTerminateAfterLastWindowClosed();
        QVERIFY(!program.app().awaitEnd()); // main() then leaves the thread behind
        QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    }
    QVERIFY(program.app().awaitEnd());
    report("the documents folder is on a dead share", "close", QStringLiteral("ended"));
}

void TestFaultsShare::closeWhileEncodingThere() {
    ShareScene scene(talking);
    QVERIFY(scene.isUnderWay());
    scene.dies();
    QVERIFY(!scene.end());
    QVERIFY2(scene.held < longestHold, qPrintable(QString::number(scene.held)));
    QVERIFY(noEncoderLives(scene.program.encodes()));
    scene.share.reset();
    QVERIFY(scene.program.app().awaitEnd());
    // What hung has come back and done its work.
    QVERIFY(!QFile::exists(scene.output()));
    QVERIFY(scene.isUntouched());
    report("the output's share dies while it is encoded", "close", QStringLiteral("ended"));
}

void TestFaultsShare::closeWhilePausedThere() {
    ShareScene scene(talking);
    QVERIFY(scene.isUnderWay());
    scene.program.clickRowButton(0);
    QTRY_COMPARE(scene.program.status(0), status::STATPS);
    scene.dies();
    QVERIFY(!scene.end());
    QVERIFY2(scene.held < longestHold, qPrintable(QString::number(scene.held)));
    QVERIFY(noEncoderLives(scene.program.encodes()));
    scene.share.reset();
    QVERIFY(scene.program.app().awaitEnd());
    QVERIFY(!QFile::exists(scene.output()));
    QVERIFY(scene.isUntouched());
    report("the output's share dies while it is paused", "close", QStringLiteral("ended"));
}

void TestFaultsShare::closeDuringAWaitForTheShare() {
    ControllerFixture program;
    program.add({program.movie(badName).write()});
    auto share = std::make_unique<DeadShare>(program.documents());
    QElapsedTimer clock;
    clock.start();
    const InTheWait close(program, [&] { program.window().close(); });
    program.click("btnConvertFile");
    QVERIFY(program.mainThread().isClosing());
    QVERIFY(!program.app().awaitEnd());
    QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    share.reset();
    QVERIFY(program.app().awaitEnd());
    QVERIFY(program.encodes().isEmpty());
    report("Convert waits for the output folder's dead share", "close", QStringLiteral("ended"));
}

void TestFaultsShare::closeDuringAStopThere() {
    ShareScene scene(talking);
    QVERIFY(scene.isUnderWay());
    scene.dies();
    scene.program.boxes.promise(1001);
    const InTheWait close(scene.program, [&] { scene.program.window().close(); });
    scene.program.click("btnStop");
    QVERIFY(scene.program.mainThread().isClosing());
    QVERIFY(!scene.end());
    QVERIFY(noEncoderLives(scene.program.encodes()));
    scene.share.reset();
    QVERIFY(scene.program.app().awaitEnd());
    QVERIFY(!QFile::exists(scene.output()));
    QVERIFY(scene.isUntouched());
    report("a stop waits for the output's dead share", "close", QStringLiteral("ended"));
}

void TestFaultsShare::removeAPausedRowThere() {
    ShareScene scene(talking);
    QVERIFY(scene.isUnderWay());
    scene.program.clickRowButton(0);
    QTRY_COMPARE(scene.program.status(0), status::STATPS);
    scene.dies();
    scene.program.files().setCheck(1, 0);
    QElapsedTimer clock;
    clock.start();
    scene.program.click("btnRemoveFile");
    QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(scene.program.files().rowCount(), 1);
    scene.share.reset();
    scene.program.boxes.promise(okAnswer);
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(!QFile::exists(scene.output()));
    QVERIFY(QFile::exists(scene.folder() + u'/' + goodOutput));
    QVERIFY(scene.isUntouched());
    report("the output's share dies while it is paused", "Remove",
           QStringLiteral("b converted once it is back"));
}

void TestFaultsShare::stopWhileTheSourceOfAFailureIsLookedFor_data() {
    QTest::addColumn<bool>("stop");
    QTest::newRow("Stop") << true;
    QTest::newRow("Remove") << false;
}

// The source's share has gone; the request does not wait for it, and nothing more is asked.
void TestFaultsShare::stopWhileTheSourceOfAFailureIsLookedFor() {
    QFETCH(bool, stop);
    ControllerFixture program;
    const QString go = program.path(QStringLiteral("go"));
    program.add(
        {program.movie(badName)
             .encode(QStringList{QStringLiteral("create"), QStringLiteral("header"),
                                 QStringLiteral("progress 1"), QStringLiteral("wait-file ") + go,
                                 QStringLiteral("exit 1")})
             .write()});
    program.files().setCheck(0, 1);
    program.click("btnConvertFile");
    QTRY_VERIFY(program.files().recordAt(0)->contains(key::progressValue));
    auto share = std::make_unique<DeadShare>(program.movies());
    writeContent(go);
    QTRY_VERIFY(DeadShare::hangingCalls() > 0);
    // Where the request waits for the share all the same, the test comes to its end, too.
    bool heldUp = false;
    QTimer patience;
    connect(&patience, &QTimer::timeout, &patience, [&] {
        heldUp = true;
        share.reset();
    });
    patience.start(5000);
    if (stop)
        program.boxes.promise(1001);
    program.boxes.answerTheRest(okAnswer);
    program.click(stop ? "btnStop" : "btnRemoveFile");
    QVERIFY(program.waitUntilIdle());
    patience.stop();
    QVERIFY(!heldUp);
    QVERIFY(runControlsAre(true, program));
    QCOMPARE(program.files().rowCount(), stop ? 1 : 0);
    if (stop)
        QVERIFY(isWaiting(0, program));
    QVERIFY(!QFile::exists(program.output(badOutput)));
    share.reset();
    QTRY_COMPARE(DeadShare::hangingCalls(), 0);
    QCoreApplication::processEvents();
    QVERIFY(!program.boxes.messages().contains(getLocalString("IDS_TXT_POPUP_UNEXPECTEDREMOVE")));
    for (const QString& message : program.boxes.messages())
        QVERIFY2(!message.startsWith(getLocalString("IDS_TXT_POPUP_ERROR")), qPrintable(message));
    report("the source's share dies, then the encoder fails", stop ? "Stop button, OK" : "Remove",
           stop ? QStringLiteral("a.mp4 waiting") : QStringLiteral("no row"));
}

void TestFaultsShare::aStoppedRunAsksNothingInTheNextOne() {
    ControllerFixture program;
    const QString movie = program.movie(badName).write();
    program.add({movie});
    // To replace it would overwrite the source: that fails without an encoder.
    QVERIFY(QFile::remove(program.output(badOutput)) || !QFile::exists(program.output(badOutput)));
    QCOMPARE(::link(QFile::encodeName(movie).constData(),
                    QFile::encodeName(program.output(badOutput)).constData()),
             0);
    std::unique_ptr<DeadShare> share;
    program.boxes.promise(1003, false,
                          [&] { share = std::make_unique<DeadShare>(program.movies()); });
    program.click("btnConvertFile");
    QTRY_COMPARE(DeadShare::hangingCalls(), 1);
    program.boxes.promise(1001);
    program.click("btnStop");
    QVERIFY(program.waitUntilIdle());
    program.click("btnConvertFile");
    QTRY_COMPARE(DeadShare::hangingCalls(), 2);
    program.boxes.promise(1001); // keep both
    program.boxes.promise(okAnswer);
    program.boxes.answerTheRest(okAnswer);
    share.reset();
    QVERIFY(program.waitUntilIdle());
    QVERIFY(program.boxes.allKept());
    const auto firstLines = [](QStringList texts) {
        for (QString& text : texts)
            text = text.section(u'\n', 0, 0);
        return texts;
    };
    QCOMPARE(firstLines(program.boxes.messages()),
             firstLines(textsOf({"IDS_TXT_POPUP_SAMENAME", "IDS_TXT_POPUP_STOPCONVERTING",
                                 "IDS_TXT_POPUP_SAMENAME", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"})));
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(program.files().rowCount(), 0);
    report("the source's share dies, the run is stopped and begun again", "Stop, Convert",
           QStringLiteral("a converted"));
}

void TestFaultsShare::theShareComesBackInTime_data() {
    QTest::addColumn<bool>("stop");
    QTest::newRow("finishes") << false;
    QTest::newRow("stopped") << true;
}

void TestFaultsShare::theShareComesBackInTime() {
    QFETCH(bool, stop);
    ShareScene scene(
        steps({"create", "header", "progress 1", "write 4096", "wait-file go", "summary 10"}));
    QVERIFY(scene.isUnderWay());
    scene.dies();
    if (stop) {
        scene.program.boxes.promise(1001);
        const InTheWait back(scene.program, [&] { scene.share.reset(); });
        scene.program.click("btnStop");
    } else {
        scene.program.boxes.promise(okAnswer);
        writeContent(scene.program.path(QStringLiteral("movies/go")));
        QTRY_VERIFY(DeadShare::hangingCalls() > 0);
        scene.share.reset();
    }
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.boxes.allKept());
    QVERIFY(runControlsAre(true, scene.program));
    QCOMPARE(QFile::exists(scene.output()), !stop);
    QVERIFY(scene.isUntouched());
    report("the output's share dies and comes back", stop ? "Stop button, OK" : "OK",
           stop ? QStringLiteral("a.mp4 waiting") : QStringLiteral("a converted, b converted"));
}

// The window is up and can be used meanwhile.
void TestFaultsShare::startAfterADeathInARunThere() {
    ControllerFixture program;
    program.quit();
    const QString share = program.path(QStringLiteral("share"));
    RunNote note;
    note.output = QFile::encodeName(share + QStringLiteral("/a.mp4"));
    note.source = QFile::encodeName(program.movies() + QStringLiteral("/a.mp4"));
    QDir().mkpath(program.stateFolder());
    writeContent(program.stateFolder() + QStringLiteral("/run-1.note"), note.text());
    {
        const DeadShare dead(share);
        QElapsedTimer clock;
        clock.start();
        program.restart();
        QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
        QTRY_VERIFY(DeadShare::hangingCalls() > 0);
        program.add({program.movie(goodName).write()});
        program.boxes.promise(okAnswer);
        QVERIFY(program.runToEnd());
        QCOMPARE(program.boxes.seen.size(), 1);
        clock.start();
        program.app().applicationShouldTerminateAfterLastWindowClosed();
        QVERIFY(!program.app().awaitEnd()); // main() then leaves the thread behind
        QVERIFY2(clock.elapsed() < longestHold, qPrintable(QString::number(clock.elapsed())));
    }
    QVERIFY(program.app().awaitEnd());
    QCOMPARE(program.boxes.seen.size(), 1);
    report("the output of an interrupted run is on a dead share", "none asked",
           QStringLiteral("started, a movie converted"));
}

void TestFaultsShare::aStateFolderThatDoesNotAnswer() {
    ControllerFixture program;
    const QString state = program.path(QStringLiteral("state"));
    QDir().mkpath(state);
    program.add({program.movie(goodName).write()});
    program.boxes.promise(okAnswer);
    {
        const DeadShare share(state);
        QVERIFY(program.runToEnd());
        QVERIFY(DeadShare::hangingCalls() > 0);
        QVERIFY(program.boxes.allKept());
        QVERIFY(QFile::exists(program.output(goodOutput)));
    }
    program.quit();
    QVERIFY(namesIn(program.stateFolder()).isEmpty());
    report("the state folder is on a dead share", "none asked", QStringLiteral("a converted"));
}

REELSHIFT_TEST(tst_faults_share, TestFaultsShare, QApplication)
#include "tst_faults_share.moc"
