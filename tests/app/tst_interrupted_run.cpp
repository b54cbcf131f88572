#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/RunChecks.h"
#include "convert/ConversionEngine.h"
#include "convert/NoteFile.h"
#include "convert/RunNote.h"
#include "platform/ChildProcess.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QApplication>

#include <ctime>

namespace {

constexpr int keepAnswer = 1000;
constexpr int trashAnswer = 1001;
constexpr int noAnswer = 0;

/// As an encoder leaves it that did not get to its end.
const QByteArray halfMovie("\0\0\0\20ftypisom\0\0\2\0\0\0\0\10free\0\0\0\0mdatxxxx", 36);

/// The trash of the user is in a folder of the test's own.
class PrivateTrash final {
public:
    explicit PrivateTrash(const QString& home) : home_(home) {
        qputenv("HOME", QFile::encodeName(home));
        qputenv("XDG_DATA_HOME", QFile::encodeName(data()));
    }
    ~PrivateTrash() {
        qputenv("HOME", oldHome_);
        oldData_.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", oldData_);
    }
    Q_DISABLE_COPY_MOVE(PrivateTrash)

    [[nodiscard]] QString data() const { return home_ + QStringLiteral("/data"); }
    [[nodiscard]] QString files() const { return data() + QStringLiteral("/Trash/files"); }

private:
    const QString home_;
    const QByteArray oldHome_ = qgetenv("HOME");
    const QByteArray oldData_ = qgetenv("XDG_DATA_HOME");
};

QStringList notesOf(const ControllerFixture& program) {
    return namesIn(program.stateFolder());
}

std::optional<RunNote> noteOf(const ControllerFixture& program) {
    const QStringList names = notesOf(program);
    return names.size() == 1
               ? RunNote::fromText(contentOf(program.stateFolder() + u'/' + names.first()))
               : std::nullopt;
}

RunNote::File notedFile(const QString& path) {
    struct stat facts {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? noted(facts)
                                                                    : RunNote::File();
}

QString questionAbout(const QString& path) {
    return getLocalString("IDS_TXT_POPUP_INTERRUPTED") + u'\n' + path + u'\n' +
           getLocalString("IDS_TXT_POPUP_WANTTOTRASH");
}

/// A home in which the program has died in the middle of a run; it is started again by restart().
class AfterADeath final {
public:
    AfterADeath() {
        program.quit();
        const QString source = writeContent(program.movies() + u'/' + soleMovie, "the source");
        output = writeContent(program.output(soleOutput), halfMovie);
        RunNote note;
        note.launched = std::time(nullptr) - 1;
        note.output = QFile::encodeName(output);
        note.source = QFile::encodeName(source);
        note.sourceFile = notedFile(source);
        text = note.text() + RunNote::madeText(notedFile(output));
        writeNote(text);
    }

    void writeNote(const QByteArray& content, const QString& name = QStringLiteral("run-1.note")) {
        QDir().mkpath(program.stateFolder());
        writeContent(program.stateFolder() + u'/' + name, content);
    }
    /// Starts the program, with nobody to answer a box that is not expected.
    void start() { program.restart(); }
    [[nodiscard]] bool hasSaidNothing() {
        return QTest::qWaitFor([this] { return notesOf(program).isEmpty(); }, 20000) &&
               program.boxes.seen.isEmpty();
    }

    ControllerFixture program;
    PrivateTrash trash{program.path(QStringLiteral("home"))};
    QString output;
    QByteArray text;
};

} // namespace

/// The note of a run that is under way, and what the next start makes of one whose program died.
class TestInterruptedRun final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNoteIsThereBeforeTheEncoder();
    void theNoteKnowsTheEncodersFile();
    void theNoteGoesWithTheOutcome_data();
    void theNoteGoesWithTheOutcome();
    void theNoteGoesWithARowThatIsRemoved();
    void theNoteGoesWithTheProgram_data();
    void theNoteGoesWithTheProgram();
    void aNoteThatCannotBeWritten();

    void toTheTrash();
    void notOverAnotherWindow();
    void kept();
    void noTrash();
    void changedUnderTheQuestion();
    void theProgramEndsUnderTheQuestion();
    void twoRuns();
    void anotherProgramIsStillRunning();
    void notAsked_data();
    void notAsked();
    void theDiskIsNotThere();
};

