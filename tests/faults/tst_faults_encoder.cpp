#include "TestProgram.h"
#include "app/RunChecks.h"
#include "faults/FaultRows.h"
#include "platform/NoMoreThreads.h"

#include <QApplication>

#include <csignal>
#include <memory>

#include <signal.h>

using namespace std::chrono_literals;

/// What the encoder program can do wrong, and what can be done to it.
class TestFaultsEncoder final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void encoder_data();
    void encoder();

private:
    static void theProgram();
    static void signalsFromOutside();
    static void silence();
    static void output();
    static void failureTexts();
    static void harmlessTexts();
    static void threads();

    FaultTable table_;
};

namespace {

QString encoderOf(const FaultScene& scene) {
    return scene.program.resources() + QStringLiteral("/ffmpeg");
}

/// Adds movies that take long with any encoder.
QString addLong(FaultScene& scene) {
    if (!scene.isRealEncoder()) {
        scene.addScripted(badName, steps({"create", "header", "write 10", "loop 10000",
                                          "progress 1", "wait 20", "end"}));
    } else if (scene.makeLong(badName)) {
        scene.add(badName);
    } else {
        return QStringLiteral("no long movie could be made");
    }
    return scene.addGood(goodName) ? QString() : QStringLiteral("no movie could be made");
}

} // namespace

void TestFaultsEncoder::encoder_data() {
    QTest::addColumn<Fault>("fault");
    theProgram();
    signalsFromOutside();
    silence();
    output();
    failureTexts();
    harmlessTexts();
    threads();
}

void TestFaultsEncoder::encoder() {
    SURVIVE(table_);
}

void TestFaultsEncoder::theProgram() {
    const auto without = [](bool exists) {
        return [exists](FaultScene& scene) {
            if (!scene.addGood(badName) || !scene.addGood(goodName))
                return QStringLiteral("no movie could be made");
            QFile::rename(encoderOf(scene), encoderOf(scene) + QStringLiteral(".away"));
            if (exists)
                writeContent(encoderOf(scene), "no program");
            return QString();
        };
    };
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        for (const bool exists : {false, true}) {
            Fault fault{.name = exists ? QStringLiteral("the encoder is not executable")
                                       : QStringLiteral("the encoder is missing"),
                        .encoder = encoder,
                        .prepare = without(exists)};
            fault.answer = QStringLiteral("Skip, Stop");
            fault.boxes = {{errorBox, 1001}, {errorBox, 1000}, {summaryBox}};
            fault.waiting = QStringList({badName, goodName});
            addRow(fault);
            fault.answer = QStringLiteral("put back, Skip");
            fault.boxes = {{errorBox, 1001,
                            [](FaultScene& scene) {
                                QFile::remove(encoderOf(scene));
                                QFile::rename(encoderOf(scene) + QStringLiteral(".away"),
                                              encoderOf(scene));
                            }},
                           {summaryBox}};
            fault.waiting = QStringList(badName);
            fault.outputs = QStringList(goodOutput);
            addRow(fault);
        }
    }
    addRow({.name = QStringLiteral("the encoder is missing when movies are added"),
            .answer = QStringLiteral("OK"),
            .prepare =
                [](FaultScene& scene) {
                    QFile::remove(encoderOf(scene));
                    scene.program.boxes.answerTheRest(1000);
                    scene.addScripted(badName, {});
                    return scene.addGood(goodName) ? QString() : QStringLiteral("no movie");
                },
            .boxes = {{"IDS_TXT_ENCODER_MISSING"}}});
    addErrorRows({.name = QStringLiteral("another encoder that knows no -psnr (status 8)"),
                  .prepare = scripted(steps({"print Unrecognized option 'psnr'.\\n",
                                             "print Error splitting the argument list: Option "
                                             "not found\\n",
                                             "exit 8"}))});
    addErrorRows(
        {.name = QStringLiteral("another encoder whose summary has no LPSNR="),
         .prepare = scripted(steps({"create", "header", "write 10",
                                    "print frame=  1 Lsize=  1kB time=00:00:10.00 b=\\n"}))});
}

