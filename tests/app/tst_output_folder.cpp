#include "TestProgram.h"
#include "app/ControllerFixture.h"
#include "app/OutputFolder.h"
#include "app/PanelDriver.h"
#include "app/RunChecks.h"
#include "platform/MainThread.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTest>

/// The choice of the output folder, in the real panel, and its showing.
class TestOutputFolder final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosingAFolder();
    void choosingNone();
    void choosingByName();
    void aFileIsNotAFolder();
    void aFolderThatIsGone();
    void refusedVolumes_data();
    void refusedVolumes();
    void otherFileSystemsAreTaken_data();
    void otherFileSystemsAreTaken();
    void aTildeIsExpandedForThePanelAlone();
    void expandedTildes_data();
    void expandedTildes();
    void showingTheFolder();
    void showingAFile();
    void showingWhatIsMissing();
    void afterARefusalTheOldFolderIsShown();
};

void TestOutputFolder::choosingAFolder() {
    ControllerFixture program;
    const QString chosen = program.path(QStringLiteral("chosen \"x\" <b>%1"));
    QVERIFY(QDir().mkpath(chosen));
    QString began;
    QString title;
    oncePanelOpen([&](QFileDialog& panel) {
        began = panel.directory().path();
        title = panel.windowTitle();
        panel.setDirectory(program.path(QString()));
        QTRY_VERIFY(selectNames(panel, {QStringLiteral("chosen \"x\" <b>%1")}));
        confirmPanel(panel);
    });
    program.click("btnSelectFolder");
    QCOMPARE(began, program.documents());
    QCOMPARE(title, getLocalString("IDS_TXT_PANEL_FOLDER"));
    QCOMPARE(program.widget<QLineEdit>("outputFolderPath")->text(), chosen);
    QCOMPARE(program.shownOutputFolder(), chosen);
    QCOMPARE(program.state().outputFolder, chosen);

    // From now on the records of added movies name it.
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    QCOMPARE(program.files().recordAt(0)->text(key::path), chosen + QStringLiteral("/a.mp4"));
}

void TestOutputFolder::choosingNone() {
    ControllerFixture program;
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, program.movies());
        panel.reject();
    });
    program.click("btnSelectFolder");
    QCOMPARE(program.widget<QLineEdit>("outputFolderPath")->text(), program.documents());
    QCOMPARE(program.shownOutputFolder(), program.documents());
    QCOMPARE(program.state().outputFolder, QString());
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestOutputFolder::choosingByName() {
    ControllerFixture program;
    QVERIFY(QDir().mkpath(program.documents() + QStringLiteral("/below")));
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, QStringLiteral("below"));
        confirmPanel(panel);
    });
    program.click("btnSelectFolder");
    QCOMPARE(program.shownOutputFolder(), program.documents() + QStringLiteral("/below"));
}

void TestOutputFolder::aFileIsNotAFolder() {
    ControllerFixture program;
    writeContent(program.path(QStringLiteral("plain")), "no folder");
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, program.path(QStringLiteral("plain")));
        confirmPanel(panel);
        QVERIFY(panel.isVisible());
    });
    program.click("btnSelectFolder");
    QCOMPARE(program.shownOutputFolder(), program.documents());

    // A desktop's own panel may hand it over all the same.
    OutputFolder outputFolder(program.mainThread(), std::make_shared<FakeVolumes>(),
                              program.fileManager);
    QVERIFY(!outputFolder.isTaken(program.path(QStringLiteral("plain")), nullptr));
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestOutputFolder::aFolderThatIsGone() {
    ControllerFixture program;
    OutputFolder outputFolder(program.mainThread(), program.sharedVolumes, program.fileManager);
    QVERIFY(!outputFolder.isTaken(program.path(QStringLiteral("gone")), nullptr));
    QVERIFY(!outputFolder.isTaken(QString(), nullptr));
    QVERIFY(program.boxes.seen.isEmpty());
    QVERIFY(outputFolder.isTaken(program.movies(), nullptr));
}

void TestOutputFolder::refusedVolumes_data() {
    QTest::addColumn<bool>("removable");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("message");
    const QStringList card{QStringLiteral("IDS_TXT_SDCARD_CANNOT_BEUSED"),
                           QStringLiteral("IDS_TXT_USE_ANOTHER_FOLDER")};
    const QStringList fat{QStringLiteral("IDS_TXT_FAT32_UNSUPPORTED")};
    QTest::newRow("a card") << true << QStringLiteral("exfat") << card;
    QTest::newRow("a fixed FAT disk") << false << QStringLiteral("msdos") << fat;
    QTest::newRow("a card with FAT: the card is what counts")
        << true << QStringLiteral("msdos") << card;
}