void TestInterruptedRun::theNoteIsThereBeforeTheEncoder() {
    ControllerFixture program;
    const QByteArray list = "list " + program.stateFolder().toUtf8() + " noted";
    program.add({program.movie(soleMovie)
                     .encode({list.constData(), "create", "header", "write 10", "summary 10"})
                     .write()});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    const QString noted = QString::fromUtf8(contentOf(program.movies() + QStringLiteral("/noted")));
    static const QRegularExpression oneNote(QStringLiteral("^(\\d+) run-[0-9a-f]+\\.note\n+$"));
    const auto match = oneNote.match(noted);
    QVERIFY2(match.hasMatch(), qPrintable(noted));
    QVERIFY(match.captured(1).toInt() > 100);
    QTRY_VERIFY(notesOf(program).isEmpty());
}

void TestInterruptedRun::theNoteKnowsTheEncodersFile() {
    ControllerFixture program;
    const QString older = writeContent(program.output(soleOutput), "old");
    const RunNote::File before = notedFile(older);
    const QString source =
        program.movie(soleMovie).encode({"wait-file go", "create", "write 10", "hang"}).write();
    program.add({source});
    program.boxes.promise(replaceAnswer);
    program.click("btnConvertFile");
    QTRY_VERIFY(noteOf(program).has_value());
    QVERIFY(noteOf(program)->before == before);
    QVERIFY(!noteOf(program)->made);
    QVERIFY(noteOf(program)->sourceFile == notedFile(source));
    QCOMPARE(noteOf(program)->output, QFile::encodeName(older));
    writeContent(program.movies() + QStringLiteral("/go"));
    QTRY_VERIFY(noteOf(program) && noteOf(program)->made);
    QCOMPARE(noteOf(program)->made->inode, notedFile(older).inode);
}

void TestInterruptedRun::theNoteGoesWithTheOutcome_data() {
    QTest::addColumn<QStringList>("encode");
    QTest::addColumn<bool>("stopped");
    const auto row = [](const char* name, std::initializer_list<const char*> steps,
                        bool stopped = false) {
        QStringList lines{QStringLiteral("touch begun")};
        for (const char* each : steps)
            lines += QString::fromLatin1(each);
        QTest::newRow(name) << lines << stopped;
    };
    row("converted", {"create", "header", "progress 1", "write 10", "summary 10"});
    row("failed", {"create", "header", "write 10", "exit 1"});
    row("damaged", {"create", "header", "write 10", "damage", "progress 1", "summary 10"});
    row("could not be written",
        {"create", "header", "progress 1", "write-failure No space left on device", "exit 1"});
    row("died", {"create", "write 10", "abort"});
    row("stopped", {"create", "header", "progress 1", "write 10", "hang"}, true);
}

void TestInterruptedRun::theNoteGoesWithTheOutcome() {
    QFETCH(QStringList, encode);
    QFETCH(bool, stopped);
    ControllerFixture program;
    program.engine().setPatience({std::chrono::milliseconds(500), std::chrono::milliseconds(500)});
    program.add({program.movie(soleMovie).encode(encode).write()});
    if (stopped)
        program.boxes.promise(1001);
    program.boxes.answerTheRest(okAnswer);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.movies() + QStringLiteral("/begun")));
    if (stopped) {
        QVERIFY(noteOf(program).has_value());
        program.click("btnStop");
    }
    QVERIFY(program.waitUntilIdle());
    QTRY_VERIFY(notesOf(program).isEmpty());
    QVERIFY(QFileInfo(program.stateFolder()).isDir());
}

void TestInterruptedRun::theNoteGoesWithARowThatIsRemoved() {
    ControllerFixture program;
    program.add({program.movie(soleMovie)
                     .encode({"create", "header", "progress 1", "write 10", "touch begun", "hang"})
                     .write()});
    FileTableModel* const model = program.window().findChild<FileTableView*>()->fileModel();
    QVERIFY(model->setData(model->index(0, 0), Qt::Checked, Qt::CheckStateRole));
    program.boxes.answerTheRest(okAnswer);
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.movies() + QStringLiteral("/begun")));
    QVERIFY(noteOf(program).has_value());
    program.click("btnRemoveFile");
    QVERIFY(program.waitUntilIdle());
    QTRY_VERIFY(notesOf(program).isEmpty());
    QVERIFY(!QFile::exists(program.output(soleOutput)));
}

