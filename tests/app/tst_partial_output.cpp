#include "TestProgram.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "platform/ChildProcess.h"

#include <QApplication>
#include <QDeadlineTimer>

#include <thread>

/// What becomes of the output of an encoder that did not finish, and of what stood in its place.
class TestPartialOutput final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anOlderOutputThatWasNotTouchedStays();
    void anOlderOutputThatWasTouchedGoes();
    void anOutputMadeAfterItsDeletionGoesToo();
    void anOutputBehindASymbolicLinkGoes();
    void whatOthersPutThereUnderTheQuestionStays_data();
    void whatOthersPutThereUnderTheQuestionStays();
    void whatOthersPutInPlaceOfItStays_data();
    void whatOthersPutInPlaceOfItStays();
    void anOutputThatWentByItselfIsNotConverted();

private:
    static void addOne(ControllerFixture& program, std::initializer_list<const char*> encode);
};

void TestPartialOutput::addOne(ControllerFixture& program,
                               std::initializer_list<const char*> encode) {
    program.add({program.movie(QStringLiteral("a.mp4")).encode(encode).write()});
    QCOMPARE(program.files().rowCount(), 1);
}

void TestPartialOutput::anOlderOutputThatWasNotTouchedStays() {
    ControllerFixture program;
    addOne(program, {"header", "exit 1"});
    writeContent(program.output(soleOutput), "old");
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("old"));
}

void TestPartialOutput::anOlderOutputThatWasTouchedGoes() {
    ControllerFixture program;
    addOne(program, {"create", "write 3", "exit 1"});
    writeContent(program.output(soleOutput), "old");
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(!QFile::exists(program.output(soleOutput)));
}

void TestPartialOutput::anOutputMadeAfterItsDeletionGoesToo() {
    ControllerFixture program;
    program.engine().setPatience({std::chrono::milliseconds(300), std::chrono::milliseconds(1000)});
    addOne(program, {"ignore-term", "header",
                     "print an error while opening\\nframe=    0 time=00:00:00.00 bitrate=\\r",
                     "wait-file late", "create", "write 10", "touch made", "hang"});
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    program.click("btnConvertFile");
    QTRY_COMPARE(program.status(0), status::STATPR);
    // The row goes back to waiting after the first deletion, before the encoder is told to end.
    QTRY_COMPARE(program.status(0), status::STATWT);
    writeContent(program.path(QStringLiteral("movies/late")));
    QVERIFY(program.waitUntilIdle());
    QVERIFY(QFile::exists(program.path(QStringLiteral("movies/made"))));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QVERIFY(noEncoderLives(program.encodes()));
}

void TestPartialOutput::anOutputBehindASymbolicLinkGoes() {
    ControllerFixture program;
    addOne(program, {"create", "write 10", "exit 1"});
    const QString target = program.path(QStringLiteral("elsewhere.mp4"));
    QVERIFY(QFile::link(target, program.output(soleOutput)));
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(!QFile::exists(target));
}

void TestPartialOutput::whatOthersPutThereUnderTheQuestionStays_data() {
    QTest::addColumn<bool>("replaced");
    QTest::addColumn<QStringList>("encode");
    const QStringList ended{QStringLiteral("header"), QStringLiteral("exit 1")};
    // Ends while the question about its damage is open.
    const QStringList endsLater{QStringLiteral("header"),
                                QStringLiteral("print frame= 1 time=00:00:01.00 error\\r"),
                                QStringLiteral("wait-file go"), QStringLiteral("exit 1")};
    QTest::newRow("an older output that was to be replaced") << true << ended;
    QTest::newRow("no output") << false << ended;
    QTest::newRow("no output, the encoder ends later") << false << endsLater;
}

void TestPartialOutput::whatOthersPutThereUnderTheQuestionStays() {
    QFETCH(bool, replaced);
    QFETCH(QStringList, encode);
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).encode(encode).write()});
    if (replaced) {
        writeContent(program.output(soleOutput), "old");
        program.boxes.promise(replaceAnswer);
    }
    program.boxes.promise(stopError, false, [&] {
        writeContent(program.movies() + QStringLiteral("/go"));
        const JobPtr run = program.engine().jobs().current();
        // Without the main loop: it would answer the next box.
        const QDeadlineTimer deadline(20000);
        while (!run->plan().output.isJudged() && !deadline.hasExpired())
            std::this_thread::yield();
        QVERIFY(run->plan().output.isJudged() && run->task()->end());
        writeContent(program.output(soleOutput), "of somebody else");
    });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("of somebody else"));
}

void TestPartialOutput::whatOthersPutInPlaceOfItStays_data() {
    QTest::addColumn<QStringList>("encode");
    QTest::addColumn<int>("answer");
    const auto row = [](const char* name, const char* words, int answer) {
        QTest::newRow(name) << QStringList{QStringLiteral("create"),
                                           QStringLiteral("header"),
                                           QStringLiteral("progress 1"),
                                           QStringLiteral("write 10"),
                                           QStringLiteral("print ") + QLatin1StringView(words) +
                                               QStringLiteral("\\nframe=   60 time=00:00:02.00 "
                                                              "bitrate=\\r"),
                                           QStringLiteral("hang")}
                            << answer;
    };
    row("damage", "an error while decoding", stopError);
    row("a full disk", "No space left on device", okAnswer);
}

// Under the box of an encoder that is still there.
void TestPartialOutput::whatOthersPutInPlaceOfItStays() {
    QFETCH(QStringList, encode);
    QFETCH(int, answer);
    ControllerFixture program;
    program.engine().setPatience({std::chrono::milliseconds(300), std::chrono::milliseconds(300)});
    program.add({program.movie(soleMovie).encode(encode).write()});
    program.boxes.promise(answer, false, [&] {
        QVERIFY(!program.engine().jobs().current()->task()->end());
        QVERIFY(QFile::remove(program.output(soleOutput)));
        writeContent(program.output(soleOutput), "of somebody else");
    });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(noEncoderLives(program.encodes()));
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("of somebody else"));
}

// Whether it ends by itself or at a stop that comes in its last second.
void TestPartialOutput::anOutputThatWentByItselfIsNotConverted() {
    ControllerFixture program(std::chrono::seconds(5));
    const QString output = program.output(soleOutput);
    program.add(
        {program.movie(QStringLiteral("a.mp4"))
             .encode(QStringList{QStringLiteral("create"), QStringLiteral("header"),
                                 QStringLiteral("progress 1"), QStringLiteral("write 10"),
                                 QStringLiteral("summary 10"), QStringLiteral("unlink ") + output})
             .write()});
    program.click("btnConvertFile");
    QTRY_VERIFY(program.engine().jobs().current()->row.record->contains(key::progressValue));
    const auto task = program.engine().jobs().current()->task();
    QVERIFY(task->waitForEnd(std::chrono::seconds(20)));
    program.boxes.promise(1001);
    program.click("btnStop");
    QVERIFY(program.waitUntilIdle());
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
}

REELSHIFT_TEST(tst_partial_output, TestPartialOutput, QApplication)
#include "tst_partial_output.moc"
