#include "TestProgram.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"

#include <QApplication>
#include <QElapsedTimer>

namespace {

constexpr int endRun = 1000;

} // namespace

/// A job that goes wrong: what is asked, what becomes of the row, the output and the run.
class TestFailures final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void errorAndSkip_data();
    void errorAndSkip();
    void errorAndStop();
    void failedConversion_data();
    void failedConversion();
    void anEncoderThatCannotBeStarted_data();
    void anEncoderThatCannotBeStarted();
    void aSizeWithoutAHeightFailsTheJob();
    void theSourceIsGoneAndTheRunEnds();
    void theSourceIsGoneAndTriedAgain();
    void theSourceIsGoneAndStaysAway();
    void forAllOfTheErrorIsNeverReadByItself();
    void theConflictsMarkGuardsTheStoredError();
    void theConflictsMarkWithoutAStoredErrorAsks();
    void aStoredErrorAnswerOutlivesItsRun();
    void writeFailure_data();
    void writeFailure();
    void aStopDoesNotWaitForTheEncoderOfAFullDisk();
    void anEncoderThatHangsAfterItsSummaryIsKilled();
    void anInterruptedEncoderThatGoesOnIsKilled();
    void nothingIsAskedTwice();
    void removingTheRowDoesNotLoseTheEndOfTheRun_data();
    void removingTheRowDoesNotLoseTheEndOfTheRun();

private:
    static QString errorMessage(const QString& name);
    static void addOne(ControllerFixture& program, std::initializer_list<const char*> encode);
    static void shortenPatience(ControllerFixture& program);
};

QString TestFailures::errorMessage(const QString& name) {
    return linesOf({"IDS_TXT_POPUP_ERROR", "IDS_TXT_POPUP_WANTTOSKIP"}) + u'\n' + name;
}

