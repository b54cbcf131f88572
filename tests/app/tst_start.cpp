#include "TestProgram.h"
#include "app/AppDelegate.h"
#include "app/ControllerFixture.h"
#include "app/ProgramParts.h"
#include "table/FileTableView.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>

/// What the window shows when the program has come up, and in which order it comes up.
class TestStart final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beforeTheStart();
    void everythingIsEmpty();
    void textsOfTheControls_data();
    void textsOfTheControls();
    void titleOfTheWindow();
    void countOfAnEmptyList();
    void headersOfTheColumns();
    void profilesOfTheMainList();
    void cellsBeforeAnyRow();
    void whatIsEnabled();
    void unknownKeysShowThemselves();
    void headerBoxFollowsTheRows();
    void theVersionCheckIsNotWaitedFor();
    void theWholeIconComesWithTheWindow();

private:
    /// A controller that was not started, without a string table.
    struct Bare {
        explicit Bare(const QString& updateServer = QStringLiteral("http://127.0.0.1:1"));
        ~Bare() { [[maybe_unused]] const bool ended = controller->awaitEnd(); }

        template <typename T> [[nodiscard]] T* widget(const char* name) const {
            return parts->window.findChild<T*>(QString::fromLatin1(name));
        }
        [[nodiscard]] QString path(const char* name) const {
            return folder.filePath(QString::fromLatin1(name));
        }

        QTemporaryDir folder;
        FakeFileManager fileManager;
        FakeDesktop desktop;
        std::unique_ptr<ProgramParts> parts;
        std::unique_ptr<AppDelegate> controller;
    };
};

TestStart::Bare::Bare(const QString& updateServer) {
    QDir(folder.path()).mkpath(QStringLiteral("home/Documents"));
    UpdateSettings update;
    update.baseUrl = updateServer;
    update.version = QStringLiteral("2.3.4.5");
    parts = std::make_unique<ProgramParts>(Surroundings{
        folder.path(), update.version, PersistedFolders(path("home/Documents"), path("home")),
        path("state"), std::make_shared<FakeVolumes>(), fileManager, desktop.parts(), update});
    controller = std::make_unique<AppDelegate>(*parts);
}

void TestStart::beforeTheStart() {
    Bare program;
    program.controller->awakeFromNib();
    const auto* const shown = program.widget<QLineEdit>("outputFolderPath");
    QCOMPARE(shown->text(), QString());
    QCOMPARE(program.parts->window.outputFolderText(), QString());
    QCOMPARE(program.widget<QPushButton>("btnConvertFile")->text(), QString());

    program.controller->applicationDidFinishLaunching();
    QCOMPARE(shown->text(), program.path("home/Documents"));
    QCOMPARE(program.parts->window.outputFolderText(), program.path("home/Documents"));
    // Adding goes by a folder that was chosen in this session, and there is none yet.
    QCOMPARE(program.parts->state.outputFolder, QString());
}

void TestStart::everythingIsEmpty() {
    ControllerFixture program;
    const FileList& files = program.files();
    QCOMPARE(files.rowCount(), 0);
    QVERIFY(files.check.empty());
    QVERIFY(files.cmb.isEmpty());
    QVERIFY(files.idList.empty());
    QVERIFY(files.progressObjects.empty());
    QVERIFY(files.resolutionListForTable.isEmpty());
    QVERIFY(files.arrayControllerNew.empty());
    QVERIFY(files.conversionTaskList.empty());
    QVERIFY(files.convertedFileList.empty());
    QVERIFY(files.pausedList.empty());
    QVERIFY(files.filePausedId.empty());
    QVERIFY(files.name.isEmpty());
    QCOMPARE(files.comboBoxItems, getLocalString("IDS_TXT_PROFILELIST").split(u';'));
    QCOMPARE(files.cmbItems, getLocalString("IDS_TXT_PROFILELIST_DROPDOWN").split(u';'));

    const SharedState& state = program.state();
    QVERIFY(state.noOfconvertingFileList.isEmpty());
    QCOMPARE(state.itemId, qint64{0});
    QCOMPARE(state.count, qint64{0});
    QCOMPARE(state.countstr, QStringLiteral("(0)"));
    QCOMPARE(state.convertingIndex, ConvertingIndex::noRow);
    QVERIFY(state.isSourceAvailable);
    QVERIFY(!state.isConversionRunning);
    QVERIFY(!state.stopped);
    QVERIFY(!state.error);
}

