#include "TestProgram.h"
#include "encoder/ScriptedMovie.h"
#include "launcher/LaunchedEncoder.h"
#include "launcher/LauncherScene.h"
#include "launcher/Question.h"
#include "platform/ChildProbe.h"
#include "system/LauncherWords.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What ffprobe says of a small movie, and of itself.
const QByteArray aMovie("/bin/cat << end\n"
                        "program_version.configuration=\"--enable-libx264 --enable-libzimg\"\n"
                        "streams.stream.0.index=0\nstreams.stream.0.codec_name=\"hevc\"\n"
                        "streams.stream.0.codec_type=\"video\"\nstreams.stream.0.width=640\n"
                        "streams.stream.0.height=480\nstreams.stream.0.r_frame_rate=\"25/1\"\n"
                        "end\n");

/// What ffmpeg said.
QByteArray withoutRemarks(QByteArray said) {
    while (said.startsWith(remarkWords))
        said.remove(0, said.indexOf('\n') + 1);
    return said;
}

} // namespace

/// The launcher in front of a scripted ffmpeg that is like one release or another.
class TestLauncher final : public QObject, private LauncherScene {
    Q_OBJECT

private Q_SLOTS:
    void init() { installEncoder(); }
    void cleanup() { removeFolder(); }

    void anExaminationCostsNothing();
    void releases_data();
    void releases();
    void aWriteFailure_data();
    void aWriteFailure();
    void handsEverythingOn();

    void noEncoder_data();
    void noEncoder();
    void anEncoderThatCannotBeStarted();
    void withoutX264_data();
    void withoutX264();
    void anAnswerThatSaysNothing();

    void whatTheProbeSays();
    void aProbeThatSaysNothing_data();
    void aProbeThatSaysNothing();
    void aProbeOfAnotherBuild();
    void theEndComesWhileTheProbeHangs_data();
    void theEndComesWhileTheProbeHangs();
    void aStopDoesNotCostPatience();
};

void TestLauncher::anExaminationCostsNothing() {
    const QString movie = ScriptedMovie(system(), QStringLiteral("a.mp4")).write();
    for (const QStringList& arguments : {QStringList{QStringLiteral("-i"), movie}, QStringList{}}) {
        QVERIFY(QFile(log_).resize(0));
        LaunchedEncoder encoder(system(), arguments);
        const pid_t pid = encoder.pid();
        QVERIFY(encoder.readToEnd());
        QCOMPARE(encoder.waitForEnd(), 1);
        // The same process, and nothing was asked before.
        const QList<EncoderStart> starts = readEncoderStarts(log_);
        QCOMPARE(starts.size(), 1);
        QCOMPARE(starts[0].pid, qint64{pid});
        QCOMPARE(starts[0].arguments, arguments);
        QVERIFY(encoder.said().startsWith("ffmpeg version 7.1 "));
    }
}

void TestLauncher::releases_data() {
    QTest::addColumn<int>("unused");
    for (const char* release :
         {"4.4", "5.1", "5.1.9", "6.0", "6.1", "7.0", "7.1.1", "8.0", "8.1", "9.0"})
        QTest::newRow(release) << 0;
}

/// One road for all of them.
void TestLauncher::releases() {
    beRelease(QString::fromLatin1(QTest::currentDataTag()));
    const QStringList arguments =
        job({"create", "header", "progress 2", "progress 7.5", "write 10", "summary 10"});
    LaunchedEncoder encoder(system(), arguments);
    const pid_t pid = encoder.pid();
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), 0);

    const QList<EncoderStart> starts = readEncoderStarts(log_);
    QCOMPARE(starts.size(), 2);
    QCOMPARE(starts[0].arguments,
             (QStringList{QStringLiteral("-h"), QStringLiteral("encoder=libx264")}));
    QCOMPARE(starts[1].pid, qint64{pid});
    QCOMPARE(starts[1].arguments, arguments.mid(1));

    const QByteArray& said = encoder.said();
    QCOMPARE(said.count(quality), 1);
    QVERIFY(!said.contains("Lsize="));
    QCOMPARE(said.count("ffmpeg version"), 1);
    const qsizetype summary = said.indexOf(quality);
    QVERIFY(said.lastIndexOf("\rframe=", summary) > 0);
    QVERIFY(said.indexOf("time=00:00:10.00", summary) > summary);
    QVERIFY(said.contains("time=00:00:07.50"));
    QVERIFY(said.contains("size="));
    QCOMPARE(QFile(path(QStringLiteral("out.mp4"))).size(), 10);
}

