#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/PanelDriver.h"
#include "app/RunScene.h"
#include "platform/MainThread.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

#include <set>

using namespace std::chrono_literals;

/// The window in the hands of somebody without a mouse.
class TestKeys final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyKeyPressesItsButton_data();
    void everyKeyPressesItsButton();
    void aDisabledButtonHasNoKey();
    void noTwoKeysAreAlike();
    void mnemonicsLeadToTheirControls_data();
    void mnemonicsLeadToTheirControls();
    void deleteRemovesTheCheckedRows_data();
    void deleteRemovesTheCheckedRows();
    void deleteIsALetterInAnEditor();
    void noKeyCountsUnderABox();
    void aKeyInsideAWaitIsPutOff();
    void escapeEndsNothing();
    void pauseAndResume();
    void pauseAndResumeWithAnotherRowSelected();
    void aRunTakesTheFocusToTheList();
    void theKeysAreNamed_data();
    void theKeysAreNamed();

private:
    static void press(RunScene& scene, const QKeySequence& keys);
    static QWidget* activeWindow(ControllerFixture& program);
    static FileTableView& table(RunScene& scene);
};

void TestKeys::press(RunScene& scene, const QKeySequence& keys) {
    QTest::keySequence(activeWindow(scene.program), keys);
}

QWidget* TestKeys::activeWindow(ControllerFixture& program) {
    MainWindow& window = program.window();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window is not active");
    return &window;
}

FileTableView& TestKeys::table(RunScene& scene) {
    return *scene.program.window().findChild<FileTableView*>();
}

void TestKeys::everyKeyPressesItsButton_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<bool>("hasPanel");
    const auto row = [](const char* keys, const char* button, bool hasPanel = false) {
        QTest::newRow(keys) << QByteArray(button) << hasPanel;
    };
    row("Ctrl+O", "btnAddFile", true);
    row("Delete", "btnRemoveFile");
    row("Ctrl+Return", "btnConvertFile");
    row("Ctrl+Enter", "btnConvertFile");
    row("Ctrl+.", "btnStop");
    row("Ctrl+L", "btnSelectFolder", true);
    row("Ctrl+Shift+O", "btnOpenFolder");
    row("Ctrl+Shift+A", "btnSelectAll");
}

void TestKeys::everyKeyPressesItsButton() {
    QFETCH(QByteArray, button);
    QFETCH(bool, hasPanel);
    RunScene scene;
    auto* const control = scene.program.widget<QAbstractButton>(button.constData());
    QVERIFY(control);
    control->setEnabled(true);
    const QSignalSpy clicked(control, &QAbstractButton::clicked);
    bool panel = false;
    if (hasPanel)
        oncePanelOpen([&](QFileDialog&) { panel = true; });
    if (button == "btnStop")
        scene.program.boxes.promise(1000);
    press(scene, QKeySequence(QString::fromLatin1(QTest::currentDataTag())));
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(panel, hasPanel);
    QVERIFY(scene.program.waitUntilIdle());
}

void TestKeys::aDisabledButtonHasNoKey() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    for (const char* const keys : {"Ctrl+O", "Ctrl+Return", "Ctrl+L"}) {
        press(scene, QKeySequence(QString::fromLatin1(keys)));
        QCoreApplication::processEvents();
        QVERIFY(!QApplication::activeModalWidget());
    }
    QCOMPARE(scene.program.encodes().size(), 1);
    QVERIFY(scene.end({a}));
}

// What a person presses together with Alt, and every key beside it.
void TestKeys::noTwoKeysAreAlike() {
    RunScene scene;
    std::set<QString> seen;
    const auto isNew = [&seen](const QKeySequence& key) {
        return key.isEmpty() || seen.insert(key.toString()).second;
    };
    MainWindow& window = scene.program.window();
    const auto buttons = window.findChildren<QAbstractButton*>();
    for (const QAbstractButton* const each : buttons)
        QVERIFY2(isNew(each->shortcut()), qPrintable(each->text()));
    const auto labels = window.findChildren<QLabel*>();
    for (const QLabel* const each : labels) {
        if (each->buddy())
            QVERIFY2(isNew(QKeySequence::mnemonic(each->text())), qPrintable(each->text()));
    }
    const auto shortcuts = window.findChildren<QShortcut*>();
    for (const QShortcut* const each : shortcuts) {
        for (const QKeySequence& key : each->keys())
            QVERIFY2(isNew(key), qPrintable(key.toString()));
    }
    QVERIFY(seen.size() >= 18);
}