void TestInterruptedRun::theNoteGoesWithTheProgram_data() {
    QTest::addColumn<QStringList>("encode");
    QTest::newRow("encoding") << QStringList{QStringLiteral("create"), QStringLiteral("write 10"),
                                             QStringLiteral("touch begun"), QStringLiteral("hang")};
    QTest::newRow("deaf") << QStringList{QStringLiteral("ignore-term"), QStringLiteral("create"),
                                         QStringLiteral("touch begun"), QStringLiteral("hang")};
}

void TestInterruptedRun::theNoteGoesWithTheProgram() {
    QFETCH(QStringList, encode);
    ControllerFixture program;
    program.add({program.movie(soleMovie).encode(encode).write()});
    program.click("btnConvertFile");
    QTRY_VERIFY(QFile::exists(program.movies() + QStringLiteral("/begun")));
    QCOMPARE(notesOf(program).size(), 1);
    program.quit();
    QCOMPARE(notesOf(program), QStringList());
    QVERIFY(!QFile::exists(program.output(soleOutput)));
}

void TestInterruptedRun::aNoteThatCannotBeWritten() {
    ControllerFixture program;
    writeContent(program.path(QStringLiteral("state")), "no folder");
    program.add({program.movie(soleMovie).write()});
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("note of a job could not be written")));
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QVERIFY(QFile::exists(program.output(soleOutput)));
}

void TestInterruptedRun::toTheTrash() {
    AfterADeath after;
    ControllerFixture& program = after.program;
    bool isWindowUp = false;
    program.boxes.promise(trashAnswer, false, [&] { isWindowUp = program.window().isVisible(); });
    after.start();
    QTRY_COMPARE(namesIn(after.trash.files()), QStringList(soleOutput));
    QVERIFY(isWindowUp);
    QCOMPARE(program.boxes.messages(), QStringList(questionAbout(after.output)));
    QCOMPARE(program.boxes.seen.first().buttons,
             textsOf({"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_TRASH"}));
    QVERIFY(!QFile::exists(after.output));
    QCOMPARE(contentOf(after.trash.files() + u'/' + soleOutput), halfMovie);
    QCOMPARE(contentOf(program.movies() + u'/' + soleMovie), QByteArray("the source"));
    QTRY_VERIFY(notesOf(program).isEmpty());
    QCOMPARE(program.boxes.seen.size(), 1);
}

// Such as the one that offers a newer version.
void TestInterruptedRun::notOverAnotherWindow() {
    AfterADeath after;
    QDialog other;
    other.show();
    bool wasOver = false;
    after.program.boxes.promise(keepAnswer, false, [&] { wasOver = other.isVisible(); });
    // It asks ten times a second.
    QTimer::singleShot(1000, &other, &QDialog::hide);
    after.start();
    QTRY_VERIFY(after.program.boxes.allKept());
    QVERIFY(!wasOver);
}

void TestInterruptedRun::kept() {
    AfterADeath after;
    after.program.boxes.promise(keepAnswer);
    after.start();
    QTRY_VERIFY(after.program.boxes.allKept());
    QTRY_VERIFY(notesOf(after.program).isEmpty());
    QCOMPARE(contentOf(after.output), halfMovie);
    QVERIFY(!QFile::exists(after.trash.files()));
}

void TestInterruptedRun::noTrash() {
    AfterADeath after;
    writeContent(after.trash.data(), "no folder");
    after.program.boxes.promise(trashAnswer);
    after.program.boxes.promise(okAnswer);
    after.start();
    QTRY_VERIFY(after.program.boxes.allKept());
    QCOMPARE(after.program.boxes.messages().last(),
             getLocalString("IDS_TXT_POPUP_NOTTRASHED") + u'\n' + after.output);
    QCOMPARE(contentOf(after.output), halfMovie);
    QTRY_VERIFY(notesOf(after.program).isEmpty());
    // The toolkit would have taken the working directory for one.
    QVERIFY(!QFile::exists(QStringLiteral("files")) && !QFile::exists(QStringLiteral("info")));
}

// The question may stay open over night.
void TestInterruptedRun::changedUnderTheQuestion() {
    AfterADeath after;
    after.program.boxes.promise(trashAnswer, false, [&] {
        QVERIFY(QFile::remove(after.output));
        writeContent(after.output, "of somebody else");
    });
    after.program.boxes.promise(okAnswer);
    after.start();
    QTRY_VERIFY(after.program.boxes.allKept());
    QCOMPARE(after.program.boxes.messages().last(),
             getLocalString("IDS_TXT_POPUP_NOTTRASHED") + u'\n' + after.output);
    QCOMPARE(contentOf(after.output), QByteArray("of somebody else"));
    QVERIFY(!QFile::exists(after.trash.files()));
}

