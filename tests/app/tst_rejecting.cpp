#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/ControllerFixture.h"
#include "app/MainWindow.h"
#include "app/PanelDriver.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcesses.h"
#include "table/FileTableView.h"
#include "widgets/QuietLine.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTest>

#include <set>

namespace {

QString endedAt(const QString& name, int notLookedAt) {
    const QString line = text("IDS_TXT_ADD_ENDED").arg(name);
    return notLookedAt == 0
               ? line
               : QString(line + u' ' + text("IDS_TXT_ADD_NOT_LOOKED_AT").arg(notLookedAt));
}

/// What stands below the table; empty while nothing is shown there.
QString quietLine(ControllerFixture& program) {
    const auto* const line = program.widget<QuietLine>("quietLine");
    return line->isHidden() ? QString() : line->line();
}

} // namespace

/// Movies that do not stay in the list: what is said about them and what they leave behind.
class TestRejecting final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rejectedInTheMiddle();
    void onlyOneMessageAnAdd();
    void rejectedAsTheFirstOfAll();
    void theLineGoesWithTheNextAction();
    void aLongNameIsCutInTheLine();
    void rejectedAfterAChangedQuality();
    void goneBeforeItWasRead();
    void aSizeThatCannotBeRead_data();
    void aSizeThatCannotBeRead();
    void aSizeThatCannotBeReadAmongOthers();
    void removableVolumeRefused();
    void removableVolumeTaken();
    void removableVolumeAnswerSticks();
    void everyPanelAsksAfresh();
    void aStoredAnswerAsksNothing_data();
    void aStoredAnswerAsksNothing();
};

void TestRejecting::rejectedInTheMiddle() {
    ControllerFixture program;
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).probe(h264).write(),
                 program.movie(QStringLiteral("c.mp4")).write()});
    const FileList& files = program.files();
    QCOMPARE(files.idList, (std::vector<int>{1, 3}));
    QCOMPARE(files.recordAt(1)->id(), 3);
    QVERIFY(areInStep(files));
    // Kept: the rejected movie leaves its progress record behind.
    QCOMPARE(files.progressObjects.size(), size_t{3});
    QCOMPARE(program.state().itemId, qint64{3});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QCOMPARE(program.boxes.seen[0].buttons, QStringList{text("IDS_BTN_POPUP_OK")});
    QCOMPARE(program.boxes.seen[0].checkBox, QString());
    QCOMPARE(program.state().countstr, QStringLiteral("(2)"));
}

void TestRejecting::onlyOneMessageAnAdd() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad = program.movie(QStringLiteral("b.mp4")).probe(h264).write();
    program.boxes.promise(1000);
    program.add({good, bad, bad, good, bad});
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(program.files().idList, (std::vector<int>{1, 4}));
    program.boxes.promise(1000);
    program.add({bad, bad});
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(areInStep(program.files()));
}

void TestRejecting::rejectedAsTheFirstOfAll() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString bad = program.movie(QStringLiteral("b.mp4")).probe(h264).write();
    program.add({bad, good, good});
    // Kept: it goes without a box, and the rest of the add with it.
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(quietLine(program), endedAt(QStringLiteral("b.mp4"), 2));
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(areInStep(program.files()));
    QCOMPARE(program.files().progressObjects.size(), size_t{1});
    QCOMPARE(program.state().itemId, qint64{1});
    // The next one may have been examined already, and nothing of that goes on.
    QTRY_COMPARE(program.processes().liveCount(), 0);
    QCOMPARE(program.widget<QLabel>("fileList")->text(),
             QString(text("IDS_TXT_FILELIST") + QStringLiteral("  (0)")));
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());

    program.add({good});
    QVERIFY(areInStep(program.files()));
    QCOMPARE(program.files().idList, (std::vector<int>{2}));
    QCOMPARE(program.files().cmb, QStringList{program.files().cmbItems[1]});
    program.boxes.promise(1000);
    QVERIFY(program.runToEnd());
    QVERIFY(QFile::exists(program.output(QStringLiteral("a_HQ_640x480.mp4"))));
    QCOMPARE(program.files().rowCount(), 0);
}

void TestRejecting::theLineGoesWithTheNextAction() {
    ControllerFixture program;
    const QString bad = program.movie(QStringLiteral("b %1.mp4")).probe(h264).write();
    program.add({bad});
    QCOMPARE(quietLine(program), endedAt(QStringLiteral("b %1.mp4"), 0));
    program.click("btnOpenFolder");
    QCOMPARE(quietLine(program), QString());
    program.add({bad, bad});
    QCOMPARE(quietLine(program), endedAt(QStringLiteral("b %1.mp4"), 1));
    program.add({program.movie(QStringLiteral("a.mp4")).write()});
    QCOMPARE(quietLine(program), QString());
}

