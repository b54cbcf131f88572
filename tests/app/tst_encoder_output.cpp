#include "TestProgram.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"

#include <QApplication>
#include <QElapsedTimer>

/// What an encoder prints on its good road, and what a run reads from it.
class TestEncoderOutput final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goodRuns_data();
    void goodRuns();
    void positions_data();
    void positions();
    void marksInWhatTheMovieSays_data();
    void marksInWhatTheMovieSays();
    void aNameWithLineEnds();
    void aTitleWithMarks();
    void damageWithoutAPosition_data();
    void damageWithoutAPosition();
    void linesWithoutAPositionChangeNothing();
    void aSecondForEachPieceNotForEachLine();
    void aSecondForEachPieceThatComesAlone();
    void noSecondForWhatHasNoPosition();
    void shortOfADurationThatIsZero();
    void textWithoutALineEndIsNotHeldForLong();

private:
    static void convertWell(ControllerFixture& program, const QString& movie);
};

/// One movie that must come out as converted.
void TestEncoderOutput::convertWell(ControllerFixture& program, const QString& movie) {
    QVERIFY(!movie.isEmpty());
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 1);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(QFile::exists(program.encodes()[0].arguments.last()));
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestEncoderOutput::goodRuns_data() {
    QTest::addColumn<QStringList>("encode");
    const auto row = [](const char* name, std::initializer_list<const char*> steps) {
        QStringList lines;
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines;
    };
    row("only a summary", {"create", "header", "summary 10"});
    row("a summary far short of the duration", {"create", "header", "progress 1", "summary 3"});
    row("a position and the summary in one piece",
        {"create", "header",
         "print frame=  1 time=00:00:09.00 bitrate=\\rframe=  2 LPSNR=Y:1 time=00:00:10.00 b=\\n"});
    row("a summary without a line end",
        {"create", "header", "print frame=  2 LPSNR=Y:inf size=  1kB time=00:00:10.00 bitrate="});
    row("a summary without a position",
        {"create", "header", "progress 1", "print frame=  2 LPSNR=Y:inf time=N/A\\n"});
    row("harmless Invalid while the input is opened",
        {"create", "print Invalid timestamps stream=0, pts=20, dts=60\\n", "header", "progress 1",
         "summary 10"});
    row("harmless Invalid between positions",
        {"create", "header", "print [mov @ 0x1] Invalid timestamps stream=0, pts=20, dts=60\\n",
         "progress 1", "print [mov @ 0x1] Invalid timestamps stream=0, pts=2, dts=6\\n",
         "progress 2", "summary 10"});
    row("Invalid while the input is opened",
        {"create", "print [hevc @ 0x1] Invalid NAL unit size\\n", "header", "progress 1",
         "summary 10"});
    row("an error with a capital",
        {"create", "header", "progress 1", "print Error and INVALID\\n", "summary 10"});
    row("a summary in many parts",
        {"create", "header",
         "split 9 frame=  2 fps= 6 LPSNR=Y:inf size=  1kB time=00:00:10.00 bitrate=1\\n"});
    row("positions in many parts",
        {"create", "header", "split 9 frame=  1 size=  1kB time=00:00:05.00 bitrate=1 speed=1\\r",
         "split 9 frame=  2 LPSNR=Y:inf size=  1kB time=00:00:10.00 bitrate=1 speed=1\\n"});
    row("a grandchild holds the pipe", {"create", "header", "grandchild 4000", "summary 10"});
    row("bytes that are no text",
        {"create", "header", "print \\xff\\xfe\\x00 \\xc3\\r", "summary 10"});
    row("absurd positions", {"create", "header", "progress -577014:32:22.77", "progress N/A",
                             "progress 99999999", "summary 10"});
    row("a flood",
        {"create", "header", "flood 3000000", "progress 5", "flood 3000000", "summary 10"});
}

void TestEncoderOutput::goodRuns() {
    QFETCH(QStringList, encode);
    ControllerFixture program;
    convertWell(program, program.movie(QStringLiteral("a.mp4")).encode(encode).write());
}

