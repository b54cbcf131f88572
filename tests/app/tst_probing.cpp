#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/ControllerFixture.h"
#include "media/ProbeRunner.h"
#include "platform/ChildProcesses.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <signal.h>

using namespace std::chrono_literals;

/// The examination of movies as they are added, by encoders that behave and that do not.
class TestProbing final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void askedWithTheMovieAlone();
    void lookedAtTwiceUntilOneWasConverted();
    void whatAProbeLeavesBehind();
    void soundAndDurationMayBeMissing_data();
    void soundAndDurationMayBeMissing();
    void noVideoLineAtAll();
    void cutInTheMiddleOfCharacters();
    void theSecondLookInterrupts();

    void endsBadly_data();
    void endsBadly();
    void talksALot();
    void grandchildHoldsThePipe();
    void silentForEver();
    void slowButNotSilent();
    void talksForEver();

    void encoderMissing();
    void encoderMissingWithMoviesInTheList();
    void encoderMayNotBeRun();
    void theLauncherFindsNoEncoder();
    void anEncoderThatOnlyEndsLikeAMissingOne();
    void theEncoderLacksX264();
    void theTitleSaysThatTheEncoderLacksX264();

private:
    /// Starts of the encoder on a movie with nothing but that.
    static int probes(const ControllerFixture& program, const QString& path);
};

int TestProbing::probes(const ControllerFixture& program, const QString& path) {
    const QStringList expected{QStringLiteral("-i"), path};
    const QList<EncoderStart> starts = program.starts();
    return static_cast<int>(
        std::count_if(starts.begin(), starts.end(),
                      [&](const EncoderStart& each) { return each.arguments == expected; }));
}

void TestProbing::askedWithTheMovieAlone() {
    ControllerFixture program;
    program.state().probe.duration = QStringLiteral("00:00:10.00");
    const QString path = program.movie(QStringLiteral("a.mp4")).write();
    program.add({path});
    QCOMPARE(program.starts().size(), 1);
    QCOMPARE(program.starts()[0].arguments, (QStringList{QStringLiteral("-i"), path}));
}

void TestProbing::lookedAtTwiceUntilOneWasConverted() {
    ControllerFixture program;
    const QString first = program.movie(QStringLiteral("a.mp4")).write();
    const QString second = program.movie(QStringLiteral("b.mp4")).write();
    program.add({first, second});
    QCOMPARE(probes(program, first), 2);
    QCOMPARE(probes(program, second), 2);
    // Kept: the movie's own duration does not count, the encoder's last position does.
    QCOMPARE(program.files().recordAt(0)->text(key::duration), QStringLiteral("00:00:10.00"));

    program.boxes.promise(1000);
    QVERIFY(program.runToEnd());
    program.add({first});
    QCOMPARE(probes(program, first), 3);
    program.state().probe.duration = QStringLiteral("0:00:01");
    program.add({first});
    QCOMPARE(probes(program, first), 5);
    program.state().probe.duration = QStringLiteral("00:00:01");
    program.add({first});
    QCOMPARE(probes(program, first), 6);
}

void TestProbing::whatAProbeLeavesBehind() {
    ControllerFixture program;
    const QString position = QStringLiteral("00:00:01.00");
    program.state().probe.duration = position;
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .probeSteps({"report size=1280x720 duration=01:02:03.04 bitrate=1234"})
                     .write(),
                 program.movie(QStringLiteral("b.mp4"))
                     .probe(QStringLiteral("mpeg4"), QStringLiteral("1280x720"),
                            QStringLiteral("00:00:07.00"), QStringLiteral("mp3"))
                     .write()});
    const ProbeValues& values = program.state().probe;
    // Those of the movie that was looked at last, though it was refused.
    QCOMPARE(values.durationMain, QStringLiteral("00:00:07.00"));
    QVERIFY(values.audioCodec.startsWith(QStringLiteral("MP3")));
    // Kept: with the colon and the blank.
    QVERIFY(values.videoCodec.startsWith(QStringLiteral(": MPEG4")));
    QCOMPARE(values.duration, position);
    QCOMPARE(program.files().recordAt(0)->text(key::duration), QStringLiteral("01:02:03.04"));
}