void TestLauncher::aWriteFailure_data() {
    QTest::addColumn<int>("unused");
    for (const char* release : {"5.1", "6.0", "6.1", "7.0", "7.1", "8.0", "9.0"})
        QTest::newRow(release) << 0;
}

void TestLauncher::aWriteFailure() {
    beRelease(QString::fromLatin1(QTest::currentDataTag()));
    LaunchedEncoder encoder(
        system(), job({"create", "header", "progress 2", "write-failure No space left on device",
                       "summary 2", "print Conversion failed!\\n", "exit 228"}));
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), 228);
    QVERIFY(encoder.said().contains("av_interleaved_write_frame(): No space left on device\n"));
    QVERIFY(encoder.said().contains("Error writing trailer of "));
    // Which would be a movie that cannot be converted.
    QVERIFY(!encoder.said().contains("error"));
    QCOMPARE(encoder.said().count(quality), 1);
}

void TestLauncher::handsEverythingOn() {
    beScript(
        "[ \"$1\" = -h ] || [ \"$2\" = -h ] && exit\n"
        "echo \"$LAUNCHED|$(readlink /proc/self/fd/0)|$$|$(cut -d' ' -f5,6 /proc/$$/stat)|$#|$*\""
        " >&2\n");
    LaunchedEncoder encoder(system() + QStringLiteral(":/usr/bin:/bin"),
                            {QStringLiteral("-y"), QStringLiteral("-psnr"), QStringLiteral("-i"),
                             QStringLiteral("a b"), QStringLiteral(""), QStringLiteral("c\nd")});
    const QString group = QStringLiteral("%1 %2").arg(::getpgrp()).arg(::getsid(0));
    const QString expected = QStringLiteral("as it is|/dev/null|%1|%2|5|-y -i a b  c\nd\n")
                                 .arg(encoder.pid())
                                 .arg(group);
    QVERIFY(encoder.readToEnd());
    QCOMPARE(QString::fromUtf8(withoutRemarks(encoder.said())), expected);
    QCOMPARE(encoder.waitForEnd(), 0);
}

void TestLauncher::noEncoder_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("examination") << QStringList{QStringLiteral("-i"), QStringLiteral("a.mp4")};
    QTest::newRow("job") << QStringList{QStringLiteral("-psnr"), QStringLiteral("-i"),
                                        QStringLiteral("a.mp4"), QStringLiteral("b.mp4")};
    QTest::newRow("nothing") << QStringList{};
}

void TestLauncher::noEncoder() {
    QFETCH(const QStringList, arguments);
    for (const QString& searchPath :
         {QStringLiteral("/nowhere"), QStringLiteral(""), QStringLiteral(".:")}) {
        LaunchedEncoder encoder(searchPath, arguments);
        QVERIFY(encoder.readToEnd());
        QCOMPARE(encoder.waitForEnd(), missingEncoderStatus);
        QVERIFY(encoder.said().startsWith(missingEncoderWords));
        QCOMPARE(encoder.said().count('\n'), 1);
        QVERIFY(encoder.said().endsWith('\n'));
    }
}

