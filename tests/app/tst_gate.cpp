#include "TestProgram.h"
#include "app/MainWindow.h"
#include "app/RunScene.h"
#include "platform/MainThread.h"
#include "table/FileTableColumns.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

/// What reaches the main window although no user could press it just then: under a box, inside a
/// wait, through the accessibility tree.
class TestGate final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void accessiblePressesOfTheTable();
    void accessibleActionsOfTheHeaderBox();
    void nothingUnderABox();
    void aPressUnderABoxThatClosesMeanwhile();
    void putOffInAWaitAndLookedAtAfresh();
    void aPutOffRowButtonThatHasAnotherMeaning();
    void actionsDuringARun();
    void actionsInsideAWait();

private:
    static void pressAll(RunScene& scene);
    static FileTableView& table(RunScene& scene);
    static void press(RunScene& scene, int row, TableColumn column);
    static void choose(RunScene& scene, int item);
};

FileTableView& TestGate::table(RunScene& scene) {
    return *scene.program.window().findChild<FileTableView*>();
}

void TestGate::press(RunScene& scene, int row, TableColumn column) {
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&table(scene))
                                                 ->tableInterface()
                                                 ->cellAt(row, static_cast<int>(column));
    QVERIFY(accessible);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

// As the list does it when the user takes one of its items.
void TestGate::choose(RunScene& scene, int item) {
    auto* const list = scene.program.window().findChild<QComboBox*>(QStringLiteral("comboBox"));
    list->setCurrentIndex(item);
    Q_EMIT list->activated(item);
}

void TestGate::accessiblePressesOfTheTable() {
    RunScene scene;
    scene.add({a, b});
    press(scene, 0, TableColumn::Check);
    QCOMPARE(scene.program.files().check, (std::vector<int>{0, 1}));
    QVERIFY(!table(scene).btnSelectAll()->isChecked());
    press(scene, 1, TableColumn::Im);
    QVERIFY(eventually([&] { return scene.names() == QStringList{a}; }));
    QVERIFY(scene.begin());
    press(scene, 0, TableColumn::Im);
    QVERIFY(eventually(
        [&] { return scene.program.state().convertingIndex == ConvertingIndex::pauseRequested; }));
    scene.go(a, 1);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPS; }));
    press(scene, 0, TableColumn::Im);
    QVERIFY(eventually([&] { return scene.program.status(0) == status::STATPR; }));
    QVERIFY(scene.end({a}));
}

void TestGate::accessibleActionsOfTheHeaderBox() {
    RunScene scene;
    scene.add({a, b});
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(table(scene).btnSelectAll())->actionInterface();
    const QStringList names = actions->actionNames();
    QVERIFY(names.contains(QAccessibleActionInterface::toggleAction()) ||
            names.contains(QAccessibleActionInterface::pressAction()));
    for (const QString& name : names) {
        if (name == QAccessibleActionInterface::setFocusAction())
            continue;
        const int wished = table(scene).btnSelectAll()->isChecked() ? 0 : 1;
        actions->doAction(name);
        QVERIFY2(eventually([&] {
                     return scene.program.files().check == std::vector<int>{wished, wished};
                 }),
                 qPrintable(name));
        QCOMPARE(table(scene).btnSelectAll()->isChecked(), wished == 1);
    }
}

void TestGate::nothingUnderABox() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    MainWindow& window = scene.program.window();
    scene.program.boxes.promise(1000, false, [&] {
        press(scene, 1, TableColumn::Check);
        press(scene, 1, TableColumn::Im);
        press(scene, 0, TableColumn::Im);
        table(scene).btnSelectAll()->click();
        for (const char* name : {"btnRemoveFile", "btnConvertFile", "btnAddFile", "btnStop",
                                 "btnSelectFolder", "btnOpenFolder"})
            scene.program.click(name);
        choose(scene, 0);
        window.close();
        QCoreApplication::processEvents();
    });
    scene.program.click("btnStop");
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
    QCOMPARE(scene.names(), (QStringList{a, b}));
    QCOMPARE(scene.program.files().check, (std::vector<int>{1, 1}));
    QVERIFY(table(scene).btnSelectAll()->isChecked());
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QCOMPARE(scene.program.files().cmb, QStringList(2, scene.program.files().cmbItems.at(1)));
    QCOMPARE(scene.program.boxes.seen.size(), 1);
    QVERIFY(scene.program.fileManager.shown.isEmpty());
    QVERIFY(scene.end({a, b}));
}

// An accessible press lasts a tenth of a second before it becomes a click.
void TestGate::aPressUnderABoxThatClosesMeanwhile() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    auto* const remove =
        scene.program.window().findChild<QAbstractButton*>(QStringLiteral("btnRemoveFile"));
    const QSignalSpy clicked(remove, &QAbstractButton::clicked);
    scene.program.boxes.promise(1000, false, [&] {
        QAccessible::queryAccessibleInterface(remove)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    });
    scene.program.click("btnStop");
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(eventually([&] { return clicked.size() == 1; }));
    QCOMPARE(scene.names(), (QStringList{a, b}));
    // The next one counts.
    QAccessible::queryAccessibleInterface(remove)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    QVERIFY(eventually([&] { return scene.names().isEmpty(); }));
    QVERIFY(scene.program.waitUntilIdle());
}

