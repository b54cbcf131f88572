#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/AppDelegate.h"
#include "app/ControllerFixture.h"
#include "app/MainWindow.h"
#include "app/PanelDriver.h"
#include "platform/MainThread.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "widgets/PopUpBoxes.h"
#include "widgets/QuietLine.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <signal.h>

using namespace std::chrono_literals;

namespace {

QString waitingMovie(const ControllerFixture& program) {
    return program.movie(QStringLiteral("waiting.mp4"))
        .probeSteps({"touch started", "wait-file go", "report size=1280x720"})
        .write();
}

// When the movie is at hand itself: it is looked at before.
void whileProbing(ControllerFixture& program, std::function<void()> then) {
    once(
        [&program] {
            const int row = program.files().rowCount() - 1;
            return row >= 0 &&
                   program.files().recordAt(row)->text(key::srcpath).endsWith(u"/waiting.mp4") &&
                   QFile::exists(program.movies() + QStringLiteral("/started"));
        },
        std::move(then));
}

void go(const ControllerFixture& program) {
    QFile file(program.movies() + QStringLiteral("/go"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

/// What goes on in the window while a movie is examined.
class TestAddingMeanwhile final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void halfBuiltRowsAreNotShown();
    void convertPressedMeanwhile();
    void whatARunHasDisabledIsDropped();
    void nothingGoesThroughUnderTheBox();
    void windowClosedMeanwhile();
    void windowClosedWhileARefusedMovieIsExamined();
    void windowClosedWhileAFolderIsLookedThrough();
    void aLongAddTellsHowFarItIs();
    void escapeEndsTheAdd();
    void escapeLeavesASilentMovie_data();
    void escapeLeavesASilentMovie();
    void escapeLeavesASilentShare();
    void escapeUnderABoxIsTheBoxs();
    void aCloseThatABoxSwallowedIsForgotten();
    void programEndsMeanwhile_data();
    void programEndsMeanwhile();
    void programEndsUnderAPanel_data();
    void programEndsUnderAPanel();
};

void TestAddingMeanwhile::halfBuiltRowsAreNotShown() {
    ControllerFixture program;
    auto* const table = program.widget<FileTableView>("theTableNew");
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    bool looked = false;
    whileProbing(program, [&] {
        QCOMPARE(program.files().rowCount(), 2);
        QVERIFY(!program.files().recordAt(1)->contains(key::resolution));
        QCOMPARE(table->model()->rowCount(), 1);
        (void)program.window().grab();
        table->viewport()->repaint();
        QTest::mouseMove(table->viewport(),
                         table->visualRect(table->model()->index(0, 1)).center());
        table->selectRow(0);
        // Even a reload in between shows what is complete alone.
        table->fileModel()->reload();
        QCOMPARE(table->model()->rowCount(), 1);
        QCOMPARE(table->model()->index(0, 1).data().toString(), QStringLiteral("a.mp4"));
        (void)program.window().grab();
        looked = true;
        go(program);
    });
    program.add({good, waitingMovie(program), good});
    QVERIFY(looked);
    QCOMPARE(table->model()->rowCount(), 3);
    QCOMPARE(table->model()->index(1, 4).data().toString(), QStringLiteral("1280x720"));
    QVERIFY(areInStep(program.files()));
}

void TestAddingMeanwhile::convertPressedMeanwhile() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    whileProbing(program, [&] {
        program.click("btnConvertFile");
        QVERIFY(!program.state().isConversionRunning);
        go(program);
    });
    program.boxes.promise(1000);
    program.add({good, waitingMovie(program), good});
    QVERIFY(!program.state().isConversionRunning);
    QCOMPARE(program.files().rowCount(), 3);
    // Looked at when all movies were added, and it takes them all.
    QTRY_VERIFY(program.state().isConversionRunning);
    QCOMPARE(program.state().noOfconvertingFileList.ids().size(), size_t{3});
    QVERIFY(program.waitUntilIdle());
    QVERIFY(program.boxes.allKept());
}

void TestAddingMeanwhile::whatARunHasDisabledIsDropped() {
    ControllerFixture program;
    whileProbing(program, [&] {
        program.click("btnConvertFile");
        program.click("btnSelectFolder");
        program.click("btnAddFile");
        go(program);
    });
    const QString movie = waitingMovie(program);
    program.add({movie});
    bool panelSeen = false;
    oncePanelOpen([&](QFileDialog&) { panelSeen = true; });
    program.boxes.promise(1000);
    QTRY_VERIFY(program.state().isConversionRunning);
    QVERIFY(program.waitUntilIdle());
    QVERIFY(!panelSeen);
    // The driver is still waiting for a panel: give it one.
    program.click("btnAddFile");
    QVERIFY(panelSeen);
}

void TestAddingMeanwhile::nothingGoesThroughUnderTheBox() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad =
        program.movie(QStringLiteral("b.mp4")).probe(QStringLiteral("h264")).write();
    bool tried = false;
    program.boxes.promise(1000, false, [&] {
        program.click("btnConvertFile");
        program.click("btnOpenFolder");
        program.window().close();
        QVERIFY(program.window().isVisible());
        tried = true;
    });
    program.add({good, bad, good});
    QVERIFY(tried);
    QCoreApplication::processEvents();
    QVERIFY(!program.state().isConversionRunning);
    QVERIFY(program.fileManager.shown.isEmpty());
    QVERIFY(program.window().isVisible());
    QCOMPARE(program.files().rowCount(), 2);
}

void TestAddingMeanwhile::windowClosedMeanwhile() {
    ControllerFixture program;
    QApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, &QGuiApplication::lastWindowClosed, &program.app(), &AppDelegate::quit);
    const QString movie = waitingMovie(program);
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    whileProbing(program, [&] {
        program.window().close();
        program.window().close();
        QVERIFY(program.window().isVisible());
        QVERIFY(!program.mainThread().isClosing());
        go(program);
    });
    QTimer::singleShot(0, &program.app(), [&] { program.add({movie, good}); });
    QCOMPARE(QApplication::exec(), 0);
    // The movie that was looked at is in, the others were not looked at any more.
    QVERIFY(!program.window().isVisible());
    QVERIFY(program.mainThread().isClosing());
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(areInStep(program.files()));
    QVERIFY(QFile::exists(program.output(QStringLiteral("default_hevc_path.txt"))));
}