void TestFaultsEncoder::signalsFromOutside() {
    struct Signal {
        const char* name;
        int number;
    };
    for (const Signal& each :
         {Signal{"killed (SIGKILL)", SIGKILL}, Signal{"ended from outside (SIGTERM)", SIGTERM},
          Signal{"interrupted from outside (SIGINT)", SIGINT},
          Signal{"crashed (SIGSEGV)", SIGSEGV}}) {
        for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
            addErrorRows(
                {.name = QStringLiteral("the encoder is ") + QString::fromLatin1(each.name),
                 .encoder = encoder,
                 .prepare = addLong,
                 .meanwhile = [number = each.number](FaultScene& scene) {
                     QVERIFY(scene.waitForProgress());
                     ::kill(static_cast<pid_t>(scene.encoderPid()), number);
                 }});
        }
    }
    addErrorRows(
        {.name = QStringLiteral("the encoder crashes by itself"),
         .prepare = scripted(steps({"create", "header", "progress 5", "write 10", "abort"}))});
    addErrorRows(
        {.name = QStringLiteral("the encoder crashes after its summary"),
         .prepare = scripted(steps({"create", "header", "write 10", "summary 10", "abort"}))});
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        addErrorRows({.name = QStringLiteral("the encoder is killed while it is paused, resumed"),
                      .encoder = encoder,
                      .prepare = addLong,
                      .meanwhile = [](FaultScene& scene) {
                          QVERIFY(scene.pause());
                          ::kill(static_cast<pid_t>(scene.encoderPid()), SIGKILL);
                          scene.program.clickRowButton(0);
                      }});
    }
}

void TestFaultsEncoder::silence() {
    for (const char* deaf : {"", "ignore-term"}) {
        const QString name = *deaf ? QStringLiteral("the encoder is silent for ever, and deaf")
                                   : QStringLiteral("the encoder is silent for ever");
        QStringList encode = steps({"create", "header", "write 10", "progress 1", "hang"});
        if (*deaf)
            encode.prepend(QString::fromLatin1(deaf));
        Fault fault{.name = name, .prepare = scripted(encode)};
        fault.answer = QStringLiteral("Stop button, OK");
        fault.meanwhile = [](FaultScene& scene) {
            QVERIFY(scene.waitForProgress());
            scene.stop();
        };
        fault.boxes = {{stopBox, 1001}};
        fault.waiting = QStringList({badName, goodName});
        addRow(fault);
        fault.answer = QStringLiteral("Remove");
        fault.meanwhile = [](FaultScene& scene) {
            QVERIFY(scene.waitForProgress());
            scene.program.files().setCheck(1, 0);
            scene.program.click("btnRemoveFile");
        };
        fault.boxes = {{summaryBox}};
        fault.waiting.clear();
        fault.outputs = QStringList(goodOutput);
        addRow(fault);
    }
    addErrorRows({.name = QStringLiteral("the encoder hangs after its summary"),
                  .prepare = scripted(steps(
                      {"ignore-term", "create", "header", "write 10", "summary 10", "hang"}))});
}

void TestFaultsEncoder::output() {
    addErrorRows({.name = QStringLiteral("the encoder floods its output while the box is open"),
                  .prepare = scripted(steps(
                      {"create", "header", "write 10",
                       "print an error while decoding\\nframe=   60 time=00:00:02.00 bitrate=\\r",
                       "touch flooding", "flood 100000000", "touch flooded", "hang"})),
                  .meanwhile = [](FaultScene& scene) {
                      scene.expectChange(scene.source(QStringLiteral("flooding")));
                  }});
    addHarmlessRow({.name = QStringLiteral("a grandchild keeps the encoder's pipe open"),
                    .prepare = scripted(steps({"grandchild 3000", "create", "header", "progress 5",
                                               "write 10", "summary 10"}))});
    addHarmlessRow({.name = QStringLiteral("the encoder floods its output and finishes"),
                    .prepare = scripted(
                        steps({"create", "header", "flood 20000000", "write 10", "summary 10"}))});
    addErrorRows({.name = QStringLiteral("the output is gone when the encoder has finished"),
                  .prepare = scripted(steps({"create", "header", "write 10", "summary 10",
                                             "unlink ../home/Documents/a_HQ_640x480.mp4"}))});
    addErrorRows({.name = QStringLiteral("a piece that cannot be read (\"error\" without time=)"),
                  .prepare = scripted(steps({"create", "header", "progress 5", "write 10",
                                             "wait 150", "print error\\n", "hang"}))});
}