void TestOutputFolder::refusedVolumes() {
    QFETCH(bool, removable);
    QFETCH(QString, type);
    QFETCH(QStringList, message);
    ControllerFixture program;
    program.volumes.table[program.movies()] = {removable, type};
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, program.movies());
        confirmPanel(panel);
    });
    program.boxes.promise(1000);
    program.click("btnSelectFolder");

    QStringList lines;
    for (const QString& key : message)
        lines += getLocalString(key.toLatin1().constData());
    QCOMPARE(program.boxes.messages(), QStringList{lines.join(u'\n')});
    QCOMPARE(program.boxes.seen[0].buttons, QStringList{getLocalString("IDS_BTN_POPUP_OK")});
    QCOMPARE(program.boxes.seen[0].checkBox, QString());
    QCOMPARE(program.widget<QLineEdit>("outputFolderPath")->text(), program.documents());
    QCOMPARE(program.shownOutputFolder(), program.documents());
    QCOMPARE(program.state().outputFolder, QString());
}

void TestOutputFolder::otherFileSystemsAreTaken_data() {
    QTest::addColumn<QString>("type");
    QTest::newRow("unknown") << QString();
    for (const char* type : {"exfat", "ntfs", "nfs", "ext4", "MSDOS", "msdosfs"})
        QTest::newRow(type) << QString::fromLatin1(type);
}

void TestOutputFolder::otherFileSystemsAreTaken() {
    QFETCH(QString, type);
    ControllerFixture program;
    program.volumes.table[program.movies()] = {false, type};
    OutputFolder outputFolder(program.mainThread(), program.sharedVolumes, program.fileManager);
    QVERIFY(outputFolder.isTaken(program.movies(), nullptr));
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestOutputFolder::aTildeIsExpandedForThePanelAlone() {
    ControllerFixture program;
    const QByteArray home = qgetenv("HOME");
    const auto back = qScopeGuard([&] { qputenv("HOME", home); });
    qputenv("HOME", program.path(QStringLiteral("home")).toUtf8());
    program.widget<QLineEdit>("outputFolderPath")->setText(QStringLiteral("~/Documents"));

    QString began;
    oncePanelOpen([&](QFileDialog& panel) { began = panel.directory().path(); });
    program.click("btnSelectFolder");
    QCOMPARE(began, program.documents());

    program.boxes.promise(1000);
    program.click("btnOpenFolder");
    QCOMPARE(program.boxes.messages(),
             QStringList{getLocalString("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE")});
    QVERIFY(program.fileManager.shown.isEmpty());
}

void TestOutputFolder::expandedTildes_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    const QString home = QDir::homePath();
    QTest::newRow("alone") << QStringLiteral("~") << home;
    QTest::newRow("with a folder") << QStringLiteral("~/a b") << QString(home + u"/a b");
    QTest::newRow("inside") << QStringLiteral("/a/~") << QStringLiteral("/a/~");
    QTest::newRow("part of a name") << QStringLiteral("~a/b") << QStringLiteral("~a/b");
    QTest::newRow("nothing") << QString() << QString();
}

void TestOutputFolder::expandedTildes() {
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(withTildeExpanded(path), expected);
}

void TestOutputFolder::showingTheFolder() {
    ControllerFixture program;
    program.click("btnOpenFolder");
    QCOMPARE(program.fileManager.shown, QStringList{program.documents()});
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestOutputFolder::showingAFile() {
    ControllerFixture program;
    const QString file = program.path(QStringLiteral("plain"));
    writeContent(file, "no folder");
    program.widget<QLineEdit>("outputFolderPath")->setText(file);
    program.click("btnOpenFolder");
    QCOMPARE(program.fileManager.shown, QStringList{file});
}

void TestOutputFolder::showingWhatIsMissing() {
    ControllerFixture program;
    QVERIFY(QDir(program.documents()).removeRecursively());
    program.boxes.promise(1000);
    program.click("btnOpenFolder");
    QCOMPARE(program.boxes.messages(),
             QStringList{getLocalString("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE")});
    QCOMPARE(program.boxes.seen[0].buttons, QStringList{getLocalString("IDS_BTN_POPUP_OK")});
    QVERIFY(program.fileManager.shown.isEmpty());
}

void TestOutputFolder::afterARefusalTheOldFolderIsShown() {
    ControllerFixture program;
    program.volumes.table[program.movies()] = {true, QString()};
    oncePanelOpen([&](QFileDialog& panel) {
        typeIntoPanel(panel, program.movies());
        confirmPanel(panel);
    });
    program.boxes.promise(1000);
    program.click("btnSelectFolder");
    program.click("btnOpenFolder");
    QCOMPARE(program.fileManager.shown, QStringList{program.documents()});
}

REELSHIFT_TEST(tst_output_folder, TestOutputFolder, QApplication)
#include "tst_output_folder.moc"