void TestStart::textsOfTheControls_data() {
    QTest::addColumn<QByteArray>("key");
    const auto row = [](const char* control, const char* key) {
        QTest::newRow(control) << QByteArray(key);
    };
    row("btnStop", "IDS_BTN_STOP");
    row("btnConvertFile", "IDS_BTN_CONVERT");
    row("btnOpenFolder", "IDS_BTN_OPEN_FOLDER");
    row("btnSelectFolder", "IDS_BTN_SELECT_FOLDER");
    row("btnAddFile", "IDS_BTN_ADD_FILE");
    row("btnRemoveFile", "IDS_BTN_REMOVE_FILE");
    row("outputFolderTxtFld", "IDS_TXTFLD_OUTPUTFOLDER");
    row("openFldrAftrFnsh", "IDS_TXTFLD_OPNFLDRAFTRFNSH");
}

void TestStart::textsOfTheControls() {
    QFETCH(QByteArray, key);
    ControllerFixture program;
    const auto* const control = program.widget<QWidget>(QTest::currentDataTag());
    QVERIFY(control);
    const QString text = getLocalString(key.constData());
    QVERIFY(!text.isEmpty());
    QVERIFY(text != QString::fromLatin1(key));
    QCOMPARE(control->property("text").toString(), text);
}

void TestStart::titleOfTheWindow() {
    ControllerFixture program;
    QCOMPARE(program.window().windowTitle(), QStringLiteral("Quorvex Reelshift 1.0.0.0"));
}

void TestStart::countOfAnEmptyList() {
    ControllerFixture program;
    const QString expected = getLocalString("IDS_TXT_FILELIST") + QStringLiteral("  (0)");
    QCOMPARE(program.widget<QLabel>("fileList")->text(), expected);
    QCOMPARE(program.state().fileCountStr, expected);
    QCOMPARE(program.state().fileListStr, getLocalString("IDS_TXT_FILELIST"));
}

void TestStart::headersOfTheColumns() {
    ControllerFixture program;
    const auto* const table = program.widget<FileTableView>("theTableNew");
    const auto header = [table](int column) {
        return table->model()->headerData(column, Qt::Horizontal).toString();
    };
    const QList<const char*> keys{"IDS_TXT_FILENAME",      "IDS_TXT_DURATION",   "IDS_TXT_AUDIO",
                                  "IDS_TXTFLD_RESOLUTION", "IDS_TXTFLD_QUALITY", "IDS_TXT_STATUS"};
    QCOMPARE(table->model()->columnCount(), 8);
    for (int column = 1; column <= keys.size(); ++column)
        QCOMPARE(header(column), getLocalString(keys[column - 1]));
    // The first one keeps its check box, the row's button has no header.
    QCOMPARE(header(0), QString());
    QCOMPARE(header(7), QString());
    const QCheckBox* const selectAll = table->btnSelectAll();
    QVERIFY(selectAll->isVisible());
    QVERIFY(!selectAll->isChecked());
    const QRect box(selectAll->mapTo(table, QPoint(0, 0)), selectAll->size());
    QVERIFY(box.center().x() < table->columnViewportPosition(1) + table->viewport()->x());
    QVERIFY(box.center().y() < table->viewport()->y());
}

void TestStart::profilesOfTheMainList() {
    ControllerFixture program;
    const auto* const combo = program.widget<QComboBox>("comboBox");
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items += combo->itemText(i);
    QCOMPARE(items, program.files().comboBoxItems);
    QCOMPARE(items.size(), 3);
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(combo->currentText(), items[0]);
}