void TestFaultsEncoder::failureTexts() {
    const auto error = [](const char* name, std::initializer_list<const char*> encode) {
        addErrorRows({.name = QString::fromLatin1(name), .prepare = scripted(steps(encode))});
    };
    const auto full = [](const char* name, std::initializer_list<const char*> end) {
        addDiskFullRow({.name = QString::fromLatin1(name),
                        .prepare = scripted(steps({"create", "header", "progress 1", "write 10"}) +
                                            steps(end))});
    };
    full("av_interleaved_write_frame(): No space left on device",
         {"print av_interleaved_write_frame(): No space left on device\\n", "wait 150",
          "print Error writing trailer of x: No space left on device\\n", "summary 3",
          "print Conversion failed!\\n", "exit 1"});
    full("the same in one piece with a position",
         {"print av_interleaved_write_frame(): x\\nframe=   60 time=00:00:02.00 bitrate=\\r",
          "wait 150", "exit 1"});
    full("the same as the very last word", {"print av_interleaved_write_frame(): x\\n", "exit 1"});
    full("av_interleaved_write_frame(): Disk quota exceeded",
         {"print av_interleaved_write_frame(): Disk quota exceeded\\n", "wait 150",
          "print Error writing trailer of x: Disk quota exceeded\\n", "summary 3", "exit 1"});
    // The word "error" in it comes first.
    error("av_interleaved_write_frame(): Input/output error",
          {"create", "header", "progress 1", "write 10",
           "print av_interleaved_write_frame(): Input/output error\\n", "summary 3", "exit 1"});
    full("Error submitting a packet to the muxer: No space left",
         {"print Error submitting a packet to the muxer: No space left on device\\n", "wait 150",
          "summary 3", "exit 1"});
    full("Error writing trailer: No space left, status 0",
         {"print Error writing trailer of x: No space left on device\\n", "summary 10", "exit 0"});
    full("Error writing trailer: Disk quota exceeded, status 0",
         {"print Error writing trailer of x: Disk quota exceeded\\n", "summary 10", "exit 0"});
    full("Error closing file: No space left, status 0",
         {"summary 10", "print Error closing file x: No space left on device\\n", "exit 0"});
    error("Error closing file: Input/output error, status 0",
          {"create", "header", "progress 1", "write 10", "summary 10",
           "print Error closing file x: Input/output error\\n", "exit 0"});
    error("Invalid data found, ended at once (status 1)",
          {"print x: Invalid data found when processing input\\n", "exit 1"});
    error("Invalid between two positions",
          {"create", "header", "progress 1", "write 10",
           "print [hevc @ 0x1] Invalid NAL unit size\\nframe=   60 time=00:00:02.00 bitrate=\\r",
           "hang"});
    error("error between two positions",
          {"create", "header", "progress 1", "write 10",
           "print [hevc @ 0x1] an error\\nframe=   60 time=00:00:02.00 bitrate=\\r", "hang"});
    error("most pictures undecodable: a summary and status 69",
          {"create", "header", "write 10", "summary 10", "exit 69"});
    error("a summary and status 1", {"create", "header", "progress 5", "write 10", "summary 10",
                                     "print Conversion failed!\\n", "exit 1"});
    error("a summary and status 255", {"create", "header", "write 10", "summary 10", "exit 255"});
    error("no summary and status 0", {"create", "header", "progress 5", "write 10", "exit 0"});
    error("codec not currently supported in container (0 bytes)",
          {"create", "header",
           "print [mp4 @ 0x1] Could not find tag for codec pcm_s16le in stream #1, codec not "
           "currently supported in container\\n",
           "print Could not write header for output file #0 (incorrect codec parameters ?): "
           "Invalid argument\\n",
           "exit 1"});
    error("height not divisible by 2",
          {"create", "header", "print [libx264 @ 0x1] height not divisible by 2 (640x481)\\n",
           "print Error initializing output stream 0:0 -- Error while opening encoder\\n",
           "exit 1"});
    error(
        "already exists. Overwrite? Not overwriting - exiting",
        {"print File 'x' already exists. Overwrite? [y/N] Not overwriting - exiting\\n", "exit 1"});
    error("File name too long", {"print x: File name too long\\n", "exit 1"});
    error("No such file or directory", {"print x: No such file or directory\\n", "exit 1"});
    error("Permission denied", {"print x: Permission denied\\n", "exit 1"});
}

