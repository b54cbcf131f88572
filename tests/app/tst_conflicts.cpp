#include "TestProgram.h"
#include "app/RunChecks.h"
#include "app/RunScene.h"

#include <QApplication>
#include <QFile>

#include <filesystem>

namespace {

constexpr int cancelAnswer = 1000;
constexpr int duplicateAnswer = 1001;
constexpr int skipAnswer = 1002;

// Of the two boxes about a source.
constexpr int skipSource = 1000;

} // namespace

/// What stands in a job's way before its encoder: an output's name that is taken, a source that is
/// not there.
class TestConflicts final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theQuestion();
    void replacePutsOverwriteInFront();
    void skipKeepsTheFileAndLaunchesWithoutArguments();
    void skipOfTheLastJobLaunchesAfterTheSummary();
    void duplicate_data();
    void duplicate();
    void cancelStopsTheRun();
    void cancelTakesConvertedRowsOut();
    void forAllSticksInTheRunOnly_data();
    void forAllSticksInTheRunOnly();
    void anUntickedAnswerDoesNotStick();
    void replaceNeverWritesASource_data();
    void replaceNeverWritesASource();
    void aStoredReplaceIsNotObeyedForASource();
    void anotherStoredAnswerIsObeyedForASource();
    void aMissingSourceIsSkipped();
    void aSourceThatComesBackIsTriedAgain();
    void aSourceThatStaysAwayIsAskedForAgain();
    void aMissingSourceComesBeforeAConflict();
    void forAllAtAConflictAndThenAnError();
    void skipAtAConflictWithTwoMoreQueued();
    void cancelAtAConflict();

private:
    static QStringList write(const ControllerFixture& program, std::initializer_list<const char*>);
    static QString outputOf(const ControllerFixture& program, const char* name);
};

QStringList TestConflicts::write(const ControllerFixture& program,
                                 std::initializer_list<const char*> names) {
    QStringList paths;
    for (const char* each : names)
        paths += program.movie(QString::fromLatin1(each) + QStringLiteral(".mp4")).write();
    return paths;
}

QString TestConflicts::outputOf(const ControllerFixture& program, const char* name) {
    return program.output(QString::fromLatin1(name) + QStringLiteral("_HQ_640x480.mp4"));
}

void TestConflicts::theQuestion() {
    ControllerFixture program;
    program.add(write(program, {"a"}));
    const QString output = writeContent(outputOf(program, "a"), "old");
    program.boxes.promise(cancelAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 1);
    const BoxAnswers::Box& box = program.boxes.seen[0];
    QCOMPARE(box.message, QString(getLocalString("IDS_TXT_POPUP_SAMENAME") + u'\n' + output));
    QCOMPARE(box.buttons, textsOf({"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_DUPLICATE",
                                   "IDS_BTN_POPUP_SKIP", "IDS_BTN_POPUP_REPLACE"}));
    QCOMPARE(box.checkBox, getLocalString("IDS_TXT_POPUP_DOFORERROR"));
}

void TestConflicts::replacePutsOverwriteInFront() {
    ControllerFixture program;
    program.add(write(program, {"a"}));
    const QString output = writeContent(outputOf(program, "a"), "old");
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    const QStringList arguments = program.encodes().value(0).arguments;
    QCOMPARE(arguments.mid(0, 3),
             QStringList({QStringLiteral("-y"), QStringLiteral("-psnr"), QStringLiteral("-i")}));
    QCOMPARE(arguments.last(), output);
    QCOMPARE(contentOf(output).size(), 4096);
    QCOMPARE(namesIn(program.documents()).size(), 1);
}

void TestConflicts::skipKeepsTheFileAndLaunchesWithoutArguments() {
    ControllerFixture program;
    program.add(write(program, {"a", "b"}));
    const QString output = writeContent(outputOf(program, "a"), "old");
    program.boxes.promise(skipAnswer);
    program.boxes.promise(okAnswer);
    const JobRecordPtr skipped = program.files().recordAt(0);
    QVERIFY(program.runToEnd());
    QTRY_COMPARE(startsWithoutArguments(program), 1);
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(program.encodes()[0].arguments.last(), outputOf(program, "b"));
    QCOMPARE(contentOf(output), QByteArray("old"));
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
    QCOMPARE(skipped->text(key::path), output);
    // The usage text that the launch without arguments prints asks nothing.
    QCOMPARE(program.boxes.seen.size(), 2);
    QTRY_VERIFY(noJobIsLeft(program));
    QCOMPARE(contentOf(output), QByteArray("old"));
}

