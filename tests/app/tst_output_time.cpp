#include "TestProgram.h"
#include "app/RunChecks.h"
#include "convert/FileTime.h"

namespace {

constexpr int skipConflict = 1002;

constexpr timespec taken{1'234'567'890, 123'456'789};
constexpr timespec earlier{1'000'000'000, 5};

bool hasTime(const QString& path, timespec time) {
    const auto found = modificationTime(path);
    return found && found->tv_sec == time.tv_sec && found->tv_nsec == time.tv_nsec;
}

} // namespace

/// A converted movie is as old as the one that it was made of; no other file's time is touched.
class TestOutputTime final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isTheSourcesOwn();
    void isThereUnderTheSummary();
    void isThatOfTheStart();
    void ofAReplacedOne();
    void ofASkippedOneStays();
    void ofAnUntouchedOneStays();
    void aSecondRunThatFailsLeavesTheFirstOnesFile_data();
    void aSecondRunThatFailsLeavesTheFirstOnesFile();
    void aSecondRunOfTheSameSizeConverts();
    void anOutputThatIsGoneIsNotConverted();

private:
    static QString scripted(ControllerFixture& program, std::initializer_list<const char*> encode);
};

QString TestOutputTime::scripted(ControllerFixture& program,
                                 std::initializer_list<const char*> encode) {
    const QString path = program.movie(soleMovie).encode(encode).write();
    if (!setModificationTime(path, taken))
        qFatal("the time cannot be set");
    return path;
}

void TestOutputTime::isTheSourcesOwn() {
    ControllerFixture program;
    program.add({scripted(program, {"create", "header", "progress 5", "write 10", "summary 10"})});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(hasTime(program.output(soleOutput), taken));
    QVERIFY(hasTime(program.movies() + u'/' + soleMovie, taken));
}

// From the summary the user goes to look at the folder.
void TestOutputTime::isThereUnderTheSummary() {
    ControllerFixture program;
    program.add({scripted(program, {"create", "header", "write 10", "summary 10"})});
    bool isThere = false;
    program.boxes.promise(okAnswer, false,
                          [&] { isThere = hasTime(program.output(soleOutput), taken); });
    QVERIFY(program.runToEnd());
    QVERIFY(isThere);
}

// What happens to the source later is not what was converted.
void TestOutputTime::isThatOfTheStart() {
    ControllerFixture program;
    program.add(
        {scripted(program, {"create", "header", "write 10", "unlink a.mp4", "summary 10"})});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(!QFile::exists(program.movies() + u'/' + soleMovie));
    QVERIFY(hasTime(program.output(soleOutput), taken));
}

void TestOutputTime::ofAReplacedOne() {
    ControllerFixture program;
    program.add({scripted(program, {"create", "header", "write 10", "summary 10"})});
    QVERIFY(setModificationTime(writeContent(program.output(soleOutput), "old"), earlier));
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(contentOf(program.output(soleOutput)).size(), 10);
    QVERIFY(hasTime(program.output(soleOutput), taken));
}

void TestOutputTime::ofASkippedOneStays() {
    ControllerFixture program;
    program.add({scripted(program, {"create", "header", "write 10", "summary 10"})});
    QVERIFY(setModificationTime(writeContent(program.output(soleOutput), "old"), earlier));
    program.boxes.promise(skipConflict);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("old"));
    QVERIFY(hasTime(program.output(soleOutput), earlier));
}

void TestOutputTime::ofAnUntouchedOneStays() {
    ControllerFixture program;
    program.add({scripted(program, {"header", "exit 1"})});
    QVERIFY(setModificationTime(writeContent(program.output(soleOutput), "old"), earlier));
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(contentOf(program.output(soleOutput)), QByteArray("old"));
    QVERIFY(hasTime(program.output(soleOutput), earlier));
}

void TestOutputTime::aSecondRunThatFailsLeavesTheFirstOnesFile_data() {
    QTest::addColumn<QStringList>("second");
    QTest::addColumn<bool>("stays");
    QTest::newRow("never opened it") << QStringLiteral("header;exit 1").split(u';') << true;
    QTest::newRow("overwrote it") << QStringLiteral("create;header;write 10;exit 1").split(u';')
                                  << false;
}

// The same movie twice in one run: the second job must see whether its own encoder touched the
// file.
void TestOutputTime::aSecondRunThatFailsLeavesTheFirstOnesFile() {
    QFETCH(const QStringList, second);
    QFETCH(const bool, stays);
    ControllerFixture program;
    const QString good = scripted(program, {"create", "header", "write 10", "summary 10"});
    program.add({good});
    // The same name from another folder.
    QVERIFY(QDir(program.movies()).mkpath(QStringLiteral("other")));
    program.add({ScriptedMovie(program.movies() + QStringLiteral("/other"), soleMovie)
                     .encode(second)
                     .write()});
    QCOMPARE(program.files().rowCount(), 2);
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(QFile::exists(program.output(soleOutput)), stays);
    if (stays)
        QVERIFY(hasTime(program.output(soleOutput), taken));
}

// Byte for byte as long, in the same file, and in the end of the same time.
void TestOutputTime::aSecondRunOfTheSameSizeConverts() {
    ControllerFixture program;
    const QString movie = scripted(program, {"create", "header", "write 10", "summary 10"});
    program.add({movie, movie});
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.encodes().size(), 2);
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(hasTime(program.output(soleOutput), taken));
}

void TestOutputTime::anOutputThatIsGoneIsNotConverted() {
    ControllerFixture program;
    program.add({scripted(program, {"create", "header", "write 10", "summary 10",
                                    "unlink ../home/Documents/a_HQ_640x480.mp4"})});
    program.boxes.promise(stopError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(isWaiting(0, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
}

REELSHIFT_TEST(tst_output_time, TestOutputTime, QApplication)
#include "tst_output_time.moc"