void TestFaultsEncoder::harmlessTexts() {
    const auto harmless = [](const char* name, const char* line) {
        addHarmlessRow(
            {.name = QString::fromLatin1(name),
             .prepare = scripted(steps({"create", "header", line, "write 10", "summary 10"}))});
    };
    addHarmlessRow({.name = QStringLiteral("Invalid timestamps while the input is opened"),
                    .prepare = scripted(
                        steps({"print [mov @ 0x1] Invalid timestamps stream=0, pts=20, dts=60\\n",
                               "create", "header", "progress 5", "write 10", "summary 10"}))});
    harmless("results will be invalid!",
             "print --psnr used with psy on: results will be invalid!\\n");
    harmless("time=N/A", "progress N/A");
    harmless("a negative position", "progress -00:00:00.02");
    harmless("a position beyond all hours", "progress -577014:32:22.77");
}

// The computer has no thread left for the job, or for what stands beside it.
void TestFaultsEncoder::threads() {
    const auto none = std::make_shared<std::unique_ptr<NoMoreThreads>>();
    const auto noMore = [none](FaultScene&) { *none = std::make_unique<NoMoreThreads>(); };
    const auto again = [none](FaultScene&) { none->reset(); };
    const QString third = QStringLiteral("c.mp4");
    Fault job{.name = QStringLiteral("no thread can be had for the job"),
              .answer = QStringLiteral("Skip"),
              .prepare = [third](FaultScene& scene) {
                  scene.addScripted(badName, steps({"exit 1"}));
                  return scene.addGood(goodName) && scene.addGood(third)
                             ? QString()
                             : QStringLiteral("no movie");
              }};
    job.boxes = {{errorBox, 1001, noMore}, {errorBox, 1001, again}, {summaryBox}};
    job.waiting = QStringList({badName, goodName});
    job.outputs = QStringList(QStringLiteral("c_HQ_640x480.mp4"));
    addRow(job);
    Fault gone = job;
    gone.name = QStringLiteral("no thread for the job, and its source has gone");
    gone.answer = QStringLiteral("OK");
    gone.boxes = {{errorBox, 1001,
                   [noMore](FaultScene& scene) {
                       noMore(scene);
                       QFile::remove(scene.source(goodName));
                   }},
                  {sourceWentBox, 1000, again},
                  {summaryBox}};
    gone.prepare = [prepare = job.prepare](FaultScene& scene) {
        scene.expectChange(scene.source(goodName));
        return prepare(scene);
    };
    gone.waiting = QStringList({badName, goodName, third});
    gone.outputs.clear();
    addRow(gone);
    job.answer = QStringLiteral("Stop");
    job.boxes = {{errorBox, 1001, noMore}, {errorBox, 1000, again}, {summaryBox}};
    job.waiting = QStringList({badName, goodName, third});
    job.outputs.clear();
    addRow(job);
    addRow({.name = QStringLiteral("no thread can be had once the job has its own"),
            .answer = QStringLiteral("Keep Both"),
            .prepare =
                [](FaultScene& scene) {
                    writeContent(scene.output(goodOutput), "old");
                    return scene.addGood(goodName) ? QString() : QStringLiteral("no movie");
                },
            .boxes = {{"IDS_TXT_POPUP_SAMENAME", 1001, noMore}, {summaryBox, 1000, again}},
            .outputs = QStringList(QStringLiteral("b_HQ(1)_640x480.mp4"))});
    addRow({.name = QStringLiteral("no thread can be had for the launch after a skip"),
            .answer = QStringLiteral("Skip"),
            .prepare =
                [](FaultScene& scene) {
                    writeContent(scene.output(badOutput), "old");
                    return scene.addGood(badName) ? QString() : QStringLiteral("no movie");
                },
            .boxes = {{"IDS_TXT_POPUP_SAMENAME", 1002, noMore}, {summaryBox, 1000, again}},
            .waiting = QStringList(badName)});
}

REELSHIFT_TEST(tst_faults_encoder, TestFaultsEncoder, QApplication)
#include "tst_faults_encoder.moc"