void TestConflicts::skipOfTheLastJobLaunchesAfterTheSummary() {
    ControllerFixture program;
    program.add(write(program, {"a"}));
    const QString output = writeContent(outputOf(program, "a"), "old");
    int startsUnderTheSummary = -1;
    program.boxes.promise(skipAnswer);
    program.boxes.promise(okAnswer, false,
                          [&] { startsUnderTheSummary = startsWithoutArguments(program); });
    QVERIFY(program.runToEnd());
    QCOMPARE(startsUnderTheSummary, 0);
    QTRY_COMPARE(startsWithoutArguments(program), 1);
    QTRY_VERIFY(noJobIsLeft(program));
    QCOMPARE(contentOf(output), QByteArray("old"));
    QVERIFY(isWaiting(0, program));
    QVERIFY(runControlsAre(true, program));
    QCOMPARE(program.boxes.seen.size(), 2);
}

void TestConflicts::duplicate_data() {
    QTest::addColumn<int>("profile");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("duplicate");
    const auto row = [](const char* name, int profile, std::initializer_list<const char*> taken,
                        const char* duplicate) {
        QStringList names;
        for (const char* each : taken)
            names += QString::fromLatin1(each);
        QTest::newRow(name) << profile << names << QString::fromLatin1(duplicate);
    };
    row("best", 1, {"a_HQ_640x480.mp4"}, "a_HQ(1)_640x480.mp4");
    row("best, the second", 1, {"a_HQ_640x480.mp4", "a_HQ(1)_640x480.mp4"}, "a_HQ(2)_640x480.mp4");
    row("best, a gap is taken", 1, {"a_HQ_640x480.mp4", "a_HQ(2)_640x480.mp4"},
        "a_HQ(1)_640x480.mp4");
    row("pro, the second", 0, {"a_Pro_640x480.mp4", "a_Pro(1)_640x480.mp4"},
        "a_Pro(2)_640x480.mp4");
    row("normal ends in .mov", 2, {"a_Normal_640x480.mp4"}, "a_Normal(1)_640x480.mov");
    row("normal, the second", 2, {"a_Normal_640x480.mp4", "a_Normal(1)_640x480.mov"},
        "a_Normal(2)_640x480.mov");
    row("normal, .mp4 numbers do not count", 2, {"a_Normal_640x480.mp4", "a_Normal(1)_640x480.mp4"},
        "a_Normal(1)_640x480.mov");
}