void TestRejecting::aLongNameIsCutInTheLine() {
    ControllerFixture program;
    MainWindow& window = program.window();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const int width = window.width();
    const QString name = QString(200, u'n') + QStringLiteral(".mp4");
    program.add({program.movie(name).probe(h264).write()});
    const auto* const line = program.widget<QuietLine>("quietLine");
    QTRY_VERIFY(line->text().contains(QChar(0x2026)));
    QVERIFY(line->fontMetrics().horizontalAdvance(line->text()) <= line->width());
    QVERIFY(line->toolTip().contains(name));
    QCOMPARE(line->accessibleName(), endedAt(name, 0));
    QCOMPARE(window.width(), width);
}

void TestRejecting::rejectedAfterAChangedQuality() {
    ControllerFixture program;
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movie(QStringLiteral("b.mp4")).write()});
    FileList& files = program.files();
    files.setCmb(0, files.cmbItems[2]);
    files.setCmb(1, files.cmbItems[0]);
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("c.mp4")).probe(h264).write()});
    // Kept: the entry of the row above goes and the rejected movie's takes its place.
    QCOMPARE(files.cmb, (QStringList{files.cmbItems[2], files.cmbItems[1]}));
    QVERIFY(areInStep(files));
}

void TestRejecting::goneBeforeItWasRead() {
    ControllerFixture program;
    program.boxes.promise(1000);
    program.add({program.movie(QStringLiteral("a.mp4")).write(),
                 program.movies() + QStringLiteral("/gone.mp4"), program.movies()});
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.state().itemId, qint64{3});
}

void TestRejecting::aSizeThatCannotBeRead_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("damaged") << QByteArray(
        "  Stream #0:0[0x1](und): Video: hevc (hvc1 / 0x31637668), none(progressive), 1729 kb/s, "
        "25 fps");
    QTest::newRow("no size, a rate")
        << QByteArray("  Stream #0:0: Video: hevc (Main), yuv420p(tv), 25 fps, 90k tbn");
    // Nothing to convert them to: a size is even.
    QTest::newRow("no size at all") << QByteArray("  Stream #0:0: Video: hevc (Main), yuv420p(tv)");
    QTest::newRow("no pixels") << QByteArray("  Stream #0:0: Video: hevc (Main), yuv444p(tv), 0x0");
    QTest::newRow("a pixel wide") << QByteArray(
        "  Stream #0:0: Video: hevc (Rext), yuv444p(tv), 1x480, 25 fps");
    QTest::newRow("a pixel high") << QByteArray(
        "  Stream #0:0: Video: hevc (Rext), yuv444p(tv), 640x1, 25 fps");
}

void TestRejecting::aSizeThatCannotBeRead() {
    QFETCH(QByteArray, line);
    ControllerFixture program;
    const QByteArray print =
        "print   Duration: 00:00:05.00, start: 0.0, bitrate: 9 kb/s\\n" + line + "\\n";
    const QString damaged =
        program.movie(QStringLiteral("a.mp4")).probeSteps({print.constData()}).write();
    const QString good = program.movie(QStringLiteral("b.mp4")).write();
    program.boxes.promise(1000);
    program.add({damaged, good});
    // It ends the add, but not without a word.
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
    QCOMPARE(program.files().rowCount(), 0);
    QVERIFY(areInStep(program.files()));
    QCOMPARE(program.files().progressObjects.size(), size_t{1});
    QCOMPARE(program.state().itemId, qint64{1});

    program.add({good});
    QVERIFY(areInStep(program.files()));
    program.boxes.promise(1000);
    QVERIFY(program.runToEnd());
    QVERIFY(QFile::exists(program.output(QStringLiteral("b_HQ_640x480.mp4"))));
}

void TestRejecting::aSizeThatCannotBeReadAmongOthers() {
    ControllerFixture program;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString damaged =
        program.movie(QStringLiteral("b.mp4"))
            .probeSteps({"print   Duration: 00:00:05.00, start: 0\\n  Stream #0:0: Video: hevc "
                         "(Main), none(progressive), 1729 kb/s\\n"})
            .write();
    program.boxes.promise(1000);
    program.add({good, damaged, good});
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(quietLine(program), endedAt(QStringLiteral("b.mp4"), 1));
    QCOMPARE(program.files().idList, (std::vector<int>{1}));
    QVERIFY(areInStep(program.files()));
    // The row that was complete is there and shown.
    const auto* const table = program.widget<FileTableView>("theTableNew");
    QCOMPARE(table->model()->rowCount(), 1);
    QCOMPARE(table->model()->index(0, 1).data().toString(), QStringLiteral("a.mp4"));
    QCOMPARE(program.state().count, qint64{1});
}

