#include "TestProgram.h"
#include "app/RunChecks.h"

#include <QApplication>

namespace {

constexpr int stopError = 1000;
constexpr int replaceAnswer = 1003;

const QString outputName = QStringLiteral("a_HQ_640x480.mp4");

} // namespace

/// What becomes of the output of an encoder that did not finish, and of what stood in its place.
class TestPartialOutput final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anOlderOutputThatWasNotTouchedStays();
    void anOlderOutputThatWasTouchedGoes();
    void anOutputMadeAfterItsDeletionGoesToo();
    void anOutputBehindASymbolicLinkGoes();

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
    writeContent(program.output(outputName), "old");
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(contentOf(program.output(outputName)), QByteArray("old"));
}

void TestPartialOutput::anOlderOutputThatWasTouchedGoes() {
    ControllerFixture program;
    addOne(program, {"create", "write 3", "exit 1"});
    writeContent(program.output(outputName), "old");
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(!QFile::exists(program.output(outputName)));
}

void TestPartialOutput::anOutputMadeAfterItsDeletionGoesToo() {
    ControllerFixture program;
    program.app().engine().setPatience(
        {std::chrono::milliseconds(300), std::chrono::milliseconds(1000)});
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
    QVERIFY(QFile::link(target, program.output(outputName)));
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(!QFile::exists(target));
}

REELSHIFT_TEST(tst_partial_output, TestPartialOutput, QApplication)
#include "tst_partial_output.moc"
