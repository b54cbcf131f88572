#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/AsNobody.h"
#include "app/ControllerFixture.h"
#include "app/FolderFiles.h"
#include "app/PanelDriver.h"
#include "app/PersistedFolders.h"
#include "app/RunChecks.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTest>

#include <sys/stat.h>

namespace {

const QString outputFile = QStringLiteral("default_hevc_path.txt");
const QString addFile = QStringLiteral("add_hevc_file_path.txt");

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

} // namespace

/// The two folders that are remembered from one session to the next.
class TestFolders final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void reading_data();
    void reading();
    void readingWhatMayNotBeRead();
    void readingWithoutADocumentsFolder();
    void defaultFolderIsNotLookedAt();
    void homeIsNotSet();
    void placesOfTheUser();

    void writing();
    void writingReplacesAnOlderFileAsAWhole();
    void writingOneWhenTheOtherFails();
    void writingWithoutADocumentsFolder();
    void writingIntoAReadOnlyFolder();

    void theStartReadsBoth();
    void anUntouchedOutputFolderIsWrittenBack();
    void theAddFolderIsCarriedThrough();
    void writtenAtTheEndAndOnlyThen();

private:
    void openToAll() const {
        QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::WriteOwner |
                                                   QFile::ExeOwner | QFile::ReadOther |
                                                   QFile::ExeOther);
    }
    [[nodiscard]] QString at(const QString& name) const { return folder_->filePath(name); }
    [[nodiscard]] PersistedFolders folders() const { return {at("docs"), at("home")}; }
    [[nodiscard]] QString at(const char* name) const { return at(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFolders::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QDir().mkpath(at("docs"));
}

void TestFolders::reading_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected"); // empty: the default folder
    const QString defaultFolder;
    const auto row = [](const char* name, const QByteArray& content, const QString& expected) {
        QTest::newRow(name) << content << expected;
    };
    row("a folder", "F/there", QStringLiteral("F/there"));
    row("blanks belong to the name", "F/ there ", QStringLiteral("F/ there "));
    row("other letters", "F/\xc3\xa9t\xc3\xa9 \xf0\x9f\x8e\xac", QString::fromUtf8("F/été 🎬"));
    row("a plain file is taken as well", "F/plain", QStringLiteral("F/plain"));
    row("a slash at the end stays", "F/there/", QStringLiteral("F/there/"));
    for (const FolderFile& each : filesWithoutFolder())
        row(each.what, each.content, defaultFolder);
}

void TestFolders::reading() {
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    for (const char* name : {"there", " there ", "\xc3\xa9t\xc3\xa9 \xf0\x9f\x8e\xac"})
        QVERIFY(QDir().mkpath(at(QString::fromUtf8(name))));
    writeContent(at("plain"), "no folder");
    writeContent(at("docs/") + outputFile,
                 content.replace("F/", (folder_->path() + u'/').toUtf8()));
    expected.replace(QStringLiteral("F/"), folder_->path() + u'/');
    QCOMPARE(folders().readDefaultFilePath(outputFile),
             expected.isEmpty() ? at("home/Documents") : expected);
}

void TestFolders::readingWhatMayNotBeRead() {
    QCOMPARE(folders().readDefaultFilePath(outputFile), at("home/Documents"));

    QVERIFY(QDir().mkpath(at("docs/") + addFile));
    QCOMPARE(folders().readDefaultFilePath(addFile), at("home/Documents"));

    const QString pipe = at("docs/") + outputFile;
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    QCOMPARE(folders().readDefaultFilePath(outputFile), at("home/Documents"));
    QVERIFY(QFile::remove(pipe));

    writeContent(at("docs/") + outputFile, folder_->path().toUtf8());
    QCOMPARE(folders().readDefaultFilePath(outputFile), folder_->path());
    QVERIFY(QFile::setPermissions(at("docs/") + outputFile, {}));
    openToAll();
    const AsNobody nobody;
    QCOMPARE(folders().readDefaultFilePath(outputFile), at("home/Documents"));
}