/// A movie a.mp4 that is encoded like this, and a good one, b.mp4.
void TestFailures::addOne(ControllerFixture& program, std::initializer_list<const char*> encode) {
    program.add({program.movie(soleMovie).encode(encode).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    QCOMPARE(program.files().rowCount(), 2);
}

void TestFailures::shortenPatience(ControllerFixture& program) {
    program.engine().setPatience({std::chrono::milliseconds(300), std::chrono::milliseconds(300)});
}

void TestFailures::errorAndSkip_data() {
    QTest::addColumn<QString>("line");
    QTest::newRow("error") << QStringLiteral("[hevc @ 0x1] an error while decoding\\n");
    QTest::newRow("Invalid") << QStringLiteral("[hevc @ 0x1] Invalid NAL unit size\\n");
}

void TestFailures::errorAndSkip() {
    QFETCH(QString, line);
    ControllerFixture program;
    const QString movie =
        program.movie(soleMovie)
            .encode(QStringList{QStringLiteral("create"), QStringLiteral("header"),
                                QStringLiteral("progress 1"), QStringLiteral("write 10"),
                                QStringLiteral("print ") + line +
                                    QStringLiteral("frame=   60 time=00:00:02.00 bitrate=\\r"),
                                QStringLiteral("hang")})
            .write();
    program.add({movie, program.movie(QStringLiteral("b.mp4")).write()});
    QString statusUnderTheBox;
    bool errorIsSet = false;
    program.boxes.promise(skipError, false, [&] {
        statusUnderTheBox = program.status(0);
        errorIsSet = program.state().error;
    });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList(
                 {errorMessage(soleMovie), getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QCOMPARE(program.boxes.seen[0].buttons, textsOf({"IDS_BTN_STOP", "IDS_BTN_POPUP_SKIP"}));
    QCOMPARE(program.boxes.seen[0].checkBox, getLocalString("IDS_TXT_POPUP_DOFORERROR"));
    QCOMPARE(statusUnderTheBox, status::STATPR);
    QVERIFY(errorIsSet);
    QVERIFY(!program.state().error); // the next job clears it
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::errorAndStop() {
    ControllerFixture program;
    addOne(program,
           {"create", "header", "progress 1", "write 10",
            "print an error while decoding\\nframe=   60 time=00:00:02.00 bitrate=\\r", "hang"});
    bool lockedUnderTheSummary = false;
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer, false,
                          [&] { lockedUnderTheSummary = runControlsAre(false, program); });
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    // The other way round than at a normal end: the summary comes before the controls.
    QVERIFY(lockedUnderTheSummary);
    QVERIFY(runControlsAre(true, program));
    QVERIFY(!program.state().isConversionRunning);
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(program.files().conversionTaskList.empty());
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::failedConversion_data() {
    QTest::addColumn<QStringList>("encode");
    const auto row = [](const char* name, std::initializer_list<const char*> steps) {
        QStringList lines;
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines;
    };
    row("ends at once", {"exit 1"});
    row("no summary, status 0", {"create", "header", "progress 5", "write 10", "exit 0"});
    row("no summary, no marker, empty output",
        {"create", "header", "print Could not write header: not supported\\n", "exit 1"});
    row("summary, status 1",
        {"create", "header", "progress 5", "write 10", "summary 10", "exit 1"});
    row("summary, status 69", {"create", "header", "write 10", "summary 10", "exit 69"});
    row("summary, status 255", {"create", "header", "write 10", "summary 10", "exit 255"});
    row("summary and status 0 with nothing there", {"create", "header", "write 10", "summary 10",
                                                    "unlink ../home/Documents/a_HQ_640x480.mp4"});
    row("sound alone",
        {"create", "header", "write 10",
         "print frame=    0 fps=0.0 q=0.0 LPSNR=Y:-nan size=  18kB time=00:00:09.99 b=\\n"});
    row("sound alone, after a position",
        {"create", "header", "write 10",
         "print frame=    0 fps=0.0 size=0kB time=00:00:09.00 b=\\r",
         "print frame=    0 fps=0.0 q=0.0 LPSNR=Y:-nan size=  18kB time=N/A bitrate=N/A\\n"});
    row("crash", {"create", "header", "progress 5", "write 10", "abort"});
    row("crash after the summary", {"create", "header", "write 10", "summary 10", "abort"});
    row("unknown option", {"print Unrecognized option 'psnr'.\\n", "exit 8"});
    row("a short piece with error is interrupted",
        {"create", "header", "progress 5", "write 10", "wait 300", "print error\\n", "hang"});
    row("the same, ended without a summary",
        {"on-term quit", "create", "progress 5", "wait 300", "print error\\n", "hang"});
    row("the other program's summary comes from another key",
        {"create", "header", "write 10", "print frame=  1 Lsize=  1kB time=00:00:10.00 b=\\n"});
}

// Every one of these is asked about like an error, and the run goes on from the answer.
void TestFailures::failedConversion() {
    QFETCH(QStringList, encode);
    ControllerFixture program;
    program.add({program.movie(soleMovie).encode(encode).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    bool errorIsSet = false;
    program.boxes.promise(skipError, false, [&] { errorIsSet = program.state().error; });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList(
                 {errorMessage(soleMovie), getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QVERIFY(errorIsSet);
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::anEncoderThatCannotBeStarted_data() {
    QTest::addColumn<bool>("exists");
    QTest::newRow("missing") << false;
    QTest::newRow("not executable") << true;
}

void TestFailures::anEncoderThatCannotBeStarted() {
    QFETCH(bool, exists);
    ControllerFixture program;
    addOne(program, {"exit 1"});
    const QString encoder = program.resources() + QStringLiteral("/ffmpeg");
    QVERIFY(QFile::remove(encoder));
    if (exists)
        writeContent(encoder, "no program");
    program.boxes.promise(skipError);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList({errorMessage(soleMovie), errorMessage(QStringLiteral("b.mp4")),
                          getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(runControlsAre(true, program));
}

void TestFailures::aSizeWithoutAHeightFailsTheJob() {
    ControllerFixture program;
    addOne(program, {"exit 1"});
    program.files().recordAt(0)->set(key::resolution, QStringLiteral("640"));
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages().first(), errorMessage(soleMovie));
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(0, program));
}

void TestFailures::theSourceIsGoneAndTheRunEnds() {
    ControllerFixture program;
    addOne(program,
           {"create", "header", "progress 1", "write 10", "unlink a.mp4",
            "print Input/output error\\nframe=   60 time=00:00:02.00 bitrate=\\r", "hang"});
    bool lockedUnderTheSummary = false;
    program.boxes.promise(endRun);
    program.boxes.promise(okAnswer, false,
                          [&] { lockedUnderTheSummary = runControlsAre(false, program); });
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_UNEXPECTEDREMOVE", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.boxes.seen[0].buttons,
             textsOf({"IDS_BTN_POPUP_OK", "IDS_TXT_POPUP_TRYAGAIN"}));
    QVERIFY(program.boxes.seen[0].checkBox.isEmpty());
    QVERIFY(lockedUnderTheSummary);
    QVERIFY(runControlsAre(true, program));
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::theSourceIsGoneAndTriedAgain() {
    ControllerFixture program;
    addOne(program,
           {"create", "header", "progress 1", "write 10", "unlink a.mp4",
            "print Input/output error\\nframe=   60 time=00:00:02.00 bitrate=\\r", "hang"});
    program.boxes.promise(tryAgain, false, [&] { (void)program.movie(soleMovie).write(); });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    // No conflict: the first try's output is gone before the second begins.
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_UNEXPECTEDREMOVE", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.encodes().size(), 3);
    QCOMPARE(program.encodes()[1].arguments, program.encodes()[0].arguments);
    QCOMPARE(program.files().rowCount(), 0);
    QCOMPARE(contentOf(program.output(soleOutput)).size(), 4096);
}

void TestFailures::theSourceIsGoneAndStaysAway() {
    ControllerFixture program;
    addOne(program, {"create", "unlink a.mp4", "exit 1"});
    program.boxes.promise(tryAgain);
    program.boxes.promise(1000); // skip
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_UNEXPECTEDREMOVE", "IDS_TXT_POPUP_SOURCE_UNAVAILABLE",
                      "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.encodes().size(), 2);
    QVERIFY(isWaiting(0, program));
}

void TestFailures::forAllOfTheErrorIsNeverReadByItself() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4"})
        movies += program.movie(QString::fromLatin1(name)).encode({"exit 1"}).write();
    program.add(movies);
    program.boxes.promise(skipError, true);
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 3);
    QCOMPARE(program.state().resultStoredForConversionError, skipError);
    QVERIFY(!program.state().checkStatusForConversionError); // the second answer was not ticked
}

void TestFailures::theConflictsMarkGuardsTheStoredError() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"}) {
        movies += program.movie(QString::fromLatin1(name)).encode({"exit 1"}).write();
        writeContent(
            program.output(QString::fromLatin1(name).left(1) + QStringLiteral("_HQ_640x480.mp4")),
            "old");
    }
    program.add(movies);
    program.boxes.promise(replaceAnswer, true);
    program.boxes.promise(skipError, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 3);
    QCOMPARE(program.encodes().size(), 3);
    QCOMPARE(namesIn(program.documents()).size(), 3);
}

void TestFailures::theConflictsMarkWithoutAStoredErrorAsks() {
    ControllerFixture program;
    QStringList movies;
    for (const char* name : {"a.mp4", "b.mp4"})
        movies += program.movie(QString::fromLatin1(name)).encode({"exit 1"}).write();
    writeContent(program.output(soleOutput), "old");
    program.add(movies);
    QCOMPARE(program.state().resultStoredForConversionError, 0);
    program.boxes.promise(replaceAnswer, true);
    program.boxes.promise(skipError);
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 4);
    QVERIFY(program.state().checkStatusForFileConflict);
}

void TestFailures::aStoredErrorAnswerOutlivesItsRun() {
    ControllerFixture program;
    program.add({program.movie(soleMovie).encode({"exit 1"}).write()});
    program.boxes.promise(stopError, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    writeContent(program.output(soleOutput), "old");
    program.boxes.promise(replaceAnswer, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    // Conflict and summary: the error was answered with the first run's Stop.
    QCOMPARE(program.boxes.seen.size(), 4);
    QVERIFY(!program.state().checkStatusForConversionError);
    QCOMPARE(program.encodes().size(), 2);
}

void TestFailures::writeFailure_data() {
    QTest::addColumn<QStringList>("end");
    const auto row = [](const char* name, std::initializer_list<const char*> steps) {
        QStringList lines;
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines;
    };
    row("alone, then the summary",
        {"print av_interleaved_write_frame(): No space left on device\\n", "wait 300",
         "print Error writing trailer of x: No space left on device\\n", "summary 3",
         "print Conversion failed!\\n", "exit 1"});
    row("the mark of old, alone",
        {"print av_interleaved_write_frame(): Cannot write\\n", "wait 300", "summary 3", "exit 1"});
    row("no word of the old mark",
        {"print Error submitting a packet to the muxer: No space left on device\\n", "wait 300",
         "summary 3", "exit 1"});
    row("with a position",
        {"print av_interleaved_write_frame(): x\\nframe=   60 time=00:00:02.00 bitrate=\\r",
         "wait 200", "exit 1"});
    row("with the summary",
        {"print No space left on device\\nframe=   60 LPSNR=Y:1 time=00:00:02.00 bitrate=\\n",
         "exit 1"});
    row("only the index, status 0",
        {"print Error writing trailer of x: No space left on device\\n", "summary 10", "exit 0"});
    row("the very last word", {"print av_interleaved_write_frame(): x\\n", "exit 1"});
    row("the very last word, no line end", {"print No space left on device", "exit 1"});
}

void TestFailures::writeFailure() {
    QFETCH(QStringList, end);
    ControllerFixture program;
    QStringList steps{QStringLiteral("create"), QStringLiteral("header"),
                      QStringLiteral("progress 1"), QStringLiteral("write 10")};
    program.add({program.movie(soleMovie).encode(steps + end).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    bool lockedUnderTheSummary = false;
    program.boxes.promise(okAnswer);
    program.boxes.promise(okAnswer, false,
                          [&] { lockedUnderTheSummary = runControlsAre(false, program); });
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList({linesOf({"IDS_TXT_POPUP_MEMORYFULL", "IDS_TXT_DATA_NOTCONVERTED"}),
                          getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QCOMPARE(program.boxes.seen[0].buttons, textsOf({"IDS_BTN_POPUP_OK"}));
    QVERIFY(lockedUnderTheSummary);
    QVERIFY(runControlsAre(true, program));
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(program.files().conversionTaskList.empty());
    QVERIFY(noEncoderLives(program.encodes()));
}

// The encoder has ten seconds to end by itself; only a stop makes them short.
void TestFailures::aStopDoesNotWaitForTheEncoderOfAFullDisk() {
    ControllerFixture program;
    addOne(program,
           {"create", "header", "progress 1", "write 10",
            "print No space left on device\\nframe=   60 time=00:00:02.00 bitrate=\\r", "hang"});
    program.boxes.promise(okAnswer);
    program.click("btnConvertFile");
    QTRY_VERIFY(program.boxes.allKept() && !QApplication::activeModalWidget());
    QElapsedTimer clock;
    clock.start();
    program.boxes.promise(1001);
    program.click("btnStop");
    QVERIFY(program.waitUntilIdle());
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(runControlsAre(true, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::anEncoderThatHangsAfterItsSummaryIsKilled() {
    ControllerFixture program;
    shortenPatience(program);
    addOne(program, {"ignore-term", "create", "header", "write 10", "summary 10", "hang"});
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages().first(), errorMessage(soleMovie));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
    QVERIFY(isWaiting(0, program));
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::anInterruptedEncoderThatGoesOnIsKilled() {
    ControllerFixture program;
    shortenPatience(program);
    addOne(program,
           {"ignore-term", "create", "header", "progress 1", "wait 300", "print error\\n", "hang"});
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages().first(), errorMessage(soleMovie));
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestFailures::nothingIsAskedTwice() {
    ControllerFixture program;
    addOne(program, {"create", "header",
                     "print error error Invalid\\nframe=   60 time=00:00:02.00 bitrate=\\r",
                     "print error error Invalid\\nframe=   60 time=00:00:03.00 bitrate=\\r",
                     "print No space left on device\\n", "summary 3", "exit 1"});
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
}

void TestFailures::removingTheRowDoesNotLoseTheEndOfTheRun_data() {
    QTest::addColumn<QString>("line");
    QTest::newRow("error, Stop") << QStringLiteral("an error");
    QTest::newRow("write failure") << QStringLiteral("No space left on device");
}

// The run was told to end, or has no room to go on: the failed row may go meanwhile.
void TestFailures::removingTheRowDoesNotLoseTheEndOfTheRun() {
    QFETCH(QString, line);
    ControllerFixture program(std::chrono::seconds(1));
    program.engine().setPatience({std::chrono::seconds(1), std::chrono::seconds(1)});
    program.add(
        {program.movie(soleMovie)
             .encode(QStringList{QStringLiteral("ignore-term"), QStringLiteral("create"),
                                 QStringLiteral("print ") + line +
                                     QStringLiteral("\\nframe=  1 time=00:00:01.00 bitrate=\\r"),
                                 QStringLiteral("hang")})
             .write(),
         program.movie(QStringLiteral("b.mp4")).write()});
    program.files().setCheck(1, 0);
    program.boxes.promise(stopError);
    program.click("btnConvertFile");
    QTRY_VERIFY(program.boxes.allKept() && !QApplication::activeModalWidget());
    program.boxes.promise(okAnswer);
    program.click("btnRemoveFile");
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(program.waitUntilIdle());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.encodes().size(), 1);
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(noEncoderLives(program.encodes()));
}

REELSHIFT_TEST(tst_failures, TestFailures, QApplication)
#include "tst_failures.moc"