void TestLauncher::anEncoderThatCannotBeStarted() {
    beScript("exit 0\n");
    QVERIFY(QFile::remove(path(QStringLiteral("ffmpeg"))));
    QFile file(path(QStringLiteral("ffmpeg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no program\n") > 0);
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    file.close();
    LaunchedEncoder encoder(system(), {QStringLiteral("-i"), QStringLiteral("a.mp4")});
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), missingEncoderStatus);
    QVERIFY(encoder.said().startsWith(missingEncoderWords));
}

void TestLauncher::withoutX264_data() {
    QTest::addColumn<int>("unused");
    for (const char* release : {"4.4", "6.1", "7.1"})
        QTest::newRow(release) << 0;
}

void TestLauncher::withoutX264() {
    beRelease(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(" without-x264"));
    LaunchedEncoder encoder(system(), job({"create", "summary 10"}));
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), unsuitableEncoderStatus);
    QVERIFY(encoder.said().startsWith(unsuitableEncoderWords));
    QCOMPARE(encoder.said().count('\n'), 1);
    QVERIFY(!QFile::exists(path(QStringLiteral("out.mp4"))));
    // A movie can be examined with it all the same.
    LaunchedEncoder examination(system(), {QStringLiteral("-i"), path(QStringLiteral("a.mp4"))});
    QVERIFY(examination.waitFor("Video: hevc"));
}

/// One that does not say how it was built, nor anything else to a question, is tried.
void TestLauncher::anAnswerThatSaysNothing() {
    beScript("[ \"$1\" = -h ] || [ \"$2\" = -h ] && exit\n"
             "printf 'frame=  1 Lsize= 1kB time=1\\n' >&2\n");
    LaunchedEncoder encoder(system(), {QStringLiteral("-psnr"), QStringLiteral("-i"),
                                       QStringLiteral("a"), QStringLiteral("b")});
    QVERIFY(encoder.readToEnd());
    QCOMPARE(withoutRemarks(encoder.said()),
             QByteArray("frame=  1 LPSNR=Y:nan U:nan V:nan *:nan size= 1kB time=1\n"));
    QCOMPARE(encoder.waitForEnd(), 0);
}

void TestLauncher::whatTheProbeSays() {
    putScript(QStringLiteral("ffprobe"), "printf '%s\\n' \"$@\" > '" +
                                             QFile::encodeName(path(QStringLiteral("asked"))) +
                                             "'\n" + aMovie);
    QStringList arguments = job({"create", "summary 10"});
    arguments.insert(arguments.size() - 1, QStringLiteral("-vf"));
    arguments.insert(arguments.size() - 1, QStringLiteral("scale=320:240"));
    LaunchedEncoder encoder(system(), arguments);
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), 0);
    // Neither asked for its abilities nor for anything else: ffprobe has said it all.
    const QList<EncoderStart> starts = readEncoderStarts(log_);
    QCOMPARE(starts.size(), 1);
    const QStringList& given = starts[0].arguments;
    QCOMPARE(given.first(3),
             (QStringList{QStringLiteral("-noautorotate"), QStringLiteral("-i"), arguments[2]}));
    QVERIFY(given[6].startsWith(QStringLiteral("scale=320:240:out_range=tv,")));
    QCOMPARE(given.last(), arguments.last());
    QFile asked(path(QStringLiteral("asked")));
    QVERIFY(asked.open(QIODevice::ReadOnly));
    const QByteArray end = "\n-i\n" + QFile::encodeName(arguments[2]) + '\n';
    QVERIFY(asked.readAll().endsWith(end));
    QVERIFY(encoder.said().startsWith(QByteArray(remarkWords).append("ffmpeg -noautorotate")));
}

void TestLauncher::aProbeThatSaysNothing_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("nothing") << QByteArray("exit 1\n");
    QTest::newRow("on the other stream") << QByteArray("exec 1>&2\n" + aMovie);
    QTest::newRow("nonsense") << QByteArray("head -c 100000 /dev/urandom\n");
    QTest::newRow("too much") << QByteArray("exec yes streams.stream.0.width=1\n");
    QTest::newRow("crash") << QByteArray("kill -SEGV $$\n");
}