void TestFolders::readingWithoutADocumentsFolder() {
    const PersistedFolders none(QString(), at("home"));
    QCOMPARE(none.readDefaultFilePath(outputFile), at("home/Documents"));
    const PersistedFolders gone(at("gone"), at("home"));
    QCOMPARE(gone.readDefaultFilePath(outputFile), at("home/Documents"));
}

void TestFolders::defaultFolderIsNotLookedAt() {
    QVERIFY(!QFile::exists(at("home/Documents")));
    QCOMPARE(folders().readDefaultFilePath(outputFile), at("home/Documents"));
    // Plain joining, whatever HOME ends with.
    const PersistedFolders slash(at("docs"), QStringLiteral("/home/u/"));
    QCOMPARE(slash.defaultFolder(), QStringLiteral("/home/u//Documents"));
}

void TestFolders::homeIsNotSet() {
    const QByteArray home = qgetenv("HOME");
    const auto back = qScopeGuard([&] { qputenv("HOME", home); });
    qunsetenv("HOME");
    QCOMPARE(PersistedFolders().defaultFolder(), QStringLiteral("/Documents"));
}

void TestFolders::placesOfTheUser() {
    const QByteArray home = qgetenv("HOME");
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    const auto back = qScopeGuard([&] {
        qputenv("HOME", home);
        qputenv("XDG_CONFIG_HOME", config);
    });
    qputenv("HOME", at("home").toUtf8());
    qputenv("XDG_CONFIG_HOME", at("home/config").toUtf8());
    QVERIFY(QDir().mkpath(at("home/Documents")));
    QVERIFY(QDir().mkpath(at("home/Papers")));
    QVERIFY(QDir().mkpath(at("home/config")));

    const PersistedFolders plain;
    QCOMPARE(plain.defaultFolder(), at("home/Documents"));
    plain.remeberFolderPath(QStringLiteral("a"), QStringLiteral("b"));
    QCOMPARE(readFile(at("home/Documents/") + outputFile), QByteArray("a"));

    // The user's own place for documents counts for the files, not for the default folder.
    writeContent(at("home/config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    const PersistedFolders moved;
    QCOMPARE(moved.defaultFolder(), at("home/Documents"));
    moved.remeberFolderPath(QStringLiteral("c"), QStringLiteral("d"));
    QCOMPARE(readFile(at("home/Papers/") + outputFile), QByteArray("c"));
    QCOMPARE(readFile(at("home/Papers/") + addFile), QByteArray("d"));
    QCOMPARE(readFile(at("home/Documents/") + outputFile), QByteArray("a"));
}

void TestFolders::writing() {
    const QString output = QString::fromUtf8("/été/🎬 out ");
    folders().remeberFolderPath(output, QStringLiteral("/add\n"));
    QCOMPARE(readFile(at("docs/") + outputFile), output.toUtf8());
    QCOMPARE(readFile(at("docs/") + addFile), QByteArray("/add\n"));
    QCOMPARE(QDir(at("docs")).entryList(QDir::Files | QDir::Hidden),
             QStringList({addFile, outputFile}));
}

void TestFolders::writingReplacesAnOlderFileAsAWhole() {
    writeContent(at("docs/") + outputFile, QByteArray(5000, 'x'));
    QFile reader(at("docs/") + outputFile);
    QVERIFY(reader.open(QIODevice::ReadOnly));
    folders().remeberFolderPath(QStringLiteral("/new"), QStringLiteral("/add"));
    QCOMPARE(readFile(at("docs/") + outputFile), QByteArray("/new"));
    // Who had it open still reads the old one: it was never written over in place.
    QCOMPARE(reader.readAll(), QByteArray(5000, 'x'));
}

void TestFolders::writingOneWhenTheOtherFails() {
    QVERIFY(QDir().mkpath(at("docs/") + outputFile + QStringLiteral("/in the way")));
    folders().remeberFolderPath(QStringLiteral("/out"), QStringLiteral("/add"));
    QCOMPARE(readFile(at("docs/") + addFile), QByteArray("/add"));
    QVERIFY(QDir(at("docs/") + outputFile).exists());

    QVERIFY(QDir(at("docs")).removeRecursively());
    QVERIFY(QDir().mkpath(at("docs/") + addFile + QStringLiteral("/in the way")));
    folders().remeberFolderPath(QStringLiteral("/out"), QStringLiteral("/add"));
    QCOMPARE(readFile(at("docs/") + outputFile), QByteArray("/out"));
}

void TestFolders::writingWithoutADocumentsFolder() {
    QVERIFY(QDir(at("docs")).removeRecursively());
    folders().remeberFolderPath(QStringLiteral("/out"), QStringLiteral("/add"));
    QVERIFY(!QFile::exists(at("docs")));
    writeContent(at("docs"), "a file in the folder's place");
    folders().remeberFolderPath(QStringLiteral("/out"), QStringLiteral("/add"));
    QCOMPARE(readFile(at("docs")), QByteArray("a file in the folder's place"));
    PersistedFolders(QString(), at("home")).remeberFolderPath(QStringLiteral("/out"), QString());
}

void TestFolders::writingIntoAReadOnlyFolder() {
    openToAll();
    QVERIFY(QFile::setPermissions(at("docs"), QFile::ReadOwner | QFile::ExeOwner |
                                                  QFile::ReadOther | QFile::ExeOther));
    {
        const AsNobody nobody;
        folders().remeberFolderPath(QStringLiteral("/out"), QStringLiteral("/add"));
    }
    QVERIFY(QDir(at("docs")).isEmpty());
    QVERIFY(
        QFile::setPermissions(at("docs"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestFolders::theStartReadsBoth() {
    ControllerFixture program;
    program.quit();
    writeContent(program.output(outputFile), program.movies().toUtf8());
    writeContent(program.output(addFile), program.resources().toUtf8());
    program.restart();
    QCOMPARE(program.shownOutputFolder(), program.movies());
    QCOMPARE(program.widget<QLineEdit>("outputFolderPath")->text(), program.movies());
    QCOMPARE(program.state().outputFolder, QString());
}

void TestFolders::anUntouchedOutputFolderIsWrittenBack() {
    ControllerFixture program;
    program.quit();
    QCOMPARE(readFile(program.output(outputFile)), program.documents().toUtf8());
    QCOMPARE(readFile(program.output(addFile)), program.documents().toUtf8());

    writeContent(program.output(outputFile), program.movies().toUtf8());
    program.restart();
    program.quit();
    QCOMPARE(readFile(program.output(outputFile)), program.movies().toUtf8());

    // What names nothing is forgotten for good.
    writeContent(program.output(outputFile), program.path(QStringLiteral("gone")).toUtf8());
    program.restart();
    program.quit();
    QCOMPARE(readFile(program.output(outputFile)), program.documents().toUtf8());
}

void TestFolders::theAddFolderIsCarriedThrough() {
    ControllerFixture program;
    program.quit();
    writeContent(program.output(addFile), program.resources().toUtf8());
    program.restart();
    // Neither adding nor a choice of the output folder changes it.
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    oncePanelOpen([&](QFileDialog& panel) {
        panel.setDirectory(program.movies());
        typeIntoPanel(panel, program.movies());
        confirmPanel(panel);
    });
    program.click("btnSelectFolder");
    program.quit();
    QCOMPARE(readFile(program.output(outputFile)), program.movies().toUtf8());
    QCOMPARE(readFile(program.output(addFile)), program.resources().toUtf8());
}

void TestFolders::writtenAtTheEndAndOnlyThen() {
    ControllerFixture program;
    QVERIFY(!QFile::exists(program.output(outputFile)));
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, program.movies());
        confirmPanel(panel);
    });
    program.click("btnSelectFolder");
    QCOMPARE(program.shownOutputFolder(), program.movies());
    QVERIFY(!QFile::exists(program.output(outputFile)));

    program.app().quit();
    QCOMPARE(readFile(program.output(outputFile)), program.movies().toUtf8());
    // And once: the end of the program does not write again.
    QVERIFY(QFile::remove(program.output(outputFile)));
    program.quit();
    QVERIFY(!QFile::exists(program.output(outputFile)));
}

REELSHIFT_TEST(tst_folders, TestFolders, QApplication)
#include "tst_folders.moc"