void TestGate::putOffInAWaitAndLookedAtAfresh() {
    RunScene scene;
    scene.add({a, b, c});
    bool done = false;
    bool nothingYet = false;
    QTimer::singleShot(0, this, [&] {
        press(scene, 0, TableColumn::Check);
        press(scene, 1, TableColumn::Im);
        QAccessible::queryAccessibleInterface(&table(scene))
            ->tableInterface()
            ->cellAt(2, static_cast<int>(TableColumn::Res))
            ->setText(QAccessible::Value, half);
        // The press of a row's button comes from the event loop.
        QTimer::singleShot(0, this, [&] {
            nothingYet =
                scene.program.files().check.front() == 1 && scene.program.files().rowCount() == 3;
            done = true;
            scene.program.mainThread().wake();
        });
    });
    scene.program.mainThread().waitUntil([&] { return done; }, 20ms);
    QVERIFY(nothingYet);
    QVERIFY(eventually([&] { return scene.names() == (QStringList{a, c}); }));
    QCOMPARE(scene.program.files().check, (std::vector<int>{0, 1}));
    // The movie that was meant, though it stands a row higher by now.
    QCOMPARE(scene.program.files().resolutionListForTable.at(1), half);
    QCOMPARE(scene.program.files().resolutionListForTable.at(0), QStringLiteral("640x480"));
}

void TestGate::aPutOffRowButtonThatHasAnotherMeaning() {
    RunScene scene(200ms);
    scene.add({a});
    QVERIFY(scene.begin());
    QVERIFY(scene.pause(0, a));
    // Pressed once more inside the wait of the resume, where it would still mean to resume.
    QTimer inWait;
    connect(&inWait, &QTimer::timeout, this, [&] {
        if (!scene.program.mainThread().isWaiting())
            return;
        inWait.stop();
        press(scene, 0, TableColumn::Im);
    });
    inWait.start(1);
    scene.program.clickRowButton(0);
    QVERIFY(!inWait.isActive());
    QCOMPARE(scene.program.status(0), status::STATPR);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(scene.program.state().convertingIndex, 0);
    QVERIFY(scene.end({a}));
    QVERIFY(scene.hasOutput(a));
}

// By key and through the accessibility tree, and by what needs neither.
void TestGate::pressAll(RunScene& scene) {
    for (const char* name : {"btnAddFile", "btnConvertFile", "btnSelectFolder"}) {
        QAbstractButton* const each = scene.button(name);
        QTest::keyClick(each, Qt::Key_Space);
        QAccessible::queryAccessibleInterface(each)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    }
}

void TestGate::actionsDuringARun() {
    RunScene scene;
    scene.add({a, b});
    QVERIFY(scene.begin());
    const std::vector<int> queue = scene.program.files().conversionTaskList;
    pressAll(scene);
    scene.program.mainThread().waitFor(200ms); // an accessible press lasts 100 ms
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(scene.program.files().conversionTaskList, queue);
    FileTableModel& model = *scene.program.window().findChild<FileTableView*>()->fileModel();
    model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    QTest::keyClick(scene.button("btnRemoveFile"), Qt::Key_Space);
    QCOMPARE(scene.names(), QStringList{a});
    QVERIFY(scene.end({a}));
    QCOMPARE(scene.program.encodes().size(), 1);
}

void TestGate::actionsInsideAWait() {
    RunScene scene;
    scene.add({a, b});
    bool nothingYet = false;
    QTimer::singleShot(0, this, [&] {
        // The run takes the movie that was dropped before it, and Remove File looks afresh: by
        // then the run is on and its rows are checked.
        scene.program.drop({scene.program.movie(QStringLiteral("d.mp4")).write()});
        QTest::keyClick(scene.button("btnConvertFile"), Qt::Key_Space);
        QTest::keyClick(scene.button("btnSelectFolder"), Qt::Key_Space);
        nothingYet =
            scene.program.files().rowCount() == 2 && !scene.program.state().isConversionRunning;
    });
    scene.program.mainThread().waitFor(20ms);
    QVERIFY(nothingYet);
    QVERIFY(eventually([&] { return scene.program.state().isConversionRunning; }));
    QCOMPARE(scene.program.files().rowCount(), 3);
    QCOMPARE(scene.program.files().conversionTaskList.size(), size_t(3));
    QVERIFY(!QApplication::activeModalWidget()); // Select Folder is disabled by then
    QVERIFY(scene.end({a, b}));
    QVERIFY(scene.hasOutput(QStringLiteral("d")));
}

REELSHIFT_TEST(tst_gate, TestGate, QApplication)
#include "tst_gate.moc"