void TestKeys::mnemonicsLeadToTheirControls_data() {
    QTest::addColumn<QByteArray>("control");
    QTest::newRow("IDS_TXT_FILELIST") << QByteArray("theTableNew");
    QTest::newRow("IDS_TXT_PROFILE_CAPTION") << QByteArray("comboBox");
    QTest::newRow("IDS_TXTFLD_OUTPUTFOLDER") << QByteArray("outputFolderPath");
    QTest::newRow("IDS_TXTFLD_OPNFLDRAFTRFNSH") << QByteArray("openFolderCheckBtn");
}

void TestKeys::mnemonicsLeadToTheirControls() {
    QFETCH(QByteArray, control);
    RunScene scene;
    const auto* const goal = scene.program.widget<QWidget>(control.constData());
    press(scene, QKeySequence::mnemonic(getLocalString(QTest::currentDataTag())));
    QCOMPARE(QApplication::focusWidget(), goal);
    if (const auto* const box = qobject_cast<const QCheckBox*>(goal))
        QTRY_VERIFY(box->isChecked());
}

void TestKeys::deleteRemovesTheCheckedRows_data() {
    QTest::addColumn<QByteArray>("focus");
    for (const char* const each : {"theTableNew", "btnAddFile", "comboBox"})
        QTest::newRow(each) << QByteArray(each);
}

void TestKeys::deleteRemovesTheCheckedRows() {
    QFETCH(QByteArray, focus);
    RunScene scene;
    scene.add({a, b, c});
    table(scene).fileModel()->checkRows({1}, false);
    activeWindow(scene.program);
    scene.program.widget<QWidget>(focus.constData())->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(scene.names(), QStringList{b});
    // Nothing is checked any more.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(scene.names(), QStringList{b});
    QVERIFY(scene.isInStep());
}

void TestKeys::deleteIsALetterInAnEditor() {
    RunScene scene;
    scene.add({a});
    activeWindow(scene.program);
    table(scene).setFocus();
    table(scene).setCurrentIndex(
        table(scene).fileModel()->index(0, static_cast<int>(TableColumn::Res)));
    QTest::keyClick(&table(scene), Qt::Key_F2);
    auto* const editor = qobject_cast<QComboBox*>(table(scene).openedEditor());
    QVERIFY(editor);
    QTest::keyClick(editor->lineEdit(), Qt::Key_Delete);
    QCOMPARE(editor->currentText(), QString());
    QCOMPARE(scene.names(), QStringList{a});
    // Nor does it count while the list of the cell is open.
    editor->showPopup();
    QTest::keyClick(editor->view(), Qt::Key_Delete);
    QCOMPARE(scene.names(), QStringList{a});
    table(scene).closeEditors();
}

void TestKeys::noKeyCountsUnderABox() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    scene.program.boxes.promise(1000, false, [&] {
        MainWindow& window = scene.program.window();
        for (const char* const keys : {"Delete", "Ctrl+Shift+O", "Ctrl+.", "Ctrl+Shift+A"}) {
            QTest::keySequence(&window, QKeySequence(QString::fromLatin1(keys)));
            QTest::keySequence(QApplication::activeModalWidget(),
                               QKeySequence(QString::fromLatin1(keys)));
        }
    });
    press(scene, QKeySequence(Qt::CTRL | Qt::Key_Period));
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(table(scene).btnSelectAll()->isChecked());
    QVERIFY(scene.program.fileManager.shown.isEmpty());
    QVERIFY(scene.end({a}));
}

void TestKeys::aKeyInsideAWaitIsPutOff() {
    RunScene scene;
    scene.add({a, b});
    activeWindow(scene.program);
    bool done = false;
    bool nothingYet = false;
    QTimer::singleShot(0, this, [&] {
        press(scene, QKeySequence(Qt::Key_Delete));
        nothingYet = scene.program.files().rowCount() == 2;
        done = true;
        scene.program.mainThread().wake();
    });
    scene.program.mainThread().waitUntil([&] { return done; }, 20ms);
    QVERIFY(nothingYet);
    QVERIFY(eventually([&] { return scene.names().isEmpty(); }));
}

