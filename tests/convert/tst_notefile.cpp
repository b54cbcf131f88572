#include "TestProgram.h"
#include "convert/NoteFile.h"
#include "convert/RunNote.h"

#include <QDir>
#include <QTemporaryDir>

#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// The file of a note: for its owner alone, locked while its writer lives, and whatever else lies
/// in the folder holds nobody up.
class TestNoteFile final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void folderOfTheEnvironment_data();
    void folderOfTheEnvironment();
    void rightsAndContent();
    void lockedWhileItsWriterLives();
    void markedAsAlive();
    void whatIsNoNote_data();
    void whatIsNoNote();
    void folderThatIsALink();
    void folderOfAnotherUser();
    void folderThatCannotBeMade();

private:
    [[nodiscard]] QString folder() const {
        return temporary_->filePath(QStringLiteral("state/reelshift"));
    }
    static mode_t rightsOf(const QString& path);

    std::unique_ptr<QTemporaryDir> temporary_;
};

void TestNoteFile::init() {
    temporary_ = std::make_unique<QTemporaryDir>();
}

mode_t TestNoteFile::rightsOf(const QString& path) {
    struct stat facts {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 07777 : 0;
}

void TestNoteFile::folderOfTheEnvironment_data() {
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("home");
    QTest::addColumn<QString>("folder");
    const auto row = [](const char* state, const char* home, const char* folder) {
        QTest::addRow("%s and %s", state, home)
            << QByteArray(state) << QByteArray(home) << QString::fromLatin1(folder);
    };
    row("/state", "/home/u", "/state/reelshift");
    row("", "/home/u", "/home/u/.local/state/reelshift");
    row("state", "/home/u", "/home/u/.local/state/reelshift");
    row("", "", "");
    row("", "u", "");
}

void TestNoteFile::folderOfTheEnvironment() {
    QFETCH(QByteArray, state);
    QFETCH(QByteArray, home);
    const QByteArray oldState = qgetenv("XDG_STATE_HOME");
    const QByteArray oldHome = qgetenv("HOME");
    qputenv("XDG_STATE_HOME", state);
    qputenv("HOME", home);
    const QString found = NoteFile::stateFolder();
    qputenv("XDG_STATE_HOME", oldState);
    qputenv("HOME", oldHome);
    QTEST(found, "folder");
}

void TestNoteFile::rightsAndContent() {
    const auto file = NoteFile::create(folder());
    QVERIFY(file);
    QVERIFY(file->add("one\n"));
    QVERIFY(file->add("two\n"));
    QCOMPARE(file->read(), "one\ntwo\n");
    QCOMPARE(rightsOf(folder()), mode_t(0700));
    const QStringList names = QDir(folder()).entryList(QDir::Files);
    QCOMPARE(names.size(), 1);
    QCOMPARE(rightsOf(folder() + u'/' + names.first()), mode_t(0600));
    file->remove();
    QVERIFY(QDir(folder()).isEmpty());
}

void TestNoteFile::lockedWhileItsWriterLives() {
    auto file = NoteFile::create(folder());
    QVERIFY(file && file->add("text"));
    auto found = NoteFile::openAll(folder());
    QCOMPARE(found.size(), size_t(1));
    QVERIFY(!found.front()->claim());
    QCOMPARE(found.front()->read(), "text"); // may be read all the same
    file.reset();
    QVERIFY(found.front()->claim());
    // One that another program took away meanwhile is none any more.
    auto second = NoteFile::openAll(folder());
    QCOMPARE(second.size(), size_t(1));
    found.front()->remove();
    found.clear();
    QVERIFY(!second.front()->claim());
}

void TestNoteFile::markedAsAlive() {
    const auto file = NoteFile::create(folder());
    const timespec times[] = {{0, UTIME_OMIT}, {1'000'000'000, 0}};
    const QString path = folder() + u'/' + QDir(folder()).entryList(QDir::Files).first();
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
    QCOMPARE(file->lastAlive(), qint64(1'000'000'000));
    const qint64 before = std::time(nullptr);
    file->markAlive();
    QVERIFY(file->lastAlive() >= before);
    QVERIFY(file->lastAlive() <= std::time(nullptr));
}

void TestNoteFile::whatIsNoNote_data() {
    QTest::addColumn<QString>("kind");
    for (const char* each : {"pipe", "link", "folder", "of another user", "another name"})
        QTest::newRow(each) << QString::fromLatin1(each);
}

void TestNoteFile::whatIsNoNote() {
    QFETCH(QString, kind);
    QVERIFY(QDir().mkpath(folder()));
    const QString path = folder() + QStringLiteral("/run-1.note");
    const QByteArray name = QFile::encodeName(path);
    const auto write = [](const QString& where) {
        QFile file(where);
        return file.open(QIODevice::WriteOnly) && file.write("x") == 1;
    };
    if (kind == u"pipe")
        QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    else if (kind == u"link")
        QVERIFY(write(temporary_->filePath(QStringLiteral("other"))) &&
                QFile::link(temporary_->filePath(QStringLiteral("other")), path));
    else if (kind == u"folder")
        QVERIFY(QDir().mkdir(path));
    else
        QVERIFY(write(kind == u"another name" ? folder() + QStringLiteral("/run-1.txt") : path));
    if (kind == u"of another user" && ::chown(name.constData(), ::geteuid() + 1, gid_t(-1)) != 0)
        QSKIP("only root can give a file away");
    QCOMPARE(NoteFile::openAll(folder()).size(), size_t(0));
    QVERIFY(!QDir(folder()).isEmpty(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot));
}

void TestNoteFile::folderThatIsALink() {
    QVERIFY(QDir().mkpath(temporary_->filePath(QStringLiteral("elsewhere"))));
    QVERIFY(QDir().mkpath(temporary_->filePath(QStringLiteral("state"))));
    QVERIFY(QFile::link(temporary_->filePath(QStringLiteral("elsewhere")), folder()));
    QVERIFY(!NoteFile::create(folder()));
    QVERIFY(QDir(temporary_->filePath(QStringLiteral("elsewhere"))).isEmpty());
}

void TestNoteFile::folderOfAnotherUser() {
    QVERIFY(NoteFile::create(folder()));
    QCOMPARE(NoteFile::openAll(folder()).size(), size_t(1));
    if (::chown(QFile::encodeName(folder()).constData(), ::geteuid() + 1, gid_t(-1)) != 0)
        QSKIP("only root can give a folder away");
    QVERIFY(!NoteFile::create(folder()));
    QCOMPARE(NoteFile::openAll(folder()).size(), size_t(0));
}

void TestNoteFile::folderThatCannotBeMade() {
    QFile file(temporary_->filePath(QStringLiteral("state")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(!NoteFile::create(folder()));
    QCOMPARE(NoteFile::openAll(folder()).size(), size_t(0));
    QCOMPARE(NoteFile::openAll({}).size(), size_t(0));
}

REELSHIFT_TEST(tst_notefile, TestNoteFile, NoApplication)
#include "tst_notefile.moc"