void TestEncoderOutput::positions_data() {
    QTest::addColumn<QString>("position");
    QTest::addColumn<QString>("shown");
    QTest::newRow("cut towards zero") << QStringLiteral("3.79") << QStringLiteral("37 %");
    QTest::newRow("nothing yet") << QStringLiteral("0") << QStringLiteral("0 %");
    QTest::newRow("beyond the end") << QStringLiteral("12") << QStringLiteral("120 %");
    QTest::newRow("negative") << QStringLiteral("-577014:32:22.77") << QStringLiteral("100 %");
    QTest::newRow("none") << QStringLiteral("N/A") << QStringLiteral("0 %");
    QTest::newRow("hours") << QStringLiteral("36000") << QStringLiteral("360000 %");
}

void TestEncoderOutput::positions() {
    QFETCH(QString, position);
    QFETCH(QString, shown);
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({QStringLiteral("create"), QStringLiteral("header"),
                              QStringLiteral("progress ") + position,
                              QStringLiteral("wait-file go"), QStringLiteral("summary 10")})
                     .write()});
    const JobRecordPtr record = program.files().recordAt(0);
    program.click("btnConvertFile");
    QTRY_COMPARE(record->text(key::progressValue), shown);
    QCOMPARE(record->text(key::progress), QString());
    program.boxes.promise(okAnswer);
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QCOMPARE(record->text(key::status), status::STATCO);
}

void TestEncoderOutput::marksInWhatTheMovieSays_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("marks") << QStringLiteral("trial and error time= LPSNR= Invalid.mp4");
    QTest::newRow("write failure") << QStringLiteral("No space left on device.mp4");
    QTest::newRow("the other one") << QStringLiteral("av_interleaved_write_frame.mp4");
    QTest::newRow("return") << QStringLiteral("an\rerror\rframe=  1 LPSNR= time=.mp4");
    QTest::newRow("quotes") << QStringLiteral("it's': error \"1\".mp4");
    QTest::newRow("percent") << QStringLiteral("100%1 %s %n error.mp4");
    QTest::newRow("other letters") << QStringLiteral("été 日本 error.mp4");
    QTest::newRow("leading dash") << QStringLiteral("-y error.mp4");
    QTest::newRow("two dots") << QStringLiteral("a..error.mp4");
    QTest::newRow("markup") << QStringLiteral("a<b>error&amp;.mp4");
}

void TestEncoderOutput::marksInWhatTheMovieSays() {
    QFETCH(QString, name);
    ControllerFixture program;
    convertWell(program, program.movie(name).write());
    const QString stem = name.left(name.size() - 4);
    QCOMPARE(program.encodes()[0].arguments.size(), 22);
    QCOMPARE(namesIn(program.documents()), QStringList(stem + QStringLiteral("_HQ_640x480.mp4")));
}

// The encoder's log keeps a line per start, so this one is told by its output.
void TestEncoderOutput::aNameWithLineEnds() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("an\nerror\nframe=  1 time=.mp4")).write()});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(namesIn(program.documents()),
             QStringList(QStringLiteral("an\nerror\nframe=  1 time=_HQ_640x480.mp4")));
}

void TestEncoderOutput::aTitleWithMarks() {
    ControllerFixture program;
    convertWell(
        program,
        program.movie(QStringLiteral("a.mp4"))
            .probeSteps({"report title=\"trial and error: Invalid LPSNR= time=00:00:01.00 "
                         "No space left on device\""})
            .encode({"create",
                     "print Input #0, mov, from 'x':\\n  Metadata:\\n    title           : "
                     "trial and error, Invalid, LPSNR= time=00:00:01.00\\n    comment       "
                     "  : No space left on device\\n                    : error again\\n",
                     "header", "progress 5", "summary 10"})
            .write());
}

void TestEncoderOutput::damageWithoutAPosition_data() {
    QTest::addColumn<QStringList>("encode");
    const auto row = [](const char* name, std::initializer_list<const char*> steps) {
        QStringList lines;
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines;
    };
    // Kept: an error counts wherever the encoder says it.
    row("an error while the input is opened",
        {"create", "print [mov @ 0x1] an error at the start\\n", "header", "progress 5",
         "summary 10"});
    row("an error before the first position",
        {"create", "header", "print [hevc @ 0x1] an error at the start\\n", "wait 250",
         "progress 5", "summary 10"});
    row("Invalid before the first position",
        {"create", "header", "print [hevc @ 0x1] Invalid NAL unit size\\n", "wait 250",
         "progress 5", "summary 10"});
    row("Invalid and no position but the last",
        {"create", "header", "print [hevc @ 0x1] Invalid NAL unit size\\n", "summary 10"});
    row("Invalid between positions",
        {"create", "header", "progress 1", "wait 250", "print [hevc @ 0x1] Invalid data\\n",
         "wait 250", "summary 10"});
}