void TestConflicts::duplicate() {
    QFETCH(int, profile);
    QFETCH(QStringList, taken);
    QFETCH(QString, duplicate);
    ControllerFixture program;
    program.add(write(program, {"a"}));
    program.files().recordAt(0)->set(key::profile, program.files().comboBoxItems[profile]);
    for (const QString& name : taken)
        writeContent(program.output(name), "old");
    program.boxes.promise(duplicateAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    const QStringList arguments = program.encodes().value(0).arguments;
    QCOMPARE(arguments.first(), QStringLiteral("-psnr"));
    QCOMPARE(arguments.last(), program.output(duplicate));
    for (const QString& name : taken)
        QCOMPARE(contentOf(program.output(name)), QByteArray("old"));
    QCOMPARE(contentOf(program.output(duplicate)).size(), 4096);
}

void TestConflicts::cancelStopsTheRun() {
    ControllerFixture program;
    program.add(write(program, {"a", "b"}));
    const QString output = writeContent(outputOf(program, "a"), "old");
    program.boxes.promise(cancelAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 1); // no summary after a stop
    QVERIFY(program.encodes().isEmpty());
    QCOMPARE(startsWithoutArguments(program), 0);
    QVERIFY(program.files().conversionTaskList.empty());
    QVERIFY(runControlsAre(true, program));
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QCOMPARE(contentOf(output), QByteArray("old"));
}

void TestConflicts::cancelTakesConvertedRowsOut() {
    ControllerFixture program;
    program.add(write(program, {"a", "b", "c"}));
    writeContent(outputOf(program, "b"), "old");
    program.boxes.promise(cancelAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(program.files().rowCount(), 2);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(QFile::exists(outputOf(program, "a")));
}

void TestConflicts::forAllSticksInTheRunOnly_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("encodes");
    QTest::addColumn<int>("files");
    QTest::newRow("skip") << skipAnswer << 0 << 3;
    QTest::newRow("duplicate") << duplicateAnswer << 3 << 6;
    QTest::newRow("replace") << replaceAnswer << 3 << 3;
}

void TestConflicts::forAllSticksInTheRunOnly() {
    QFETCH(int, answer);
    QFETCH(int, encodes);
    QFETCH(int, files);
    ControllerFixture program;
    const QStringList movies = write(program, {"a", "b", "c"});
    program.add(movies);
    for (const char* each : {"a", "b", "c"})
        writeContent(outputOf(program, each), "old");
    program.boxes.promise(answer, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QCOMPARE(program.encodes().size(), encodes);
    QCOMPARE(namesIn(program.documents()).size(), files);
    QVERIFY(program.state().checkStatusForFileConflict);
    QCOMPARE(program.state().resultStoredForConflict, answer);

    // The next run asks again.
    QTRY_VERIFY(noJobIsLeft(program));
    if (program.files().rowCount() == 0)
        program.add(movies);
    program.boxes.promise(cancelAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 3);
    QVERIFY(program.boxes.messages().last().startsWith(getLocalString("IDS_TXT_POPUP_SAMENAME")));
    QVERIFY(!program.state().checkStatusForFileConflict);
}

void TestConflicts::anUntickedAnswerDoesNotStick() {
    ControllerFixture program;
    program.add(write(program, {"a", "b"}));
    for (const char* each : {"a", "b"})
        writeContent(outputOf(program, each), "old");
    program.boxes.promise(duplicateAnswer);
    program.boxes.promise(replaceAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 3);
    QCOMPARE(contentOf(outputOf(program, "a")), QByteArray("old"));
    QCOMPARE(contentOf(outputOf(program, "b")).size(), 4096);
    QVERIFY(!program.state().checkStatusForFileConflict);
}

void TestConflicts::replaceNeverWritesASource_data() {
    QTest::addColumn<QString>("how");
    for (const char* each : {"another row's source", "hard link", "symbolic link"})
        QTest::newRow(each) << QString::fromLatin1(each);
}

void TestConflicts::replaceNeverWritesASource() {
    QFETCH(QString, how);
    ControllerFixture program;
    const QString source = write(program, {"a"})[0];
    const QString candidate = outputOf(program, "a");
    QStringList movies{source};
    if (how == QStringLiteral("hard link"))
        std::filesystem::create_hard_link(source.toStdString(), candidate.toStdString());
    else if (how == QStringLiteral("symbolic link"))
        std::filesystem::create_symlink(source.toStdString(), candidate.toStdString());
    else
        movies += ScriptedMovie(program.documents(), QStringLiteral("a_HQ_640x480.mp4")).write();
    program.add(movies);
    const QByteArray before = contentOf(source);
    const QByteArray candidateBefore = contentOf(candidate);

    program.boxes.promise(replaceAnswer);
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.boxes.messages().value(1),
             QString(linesOf({"IDS_TXT_POPUP_ERROR", "IDS_TXT_POPUP_WANTTOSKIP"}) +
                     QStringLiteral("\na.mp4")));
    for (const EncoderStart& each : program.encodes())
        QVERIFY(!each.arguments.contains(QStringLiteral("-y")));
    QCOMPARE(contentOf(source), before);
    QCOMPARE(contentOf(candidate), candidateBefore);
    QVERIFY(isWaiting(0, program));
}

void TestConflicts::aStoredReplaceIsNotObeyedForASource() {
    ControllerFixture program;
    program.add(write(program, {"a", "b"}));
    writeContent(outputOf(program, "a"), "old");
    const QByteArray before = contentOf(program.files().recordAt(1)->text(key::srcpath));
    std::filesystem::create_hard_link(program.path(QStringLiteral("movies/b.mp4")).toStdString(),
                                      outputOf(program, "b").toStdString());
    program.boxes.promise(replaceAnswer, true);
    program.boxes.promise(duplicateAnswer, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(contentOf(program.path(QStringLiteral("movies/b.mp4"))), before);
    QCOMPARE(contentOf(outputOf(program, "b")), before);
    QCOMPARE(contentOf(outputOf(program, "a")).size(), 4096);
    QVERIFY(QFile::exists(program.output(QStringLiteral("b_HQ(1)_640x480.mp4"))));
}

void TestConflicts::anotherStoredAnswerIsObeyedForASource() {
    ControllerFixture program;
    program.add(write(program, {"a", "b"}));
    writeContent(outputOf(program, "a"), "old");
    std::filesystem::create_hard_link(program.path(QStringLiteral("movies/b.mp4")).toStdString(),
                                      outputOf(program, "b").toStdString());
    program.boxes.promise(duplicateAnswer, true);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(QFile::exists(program.output(QStringLiteral("b_HQ(1)_640x480.mp4"))));
}

void TestConflicts::aMissingSourceIsSkipped() {
    ControllerFixture program;
    const QStringList movies = write(program, {"a", "b"});
    program.add(movies);
    QVERIFY(QFile::remove(movies[0]));
    bool waitedUnderTheBox = false;
    program.boxes.promise(skipSource, false, [&] { waitedUnderTheBox = isWaiting(0, program); });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_SOURCE_UNAVAILABLE", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.boxes.seen[0].buttons,
             textsOf({"IDS_BTN_POPUP_SKIP", "IDS_TXT_POPUP_TRYAGAIN"}));
    QVERIFY(program.boxes.seen[0].checkBox.isEmpty());
    QVERIFY(waitedUnderTheBox);
    QCOMPARE(program.encodes().size(), 1);
    QCOMPARE(startsWithoutArguments(program), 0);
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(isWaiting(0, program));
}

void TestConflicts::aSourceThatComesBackIsTriedAgain() {
    ControllerFixture program;
    const QStringList movies = write(program, {"a", "b"});
    program.add(movies);
    QVERIFY(QFile::remove(movies[0]));
    program.boxes.promise(tryAgain, false, [&] { (void)write(program, {"a"}); });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QCOMPARE(program.encodes().size(), 2);
    QCOMPARE(program.encodes()[0].arguments[2], movies[0]);
    QCOMPARE(program.files().rowCount(), 0);
}

void TestConflicts::aSourceThatStaysAwayIsAskedForAgain() {
    ControllerFixture program;
    const QStringList movies = write(program, {"a"});
    program.add(movies);
    QVERIFY(QFile::remove(movies[0]));
    program.boxes.promise(tryAgain);
    program.boxes.promise(tryAgain);
    program.boxes.promise(skipSource);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 4);
    QVERIFY(program.encodes().isEmpty());
    QVERIFY(program.files().conversionTaskList.empty());
}