// A box about the movie would swallow the closing.
void TestAddingMeanwhile::windowClosedWhileARefusedMovieIsExamined() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad = program.movie(QStringLiteral("waiting.mp4"))
                            .probeSteps({"touch started", "wait-file go", "report video=h264"})
                            .write();
    whileProbing(program, [&] {
        program.window().close();
        go(program);
    });
    program.boxes.promise(1000);
    program.add({good, bad, good});
    QTRY_VERIFY(!program.window().isVisible());
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(areInStep(program.files()));
}

void TestAddingMeanwhile::windowClosedWhileAFolderIsLookedThrough() {
    ControllerFixture program;
    (void)program.movie(QStringLiteral("a.mp4")).write();
    (void)program.movie(QStringLiteral("b.mp4")).write();
    for (int number = 0; number < 200; ++number)
        QVERIFY(QDir().mkpath(program.movies() + QStringLiteral("/%1").arg(number)));
    // The first turn of the main loop is that of the wait for the folder.
    QTimer::singleShot(0, &program.window(), [&] {
        QVERIFY(program.mainThread().isWaiting());
        QCOMPARE(program.state().itemId, qint64{0});
        program.window().close();
        QVERIFY(program.window().isVisible());
    });
    program.drop({program.movies()});
    QTRY_VERIFY(!program.window().isVisible());
    QCOMPARE(program.files().rowCount(), 0);
    QCOMPARE(program.state().itemId, qint64{0});
}

void TestAddingMeanwhile::aLongAddTellsHowFarItIs() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const auto line = [&] { return program.widget<QuietLine>("quietLine")->line(); };
    const QString second = text("IDS_TXT_ADDING").arg(2).arg(4);
    const QString third = text("IDS_TXT_ADDING").arg(3).arg(4);
    QStringList seen;
    once([&] { return line() == second; },
         [&] {
             seen += line();
             QVERIFY(!program.desktop.launcher.shares.isEmpty());
             QCOMPARE(program.desktop.launcher.shares.last(), 0.25);
             go(program);
         });
    once([&] { return line() == third; }, [&] { seen += line(); });
    const QString slow = program.movie(QStringLiteral("b.mp4"))
                             .probeSteps({"wait-file go", "wait 50", "report"})
                             .write();
    program.add({good, waitingMovie(program), slow, good});
    QCOMPARE(seen, (QStringList{second, third}));
    QCOMPARE(line(), QString());
    QVERIFY(program.desktop.launcher.hidden > 0);
    QCOMPARE(program.files().rowCount(), 4);
}

void TestAddingMeanwhile::escapeEndsTheAdd() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    whileProbing(program, [&] {
        QTest::keyClick(program.window().windowHandle(), Qt::Key_Escape);
        go(program);
    });
    program.add({good, waitingMovie(program), good, good});
    // The movie at hand is added.
    QCOMPARE(program.files().idList, (std::vector<int>{1, 2}));
    QCOMPARE(program.state().itemId, qint64{2});
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(), text("IDS_TXT_ADD_STOPPED").arg(2));
    QVERIFY(areInStep(program.files()));
    QVERIFY(program.boxes.seen.isEmpty());
    // Not the next add, too.
    program.add({good, good});
    QCOMPARE(program.files().rowCount(), 4);
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(), QString());
}

void TestAddingMeanwhile::escapeLeavesASilentMovie_data() {
    QTest::addColumn<int>("behind");
    QTest::newRow("the only one") << 0;
    QTest::newRow("others behind it") << 2;
}