void TestEncoderOutput::damageWithoutAPosition() {
    QFETCH(QStringList, encode);
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).encode(encode).write()});
    program.boxes.promise(1001);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

void TestEncoderOutput::linesWithoutAPositionChangeNothing() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "print frame=  1 q=1 and nothing else\\r",
                              "touch said", "wait-file go", "summary 10"})
                     .write()});
    const JobRecordPtr record = program.files().recordAt(0);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.path(QStringLiteral("movies/said"))));
    bool unchanged = false;
    program.boxes.promise(okAnswer);
    unchanged = record->text(key::progress) == getLocalString("IDS_TXT_STATUS_WAITING") &&
                !record->contains(key::progressValue) &&
                program.files().progressObjects[0]->statusString().isEmpty();
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QVERIFY(unchanged);
}

// 60 positions in 600 ms: a second of 200 ms for each would be 12 s.
void TestEncoderOutput::aSecondForEachPieceNotForEachLine() {
    ControllerFixture program(std::chrono::milliseconds(200));
    QElapsedTimer timer;
    timer.start();
    convertWell(program, program.movie(QStringLiteral("a.mp4"))
                             .encode({"create", "header", "loop 60", "progress 5", "wait 10", "end",
                                      "summary 10"})
                             .write());
    QVERIFY2(timer.elapsed() < 6000, qPrintable(QString::number(timer.elapsed())));
}

void TestEncoderOutput::aSecondForEachPieceThatComesAlone() {
    constexpr std::chrono::milliseconds second(150);
    ControllerFixture program(second);
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "progress 5", "wait-file go", "summary 10"})
                     .write()});
    const auto progress = program.files().progressObjects[0];
    program.click("btnConvertFile");
    QTRY_COMPARE(progress->statusString(), status::STATCR);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE(progress->currentStep(), 50);
    // Seen a little late: at least most of the second lies between the text and the bar.
    QVERIFY(timer.elapsed() > second.count() / 3);
    program.boxes.promise(okAnswer);
    timer.restart();
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QVERIFY(timer.elapsed() >= second.count());
}

// A second of a minute: one of them would not be over before the test's limit.
void TestEncoderOutput::noSecondForWhatHasNoPosition() {
    ControllerFixture program(std::chrono::minutes(1));
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "loop 20", "print frame=  1 no position\\r",
                              "wait 10", "end", "print last word\\n", "exit 1"})
                     .write()});
    bool asked = false;
    program.boxes.promise(1000, false, [&] { asked = true; });
    program.click("btnConvertFile");
    QTRY_VERIFY(asked);
    program.quit();
    QVERIFY(!QFile::exists(program.output(soleOutput)));
}

void TestEncoderOutput::shortOfADurationThatIsZero() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .probe(QStringLiteral("hevc"), QStringLiteral("640x480"),
                            QStringLiteral("00:00:00.00"))
                     .encode({"create", "header", "progress 0", "wait-file go", "summary 0.04"})
                     .write()});
    const JobRecordPtr record = program.files().recordAt(0);
    program.click("btnConvertFile");
    QTRY_COMPARE(record->text(key::progressValue), QStringLiteral("0 %"));
    program.boxes.promise(okAnswer);
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QCOMPARE(record->text(key::status), status::STATCO);
}

// However steadily more of the same line comes.
void TestEncoderOutput::textWithoutALineEndIsNotHeldForLong() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .encode({"create", "header", "print \\nframe=   60 time=00:00:05.00 bitrate=",
                              "loop 1000", "print x", "wait 10", "end", "summary 10"})
                     .write()});
    program.click("btnConvertFile");
    QTRY_COMPARE(program.files().recordAt(0)->text(key::progressValue), QStringLiteral("50 %"));
    QVERIFY(!program.engine().jobs().current()->task()->end());
}

REELSHIFT_TEST(tst_encoder_output, TestEncoderOutput, QApplication)
#include "tst_encoder_output.moc"