void TestProbing::soundAndDurationMayBeMissing_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QString>("audio");
    QTest::addColumn<QString>("duration");
    const QString none = QStringLiteral("None");
    const QString ten = QStringLiteral("00:00:10.00");
    QTest::newRow("no sound") << QByteArray("audio=none") << none << ten;
    QTest::newRow("other sound") << QByteArray("audio=ac3") << none << ten;
    QTest::newRow("sound in small letters")
        << QByteArray("audio=aac") << QStringLiteral("AAC") << ten;
    // Kept: eleven characters, whatever they are.
    QTest::newRow("duration not known")
        << QByteArray("duration=N/A") << QStringLiteral("AAC") << QStringLiteral("N/A, start: ");
}

void TestProbing::soundAndDurationMayBeMissing() {
    QFETCH(QByteArray, report);
    QFETCH(QString, audio);
    QFETCH(QString, duration);
    ControllerFixture program;
    const QByteArray step("report " + report);
    program.add({program.movie(QStringLiteral("a.mp4")).probeSteps({step.constData()}).write()});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.files().recordAt(0)->text(key::audio), audio);
    QCOMPARE(program.files().recordAt(0)->text(key::duration), duration.left(11));
    QVERIFY(program.boxes.seen.isEmpty());
}

// Kept: without a "Video" the fifth character is where the description begins, as long as there is
// a comma anywhere.
void TestProbing::noVideoLineAtAll() {
    ControllerFixture program;
    const QString encoder = program.resources() + QStringLiteral("/ffmpeg");
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    program.add({movie});
    program.boxes.promise(1000);
    writeProgram(encoder, "#!/bin/sh\necho 'abcdefgh ij, k' >&2\n");
    program.add({movie});
    QCOMPARE(program.state().probe.videoCodec, QStringLiteral("EFGH IJ"));
    QCOMPARE(program.files().rowCount(), 1);

    writeProgram(encoder, "#!/bin/sh\necho 'abcdhevc, 1280x720, k' >&2\n");
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 2);
    QCOMPARE(program.files().recordAt(1)->text(key::resolution), QStringLiteral("1280x720"));
    QCOMPARE(program.files().recordAt(1)->text(key::duration), QStringLiteral("None"));

    writeProgram(encoder, "#!/bin/sh\necho 'no comma: hevc' >&2\n");
    program.boxes.promise(1000);
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 2);
    QCOMPARE(program.state().probe.videoCodec, QStringLiteral("HEVC"));
    QVERIFY(areInStep(program.files()));
}

void TestProbing::cutInTheMiddleOfCharacters() {
    ControllerFixture program;
    const QString path =
        program.movie(QString::fromUtf8("été 🎬.mp4"))
            .probeSteps({"split 1 Input #0, mov, from 'x':\\n  Metadata:\\n    title           : "
                         "🎬 Video: mpeg4, 1x1 日本\\n  Duration: 00:00:12.34, start: 0\\n",
                         "split 3   Stream #0:0(日本): Video: hevc (Main), yuv420p, 1920x1080 "
                         "[SAR 1:1]\\n  Stream #0:1(日本): Audio: aac (LC), 44100 Hz\\n"})
            .write();
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    const JobRecord& record = *program.files().recordAt(0);
    QCOMPARE(record.text(key::duration), QStringLiteral("00:00:12.34"));
    QCOMPARE(record.text(key::audio), QStringLiteral("AAC"));
    QCOMPARE(record.text(key::resolution), QStringLiteral("1920x1080"));
}