void TestAddingMeanwhile::escapeLeavesASilentMovie() {
    QFETCH(int, behind);
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    program.add({good});
    whileProbing(program,
                 [&] { QTest::keyClick(program.window().windowHandle(), Qt::Key_Escape); });
    QElapsedTimer time;
    time.start();
    program.add(QStringList{waitingMovie(program)} + QStringList(behind, good));
    QVERIFY2(time.elapsed() < 10'000, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(),
             text("IDS_TXT_ADD_STOPPED").arg(behind + 1));
    QVERIFY(areInStep(program.files()));
    QVERIFY(program.boxes.seen.isEmpty());
    // The next add is a whole one.
    program.add({good, good});
    QCOMPARE(program.files().rowCount(), 3);
}

void TestAddingMeanwhile::escapeLeavesASilentShare() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString share = program.path(QStringLiteral("share"));
    QVERIFY(QDir().mkpath(share));
    const QString silent = ScriptedMovie(share, QStringLiteral("b.mp4")).write();
    program.volumes.hold(share);
    once([&] { return program.state().itemId == 2; },
         [&] { QTest::keyClick(program.window().windowHandle(), Qt::Key_Escape); });
    bool hasAnswered = false; // so that a wait for it comes to its end
    QTimer::singleShot(10s, &program.window(), [&] {
        hasAnswered = true;
        program.volumes.release();
    });
    program.add({good, silent, good});
    QVERIFY(!hasAnswered);
    QCOMPARE(program.files().idList, (std::vector<int>{1}));
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(), text("IDS_TXT_ADD_STOPPED").arg(2));
    QVERIFY(areInStep(program.files()));
    QVERIFY(program.boxes.seen.isEmpty());
    program.volumes.release();
    program.add({silent});
    QCOMPARE(program.files().rowCount(), 2);
}

void TestAddingMeanwhile::escapeUnderABoxIsTheBoxs() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad =
        program.movie(QStringLiteral("b.mp4")).probe(QStringLiteral("h264")).write();
    program.boxes.promise(
        1000, false, [&] { QTest::keyClick(program.window().windowHandle(), Qt::Key_Escape); });
    program.add({good, bad, good});
    QCOMPARE(program.files().rowCount(), 2);
}

void TestAddingMeanwhile::aCloseThatABoxSwallowedIsForgotten() {
    ControllerFixture program;
    once([&] { return program.mainThread().isWaiting(); }, [&] { program.window().close(); });
    program.mainThread().waitFor(100ms);
    program.boxes.promise(1000);
    PopUpBoxes(&program.window()).PopUpMesg({text("IDS_TXT_UNSUPPORTED")});
    QVERIFY(program.window().isVisible());

    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    program.add({good});
    QCOMPARE(program.files().rowCount(), 1);
    program.drop({good});
    QCOMPARE(program.files().rowCount(), 2);
}

void TestAddingMeanwhile::programEndsMeanwhile_data() {
    QTest::addColumn<int>("look");
    QTest::addColumn<QByteArray>("step");
    QTest::newRow("first look, silent") << 1 << QByteArray("sleep 0.05");
    QTest::newRow("second look, silent") << 2 << QByteArray("sleep 0.05");
    QTest::newRow("first look, talking") << 1 << QByteArray("echo and so on, >&2");
    QTest::newRow("second look, talking") << 2 << QByteArray("echo and so on, >&2");
}

void TestAddingMeanwhile::programEndsMeanwhile() {
    QFETCH(int, look);
    QFETCH(QByteArray, step);
    ControllerFixture program;
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    program.add({movie});
    const QString started = movie + QStringLiteral(".pid");
    writeProgram(program.resources() + QStringLiteral("/ffmpeg"),
                 "#!/bin/sh\n"
                 "trap '' TERM INT\n"
                 "echo . >> \"$2.looks\"\n"
                 "echo 'Duration: 00:00:12.34 Video: hevc, 1280x720, Audio: aac, x' >&2\n"
                 "[ $(wc -l < \"$2.looks\") -lt " +
                     QByteArray::number(look) +
                     " ] && exit 1\n"
                     "echo $$ > \"$2.new\" && mv \"$2.new\" \"$2.pid\"\n"
                     "while :; do " +
                     step + "; done\n");
    QElapsedTimer clock;
    once([&] { return QFile::exists(started); },
         [&] {
             clock.start();
             program.app().quit();
         });
    QTimer::singleShot(0, &program.app(), [&] { program.add({movie, movie}); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(areInStep(program.files()));
    program.quit();
    QFile file(started);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(::kill(static_cast<pid_t>(file.readAll().trimmed().toInt()), 0) != 0);
}

void TestAddingMeanwhile::programEndsUnderAPanel_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("adding") << QByteArray("btnAddFile");
    QTest::newRow("choosing a folder") << QByteArray("btnSelectFolder");
}

void TestAddingMeanwhile::programEndsUnderAPanel() {
    QFETCH(QByteArray, button);
    ControllerFixture program;
    once([] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; },
         [&] { program.app().quit(); });
    QTimer::singleShot(0, &program.app(), [&] { program.click(button.constData()); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(program.files().rowCount(), 0);
    QCOMPARE(program.shownOutputFolder(), program.documents());
    QVERIFY(program.boxes.seen.isEmpty());
}

REELSHIFT_TEST(tst_adding_meanwhile, TestAddingMeanwhile, QApplication)
#include "tst_adding_meanwhile.moc"