void TestInterruptedRun::theProgramEndsUnderTheQuestion() {
    AfterADeath after;
    ControllerFixture& program = after.program;
    // Without an answer.
    program.boxes.promise(noAnswer, false, [&] { program.app().quit(); });
    QTimer::singleShot(0, qApp, [&] { after.start(); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(program.boxes.seen.size(), 1);
    program.quit();
    QCOMPARE(contentOf(after.output), halfMovie);
    QCOMPARE(notesOf(program).size(), 1);
    // The next start asks again.
    program.boxes.promise(trashAnswer);
    program.restart();
    QTRY_VERIFY(!QFile::exists(after.output));
    QTRY_VERIFY(notesOf(program).isEmpty());
}

void TestInterruptedRun::twoRuns() {
    AfterADeath after;
    const QString other = writeContent(after.program.output(QStringLiteral("b.mp4")), halfMovie);
    auto note = RunNote::fromText(after.text);
    note->output = QFile::encodeName(other);
    after.writeNote(note->text(), QStringLiteral("run-2.note"));
    // The same once more, of a run that was interrupted in the same minute.
    after.writeNote(note->text(), QStringLiteral("run-3.note"));
    after.program.boxes.promise(trashAnswer);
    after.program.boxes.promise(trashAnswer);
    after.start();
    QTRY_VERIFY(after.program.boxes.allKept());
    QTRY_VERIFY(notesOf(after.program).isEmpty());
    QCOMPARE(after.program.boxes.seen.size(), 2);
    QVERIFY(!QFile::exists(after.output) && !QFile::exists(other));
}

void TestInterruptedRun::anotherProgramIsStillRunning() {
    AfterADeath after;
    // Its note is locked; it writes the output of the interrupted run once more.
    const auto other = NoteFile::create(after.program.stateFolder());
    QVERIFY(other && other->add(RunNote::fromText(after.text)->text()));
    after.start();
    QTRY_COMPARE(notesOf(after.program).size(), 1);
    QVERIFY(other->read() == RunNote::fromText(after.text)->text());
    QVERIFY(after.program.boxes.seen.isEmpty());
    QCOMPARE(contentOf(after.output), halfMovie);
}

void TestInterruptedRun::notAsked_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("note");
    const QByteArray asItWas("-");
    QTest::newRow("a whole movie") << halfMovie + QByteArray("\0\0\0\10moov", 8) << asItWas;
    QTest::newRow("another file") << QByteArray("text") << asItWas;
    QTest::newRow("no note") << halfMovie << QByteArray();
    QTest::newRow("garbage") << halfMovie << QByteArray("\0\xff\n/\n", 5);
    QTest::newRow("a huge one") << halfMovie << QByteArray(50'000'000, 'x');
}

void TestInterruptedRun::notAsked() {
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, note);
    AfterADeath after;
    // In the middle of its pictures there is no index.
    QByteArray whole = content;
    if (whole.contains("moov"))
        whole[27] = '\14';
    writeContent(after.output, whole);
    if (note != "-")
        after.writeNote(note);
    after.start();
    QVERIFY(after.hasSaidNothing());
    QCOMPARE(contentOf(after.output), whole);
}

// It is told of when the disk is back.
void TestInterruptedRun::theDiskIsNotThere() {
    AfterADeath after;
    ControllerFixture& program = after.program;
    const QString away = program.path(QStringLiteral("away"));
    QVERIFY(QDir().rename(program.documents(), away));
    program.restart();
    program.quit(); // waits for the thread that looked
    QCOMPARE(notesOf(program).size(), 1);
    QVERIFY(program.boxes.seen.isEmpty());
    QVERIFY(!QFile::exists(program.documents()) || QDir().rmdir(program.documents()));
    QVERIFY(QDir().rename(away, program.documents()));
    program.boxes.promise(trashAnswer);
    program.restart();
    QTRY_VERIFY(!QFile::exists(after.output));
}

REELSHIFT_TEST(tst_interrupted_run, TestInterruptedRun, QApplication)
#include "tst_interrupted_run.moc"