// The chunk ends inside the duration: the second look cuts the encoder short, which would stay for
// ever otherwise, and the movie is as the first look found it.
void TestProbing::theSecondLookInterrupts() {
    ControllerFixture program;
    const QString encoder = program.resources() + QStringLiteral("/ffmpeg");
    const QByteArray good = "Duration: 00:00:12.34 Video: hevc, 1280x720, Audio: aac, x";
    writeProgram(encoder, "#!/bin/sh\nif [ -e \"$2.seen\" ]; then\n  trap 'touch \"$2.int\"; exit "
                          "255' INT\n  printf 'Duration: 00:0' >&2\n  while :; do sleep 0.01; "
                          "done\nfi\ntouch \"$2.seen\"\necho '" +
                              good + "' >&2\n");
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    program.add({movie});
    QVERIFY(QFile::exists(movie + QStringLiteral(".int")));
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.files().recordAt(0)->text(key::duration), QStringLiteral("00:00:12.34"));
}

void TestProbing::endsBadly_data() {
    QTest::addColumn<QList<QByteArray>>("steps");
    QTest::addColumn<bool>("kept");
    QTest::newRow("crash at once") << QList<QByteArray>{"abort"} << false;
    QTest::newRow("crash after the report") << QList<QByteArray>{"report", "abort"} << true;
    QTest::newRow("status 0") << QList<QByteArray>{"report", "exit 0"} << true;
    QTest::newRow("nothing but the banner") << QList<QByteArray>{"exit 69"} << false;
    QTest::newRow("half a line") << QList<QByteArray>{"print   Duration: 00:0", "abort"} << false;
}

void TestProbing::endsBadly() {
    QFETCH(QList<QByteArray>, steps);
    QFETCH(bool, kept);
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    ScriptedMovie movie = program.movie(QStringLiteral("b.mp4"));
    if (steps.size() == 1)
        movie.probeSteps({steps[0].constData()});
    else
        movie.probeSteps({steps[0].constData(), steps[1].constData()});
    if (!kept)
        program.boxes.promise(1000);
    program.add({good, movie.write(), good});
    QCOMPARE(program.files().rowCount(), kept ? 3 : 2);
    QCOMPARE(program.boxes.messages(),
             kept ? QStringList() : QStringList{text("IDS_TXT_UNSUPPORTED")});
    QVERIFY(areInStep(program.files()));
}

void TestProbing::talksALot() {
    ControllerFixture program;
    const QString path = program.movie(QStringLiteral("a.mp4"))
                             .probeSteps({"flood 4000000", "report size=1280x720", "flood 4000000"})
                             .write();
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.files().recordAt(0)->text(key::resolution), QStringLiteral("1280x720"));
}

void TestProbing::grandchildHoldsThePipe() {
    ControllerFixture program;
    program.state().probe.duration = QStringLiteral("00:00:01.00"); // one look is enough
    writeProgram(program.resources() + QStringLiteral("/ffmpeg"),
                 "#!/bin/sh\nsleep 60 > /dev/null &\necho $! > \"$2.pid\"\n"
                 "echo 'Duration: 00:00:12.34 Video: hevc, 1280x720, Audio: aac, x' >&2\n");
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 1);
    QFile file(movie + QStringLiteral(".pid"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    // It still has the pipe open.
    QCOMPARE(::kill(static_cast<pid_t>(file.readAll().trimmed().toInt()), SIGKILL), 0);
}

void TestProbing::silentForEver() {
    ControllerFixture program;
    program.probeRunner().setPatience(500ms);
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString silent =
        program.movie(QStringLiteral("b.mp4")).probeSteps({"ignore-term", "hang"}).write();
    program.boxes.promise(1000);
    program.add({good, silent, good});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QCOMPARE(program.files().idList, (std::vector<int>{1, 3}));
    QVERIFY(areInStep(program.files()));
    // Nobody waits for it a second time.
    QCOMPARE(probes(program, silent), 1);
    QTRY_COMPARE(program.processes().liveCount(), 0);
}

void TestProbing::slowButNotSilent() {
    ControllerFixture program;
    program.state().probe.duration = QStringLiteral("00:00:01.00"); // one look is enough
    program.probeRunner().setPatience(1500ms);
    QElapsedTimer clock;
    clock.start();
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .probeSteps({"loop 16", "print .", "wait 100", "end", "print \\n", "report"})
                     .write()});
    QVERIFY(clock.elapsed() >= 1600);
    QCOMPARE(program.files().rowCount(), 1);
}