void TestLauncher::aProbeThatSaysNothing() {
    QFETCH(const QByteArray, script);
    putScript(QStringLiteral("ffprobe"), "PATH=/usr/bin:/bin\n" + script);
    const QStringList arguments = job({"create", "summary 10"});
    LaunchedEncoder encoder(system(), arguments);
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), 0);
    QCOMPARE(readEncoderStarts(log_).last().arguments, arguments.mid(1));
    QVERIFY(encoder.said().contains("nothing is added\n"));
    QCOMPARE(encoder.said().count(quality), 1);
}

/// It knows the movie, but not what this ffmpeg can do.
void TestLauncher::aProbeOfAnotherBuild() {
    beRelease(QStringLiteral("7.1 without-x264"));
    QDir(system()).mkdir(QStringLiteral("other"));
    putScript(QStringLiteral("other/ffprobe"), aMovie);
    LaunchedEncoder encoder(system() + u':' + path(QStringLiteral("other")),
                            job({"create", "summary 10"}));
    QVERIFY(encoder.readToEnd());
    QCOMPARE(encoder.waitForEnd(), unsuitableEncoderStatus);
}

void TestLauncher::theEndComesWhileTheProbeHangs_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("terminated") << SIGTERM;
    QTest::newRow("interrupted") << SIGINT;
}

void TestLauncher::theEndComesWhileTheProbeHangs() {
    QFETCH(const int, number);
    putScript(QStringLiteral("ffprobe"),
              "echo $$ > '" + QFile::encodeName(path(QStringLiteral("pid"))) + ".new'\n" +
                  "/bin/mv '" + QFile::encodeName(path(QStringLiteral("pid"))) + ".new' '" +
                  QFile::encodeName(path(QStringLiteral("pid"))) + "'\nexec /bin/sleep 300\n");
    LaunchedEncoder encoder(system(), job({"create", "summary 10"}));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(QStringLiteral("pid"))), 10000);
    QFile file(path(QStringLiteral("pid")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const pid_t probe = file.readAll().trimmed().toInt();
    QVERIFY(!isDead(probe));
    QCOMPARE(::kill(encoder.pid(), number), 0);
    QCOMPARE(encoder.waitForEnd(), -number);
    QVERIFY(isGone(probe));
    QVERIFY(!QFile::exists(path(QStringLiteral("out.mp4"))));
}

void TestLauncher::aStopDoesNotCostPatience() {
    // Asked by a process of its own, which can be stopped.
    putScript(QStringLiteral("slow"), "while ! [ -e '" +
                                          QFile::encodeName(path(QStringLiteral("go"))) +
                                          "' ]; do /bin/sleep 0.01; done\necho answer\n");
    constexpr std::chrono::milliseconds patience{1500};
    const pid_t asker = ::fork();
    if (asker == 0) {
        const std::string answer = answerOf(path(QStringLiteral("slow")).toStdString(), {},
                                            patience, Streams::StandardOutput);
        ::_exit(answer == "answer\n" ? 7 : 1);
    }
    QCOMPARE(::kill(asker, SIGSTOP), 0);
    QTRY_COMPARE(stateOfProcess(asker), 'T');
    QElapsedTimer stopped;
    stopped.start();
    QTRY_VERIFY_WITH_TIMEOUT(stopped.hasExpired(patience.count() + 500), 10000);
    QCOMPARE(::kill(asker, SIGCONT), 0);
    touch(QStringLiteral("go"));
    int status = 0;
    QCOMPARE(::waitpid(asker, &status, 0), asker);
    QCOMPARE(WEXITSTATUS(status), 7);
}

REELSHIFT_TEST(tst_launcher, TestLauncher, QCoreApplication)
#include "tst_launcher.moc"