// Kept: the size column begins with the texts of the qualities. No row ever shows them, because
// each brings its own sizes.
void TestStart::cellsBeforeAnyRow() {
    ControllerFixture program;
    const FileTableSource& source =
        program.widget<FileTableView>("theTableNew")->fileModel()->source();
    const QStringList profiles{getLocalString("IDS_TXT_PROFILELIST_1"),
                               getLocalString("IDS_TXT_PROFILELIST_2"),
                               getLocalString("IDS_TXT_PROFILELIST_3")};
    QCOMPARE(source.startingCellForTableColumn(column::cmb), profiles);
    QCOMPARE(source.startingCellForTableColumn(column::res), profiles);
    QCOMPARE(source.startingCellForTableColumn(column::name), QStringList());

    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    QCOMPARE(source.dataCellForTableColumn(column::res, 0), QStringList{QStringLiteral("640x480")});
    QCOMPARE(source.dataCellForTableColumn(column::cmb, 0), profiles);
}

void TestStart::whatIsEnabled() {
    ControllerFixture program;
    for (const char* name : {"btnAddFile", "btnConvertFile", "btnStop", "btnSelectFolder",
                             "btnOpenFolder", "comboBox", "openFolderCheckBtn", "theTableNew"})
        QVERIFY2(program.widget<QWidget>(name)->isEnabled(), name);
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QVERIFY(!program.widget<QCheckBox>("openFolderCheckBtn")->isChecked());
    QVERIFY(program.widget<QLineEdit>("outputFolderPath")->isReadOnly());
}

void TestStart::unknownKeysShowThemselves() {
    Bare program;
    program.controller->awakeFromNib();
    program.controller->applicationDidFinishLaunching();
    QCOMPARE(program.widget<QPushButton>("btnStop")->text(), QStringLiteral("IDS_BTN_STOP"));
    QCOMPARE(program.widget<QLabel>("fileList")->text(), QStringLiteral("IDS_TXT_FILELIST  (0)"));
    QCOMPARE(program.parts->window.windowTitle(), QStringLiteral("Quorvex Reelshift 2.3.4.5"));
}

void TestStart::headerBoxFollowsTheRows() {
    ControllerFixture program;
    const auto* const box = program.widget<FileTableView>("theTableNew")->btnSelectAll();
    program.window().checkHeaderBtnStatus(program.files());
    QVERIFY(!box->isChecked());
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    QVERIFY(box->isChecked());
    program.files().setCheck(1, 0);
    program.window().checkHeaderBtnStatus(program.files());
    QVERIFY(!box->isChecked());
    program.files().setCheck(1, 1);
    program.window().checkHeaderBtnStatus(program.files());
    QVERIFY(box->isChecked());

    QVERIFY(AppDelegate::isUpdateAvailable(QStringLiteral("1.0.0.0"), QStringLiteral("1.0.0.1")));
    QVERIFY(!AppDelegate::isUpdateAvailable(QStringLiteral("1.0.0.0"), QStringLiteral("1.0.0.0")));
}

void TestStart::theVersionCheckIsNotWaitedFor() {
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    Bare program(QStringLiteral("http://127.0.0.1:%1").arg(silent.serverPort()));
    program.controller->applicationDidFinishLaunching();
    QCOMPARE(program.widget<QPushButton>("btnStop")->text(), QStringLiteral("IDS_BTN_STOP"));
    QTRY_VERIFY(silent.hasPendingConnections());
    // It is at work on its own thread, nobody has answered it, and the end does not wait for it.
    QElapsedTimer clock;
    clock.start();
    program.controller->quit();
    QVERIFY(clock.elapsed() < 5000);
}

void TestStart::theWholeIconComesWithTheWindow() {
    QApplication::setWindowIcon({});
    ControllerFixture program;
    program.window().show();
    QTRY_VERIFY(QApplication::windowIcon().availableSizes().contains(QSize(256, 256)));
    QVERIFY(program.window().windowIcon().availableSizes().contains(QSize(16, 16)));
}

REELSHIFT_TEST(tst_start, TestStart, QApplication)
#include "tst_start.moc"