void TestProbing::talksForEver() {
    ControllerFixture program;
    program.probeRunner().setPatience(400ms);
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString talking = program.movie(QStringLiteral("b.mp4"))
                                .probeSteps({"ignore-term", "report", "loop 1000000",
                                             "print so on\\n", "wait 5", "end"})
                                .write();
    program.boxes.promise(1000);
    program.add({good, talking, good});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QCOMPARE(program.files().idList, (std::vector<int>{1, 3}));
    QCOMPARE(probes(program, talking), 1);
    QTRY_COMPARE(program.processes().liveCount(), 0);
}

void TestProbing::encoderMissing() {
    ControllerFixture program;
    QVERIFY(QFile::remove(program.resources() + QStringLiteral("/ffmpeg")));
    const QString path = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1000);
    program.add({path, path});
    // Said although a first movie that is refused goes without a word.
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_ENCODER_MISSING")});
    QCOMPARE(program.boxes.seen[0].buttons, QStringList{text("IDS_BTN_POPUP_OK")});
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(areInStep(program.files()));

    program.add({path});
    QCOMPARE(program.boxes.seen.size(), 1);

    QVERIFY(!installFakeEncoder(program.resources()).isEmpty());
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
}

void TestProbing::encoderMissingWithMoviesInTheList() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad =
        program.movie(QStringLiteral("b.mp4")).probe(QStringLiteral("h264")).write();
    program.add({good});
    QVERIFY(QFile::remove(program.resources() + QStringLiteral("/ffmpeg")));
    program.boxes.promise(1000);
    program.add({good, good, good});
    program.add({good});
    // Once a session, and no movie is called unsupported that nobody could look at.
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_ENCODER_MISSING")});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.state().itemId, qint64{5});
    QVERIFY(areInStep(program.files()));

    QVERIFY(!installFakeEncoder(program.resources()).isEmpty());
    program.boxes.promise(1000);
    program.add({bad});
    QCOMPARE(program.boxes.seen.last().message, text("IDS_TXT_UNSUPPORTED"));
}

void TestProbing::encoderMayNotBeRun() {
    ControllerFixture program;
    writeProgram(program.resources() + QStringLiteral("/ffmpeg"), "#!/bin/sh\n", false);
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_ENCODER_MISSING")});
    QCOMPARE(program.files().rowCount(), 0);
}

void TestProbing::theLauncherFindsNoEncoder() {
    ControllerFixture program;
    program.useLauncher(QString());
    const QString path = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1000);
    program.add({path, path});
    program.drop({path});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_ENCODER_MISSING")});
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(areInStep(program.files()));

    program.useLauncher(QStringLiteral("7.1"));
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.boxes.seen.size(), 1);
}

void TestProbing::anEncoderThatOnlyEndsLikeAMissingOne() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("b.mp4")).probeSteps({"exit 127"}).write()});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
}

void TestProbing::theEncoderLacksX264() {
    ControllerFixture program;
    program.useLauncher(QStringLiteral("7.1 without-x264"));
    const QString path = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1000);
    program.add({path, path});
    program.add({path});
    // Once a session, and the movies are added.
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_ENCODER_UNSUITABLE")});
    QCOMPARE(program.files().rowCount(), 3);
    QVERIFY(areInStep(program.files()));
}

void TestProbing::theTitleSaysThatTheEncoderLacksX264() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4"))
                     .probeSteps({"report title=\"x\n  configuration: --enable-gpl\""})
                     .write()});
    QVERIFY(program.boxes.messages().isEmpty());
    QCOMPARE(program.files().rowCount(), 1);
}

REELSHIFT_TEST(tst_probing, TestProbing, QApplication)
#include "tst_probing.moc"