void TestRejecting::removableVolumeRefused() {
    ControllerFixture program;
    const QString card = program.path(QStringLiteral("card"));
    QVERIFY(QDir().mkpath(card));
    program.volumes.table[card] = {true, QStringLiteral("msdos")};
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    const QString onCard = ScriptedMovie(card, QStringLiteral("c.mp4")).write();
    program.boxes.promise(1000);
    program.add({good, good, onCard, good, good});
    QCOMPARE(program.boxes.seen.size(), 1);
    // The user's own Cancel needs no word.
    QCOMPARE(quietLine(program), QString());
    QCOMPARE(program.boxes.seen[0].message,
             QString(text("IDS_TXT_SDCARD_DELAY") + u'\n' + text("IDS_TXT_CONTINUE")));
    QCOMPARE(program.boxes.seen[0].buttons,
             (QStringList{text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_POPUP_OK")}));
    QCOMPARE(program.boxes.seen[0].checkBox, text("IDS_TXT_POPUP_DOFORERROR"));
    // The first two are in, the third used up an id, the others were not looked at.
    QCOMPARE(program.files().idList, (std::vector<int>{1, 2}));
    QCOMPARE(program.state().itemId, qint64{3});
    QVERIFY(areInStep(program.files()));
    QCOMPARE(program.starts().size(), 4);
    // It was asked about the folder, not about the movie.
    const QList<QString> asked = program.volumes.asked();
    QCOMPARE(std::set<QString>(asked.begin(), asked.end()),
             (std::set<QString>{program.movies(), card}));
}

void TestRejecting::removableVolumeTaken() {
    ControllerFixture program;
    program.volumes.table[program.movies()] = {true, QString()};
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1001);
    program.boxes.promise(1001);
    program.add({good, good});
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.files().rowCount(), 2);
    QVERIFY(!program.state().checkStatusForSdCardDelay);
}

void TestRejecting::removableVolumeAnswerSticks() {
    ControllerFixture program;
    program.volumes.table[program.movies()] = {true, QString()};
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1001, true);
    program.add({good, good, good});
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(program.files().rowCount(), 3);
    QVERIFY(program.state().checkStatusForSdCardDelay);
    QCOMPARE(program.state().resultStoredForSdCardDelay, 1001);
}

void TestRejecting::everyPanelAsksAfresh() {
    ControllerFixture program;
    program.volumes.table[program.movies()] = {true, QString()};
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    for (int i = 1; i <= 2; ++i) {
        program.boxes.promise(1001, true);
        oncePanelOpen([&](QFileDialog& panel) {
            panel.setDirectory(program.movies());
            QTRY_VERIFY(selectNames(panel, {QStringLiteral("a.mp4")}));
            confirmPanel(panel);
        });
        program.click("btnAddFile");
        QCOMPARE(program.boxes.seen.size(), i);
        QCOMPARE(program.files().rowCount(), i);
    }
    // A drop takes over what was remembered.
    program.drop({good});
    QCOMPARE(program.boxes.seen.size(), 2);
    QCOMPARE(program.files().rowCount(), 3);
}

void TestRejecting::aStoredAnswerAsksNothing_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("rows");
    QTest::newRow("cancel") << 1000 << 0;
    QTest::newRow("go on") << 1001 << 2;
    QTest::newRow("none was ever given") << 0 << 2;
}

void TestRejecting::aStoredAnswerAsksNothing() {
    QFETCH(int, answer);
    QFETCH(int, rows);
    ControllerFixture program;
    program.volumes.table[program.movies()] = {true, QString()};
    program.state().checkStatusForSdCardDelay = true;
    program.state().resultStoredForSdCardDelay = answer;
    const QString good = program.movie(QStringLiteral("a.mp4")).write();
    program.add({good, good});
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.files().rowCount(), rows);
    QCOMPARE(program.state().itemId, qint64{rows == 0 ? 1 : 2});
    QCOMPARE(program.starts().isEmpty(), rows == 0);
}

REELSHIFT_TEST(tst_rejecting, TestRejecting, QApplication)
#include "tst_rejecting.moc"
