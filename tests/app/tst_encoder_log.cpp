#include "TestProgram.h"
#include "app/RunScene.h"

#include <QApplication>
#include <QTest>

namespace {

QStringList* logged = nullptr;
QtMessageHandler formerHandler = nullptr;

void note(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg && qstrcmp(context.category, "reelshift.convert") == 0)
        *logged += message;
    else
        formerHandler(type, context, message);
}

/// The warnings of a run, while this lives.
class Log final {
public:
    Log() {
        logged = &lines;
        formerHandler = qInstallMessageHandler(note);
    }
    ~Log() { qInstallMessageHandler(formerHandler); }
    Q_DISABLE_COPY_MOVE(Log)

    QStringList lines;
};

} // namespace

/// What an encoder said before it failed, as the log has it.
class TestEncoderLog final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lastLinesOfAFailure();
    void fullDisk();
    void missingEncoder();
    void nameForgesNoLine();
    void nothingAfterASuccess();
    void nothingAfterAStop();
};

void TestEncoderLog::lastLinesOfAFailure() {
    RunScene scene;
    Log log;
    QStringList steps;
    for (int line = 1; line <= 60; ++line)
        steps += QStringLiteral("print line %1\\n").arg(line);
    scene.addScript(QStringLiteral("a"), steps << QStringLiteral("progress 1")
                                               << QStringLiteral("progress 2")
                                               << QStringLiteral("print the \\x1b[31mreason\\n")
                                               << QStringLiteral("exit 69"));
    scene.program.boxes.promise(1000);
    QStringList loggedBeforeTheSummary;
    scene.program.boxes.promise(1000, false, [&] { loggedBeforeTheSummary = log.lines; });
    QVERIFY(scene.program.runToEnd());
    QVERIFY(scene.program.boxes.allKept());
    QCOMPARE(log.lines, loggedBeforeTheSummary);
    QCOMPARE(log.lines.size(), 41);
    QCOMPARE(log.lines.first(),
             QStringLiteral("a.mp4: not converted, the encoder ended with status 69"));
    QCOMPARE(log.lines[1], QStringLiteral("a.mp4: line 23"));
    QVERIFY2(log.lines[39].startsWith(QStringLiteral("a.mp4: frame=")), qPrintable(log.lines[39]));
    QVERIFY(log.lines[39].contains(QStringLiteral("time=00:00:02")));
    QCOMPARE(log.lines[40], QStringLiteral("a.mp4: the \\x1b[31mreason"));
}

void TestEncoderLog::fullDisk() {
    RunScene scene;
    Log log;
    scene.addScript(QStringLiteral("a"),
                    {QStringLiteral("print av_interleaved_write_frame(): No space left\\n"),
                     QStringLiteral("exit 1")});
    scene.program.boxes.promise(1000);
    scene.program.boxes.promise(1000);
    QVERIFY(scene.program.runToEnd());
    QCOMPARE(log.lines.last(),
             QStringLiteral("a.mp4: av_interleaved_write_frame(): No space left"));
}

void TestEncoderLog::missingEncoder() {
    RunScene scene;
    scene.add({QStringLiteral("a")});
    QVERIFY(QFile::remove(scene.program.resources() + QStringLiteral("/ffmpeg")));
    Log log;
    scene.program.boxes.promise(1000);
    scene.program.boxes.promise(1000);
    QVERIFY(scene.program.runToEnd());
    QCOMPARE(log.lines.size(), 1);
    QVERIFY2(log.lines.first().startsWith(
                 QStringLiteral("a.mp4: not converted, the encoder could not be started: ")),
             qPrintable(log.lines.first()));
}

void TestEncoderLog::nameForgesNoLine() {
    RunScene scene;
    Log log;
    scene.addScript(QStringLiteral("a\nb"),
                    {QStringLiteral("print one\\n"), QStringLiteral("exit 1")});
    scene.program.boxes.promise(1000);
    scene.program.boxes.promise(1000);
    QVERIFY(scene.program.runToEnd());
    QVERIFY(log.lines.size() >= 2);
    QCOMPARE(log.lines.last(), QStringLiteral("a\\nb.mp4: one"));
    for (const QString& line : log.lines)
        QVERIFY2(!line.contains(u'\n'), qPrintable(line));
}

void TestEncoderLog::nothingAfterASuccess() {
    RunScene scene;
    Log log;
    scene.add({QStringLiteral("a")});
    QVERIFY(scene.begin());
    QVERIFY(scene.end({QStringLiteral("a")}));
    QCOMPARE(log.lines, QStringList());
}

void TestEncoderLog::nothingAfterAStop() {
    RunScene scene;
    Log log;
    scene.add({QStringLiteral("a")});
    QVERIFY(scene.begin());
    scene.program.boxes.promise(1001);
    scene.program.click("btnStop");
    QVERIFY(scene.program.waitUntilIdle());
    QCOMPARE(log.lines, QStringList());
}

REELSHIFT_TEST(tst_encoder_log, TestEncoderLog, QApplication)
#include "tst_encoder_log.moc"