void TestKeys::escapeEndsNothing() {
    RunScene scene;
    scene.add({a});
    QVERIFY(scene.begin());
    MainWindow& window = scene.program.window();
    for (QWidget* const each : window.findChildren<QWidget*>()) {
        if (each->focusPolicy() == Qt::NoFocus || !each->isVisible() || !each->isEnabled())
            continue;
        each->setFocus();
        QTest::keyClick(each, Qt::Key_Escape);
    }
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
    QVERIFY(scene.program.boxes.seen.isEmpty());
    QCOMPARE(scene.program.status(0), status::STATPR);
    QVERIFY(scene.end({a}));
}

void TestKeys::pauseAndResume() {
    RunScene scene;
    scene.add({a, b});
    const QKeySequence key(Qt::CTRL | Qt::Key_P);
    press(scene, key); // nothing is converted yet
    QVERIFY(scene.begin());
    press(scene, key);
    QVERIFY(eventually(
        [&] { return scene.program.state().convertingIndex == ConvertingIndex::pauseRequested; }));
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    QCOMPARE(table(scene).selectedRow(), 0);
    press(scene, key);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPR; }));
    QVERIFY(scene.end({a, b}));
}

void TestKeys::pauseAndResumeWithAnotherRowSelected() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    table(scene).selectRow(1);
    press(scene, QKeySequence(Qt::CTRL | Qt::Key_P));
    QVERIFY(eventually(
        [&] { return scene.program.state().convertingIndex == ConvertingIndex::pauseRequested; }));
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    table(scene).selectRow(1);
    press(scene, QKeySequence(Qt::CTRL | Qt::Key_P));
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPR; }));
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QVERIFY(scene.end({a, b}));
}

void TestKeys::aRunTakesTheFocusToTheList() {
    RunScene scene;
    scene.add({a});
    activeWindow(scene.program);
    auto* const convert = scene.program.widget<QPushButton>("btnConvertFile");
    convert->setFocus(Qt::TabFocusReason);
    QTest::keyClick(convert, Qt::Key_Space);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPR; }));
    QCOMPARE(QApplication::focusWidget(), &table(scene));
    // Pressed once more by mistake, the same key takes no movie off the list.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.end({a}));
}

void TestKeys::theKeysAreNamed_data() {
    QTest::addColumn<QByteArray>("tip");
    QTest::addColumn<QString>("key");
    const auto row = [](const char* button, const char* tip, const char* key) {
        QTest::newRow(button)
            << QByteArray(tip)
            << QKeySequence(QString::fromLatin1(key)).toString(QKeySequence::NativeText);
    };
    row("btnAddFile", "IDS_TIP_ADD_FILE", "Ctrl+O");
    row("btnRemoveFile", "IDS_TIP_REMOVE_FILE", "Delete");
    row("btnConvertFile", "IDS_TIP_CONVERT", "Ctrl+Return");
    row("btnStop", "IDS_TIP_STOP", "Ctrl+.");
    row("btnSelectFolder", "IDS_TIP_SELECT_FOLDER", "Ctrl+L");
    row("btnOpenFolder", "IDS_TIP_OPEN_FOLDER", "Ctrl+Shift+O");
    row("btnSelectAll", "IDS_TIP_SELECT_ALL", "Ctrl+Shift+A");
}

void TestKeys::theKeysAreNamed() {
    QFETCH(QByteArray, tip);
    QFETCH(QString, key);
    RunScene scene;
    const auto* const button = scene.program.widget<QAbstractButton>(QTest::currentDataTag());
    QVERIFY(!key.isEmpty());
    QCOMPARE(button->toolTip(),
             getLocalString("IDS_TIP_WITH_SHORTCUT").arg(getLocalString(tip.constData()), key));
}

REELSHIFT_TEST(tst_keys, TestKeys, QApplication)
#include "tst_keys.moc"