void TestConflicts::aMissingSourceComesBeforeAConflict() {
    ControllerFixture program;
    const QStringList movies = write(program, {"a"});
    program.add(movies);
    QVERIFY(QFile::remove(movies[0]));
    writeContent(outputOf(program, "a"), "old");
    program.boxes.promise(skipSource);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_SOURCE_UNAVAILABLE", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(contentOf(outputOf(program, "a")), QByteArray("old"));
}

void TestConflicts::forAllAtAConflictAndThenAnError() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a});
    scene.addScript(
        b, {QStringLiteral("create"), QStringLiteral("progress 1"), QStringLiteral("exit 1")});
    scene.add({c});
    scene.program.boxes.promise(1003, true); // replace, for all
    scene.goToEnd(a);
    scene.program.boxes.promise(1001);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(scene.program.boxes.seen.last().message.startsWith(text("IDS_TXT_POPUP_ERROR")));
    QVERIFY(scene.end({c}));
    QVERIFY(scene.hasOutput(a));
    QVERIFY(scene.hasOutput(c));
    QCOMPARE(scene.names(), QStringList{b});
}

void TestConflicts::skipAtAConflictWithTwoMoreQueued() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a, b, c});
    scene.program.boxes.promise(1002);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(eventually([&] { return scene.program.encodes().size() == 1; }));
    QVERIFY(scene.waitForPercent(1, 10));
    QCOMPARE(scene.program.state().convertingIndex, 1);
    // The launch without arguments is no job: the next one can be paused beside it.
    QVERIFY(scene.pause(1, b));
    QCOMPARE(scene.encoderState(), 'T');
    scene.program.clickRowButton(1);
    QVERIFY(scene.end({b, c}));
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.hasOutput(b));
    QVERIFY(scene.hasOutput(c));
    QCOMPARE(QFile(scene.output(a)).size(), 0);
    QVERIFY(scene.ranAlone());
}

void TestConflicts::cancelAtAConflict() {
    RunScene scene;
    QFile older(scene.output(a));
    QVERIFY(older.open(QIODevice::WriteOnly));
    scene.add({a, b});
    scene.program.boxes.promise(1000);
    scene.program.click("btnConvertFile");
    QVERIFY(eventually([&] { return scene.program.boxes.allKept(); }));
    QVERIFY(scene.program.waitUntilIdle());
    QVERIFY(scene.program.encodes().isEmpty());
    QVERIFY(scene.hasOutput(a));
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QVERIFY(scene.button("btnConvertFile")->isEnabled());
}

REELSHIFT_TEST(tst_conflicts, TestConflicts, QApplication)
#include "tst_conflicts.moc"
