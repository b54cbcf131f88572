#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/Drops.h"
#include "filelist/FolderMovies.h"
#include "filelist/ProgressObject.h"
#include "platform/MainThread.h"
#include "table/RowDrag.h"
#include "widgets/QuietLine.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QSignalSpy>
#include <QSysInfo>

/// Movies and other things that other programs drop on the table.
class TestDrop final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void moviesAreAdded();
    void anyTypeOfFileIsLookedInto();
    void twoOfThreeAreNotHevc();
    void theFirstOfAnEmptyListIsNotHevc();
    void aChangedQualityStaysWithItsRow();
    void aRememberedCancelAddsNothing();
    void aRememberedOkIsNotAskedAgain();
    void anAnswerForAllIsRememberedForTheNextDrop();
    void theThirdOfFiveIsRefused();
    void neverAMove_data();
    void neverAMove();
    void theDropReturnsBeforeTheAddBegins();
    void textAddsNothing();
    void unknownTypesAreIgnored();
    void addressesThatNameNoFile_data();
    void addressesThatNameNoFile();
    void filesOfThisMachineByName();
    void foldersAndMissingFiles();
    void aFolderStandsForItsMovies();
    void aFolderWithoutMoviesSaysSo();
    void whatWasToBeSaidOfAFolderGoesWithItsAdd();
    void aThousandAtOnce();
    void duringTheAddTheNextDropIsPutOff();
    void aRunThatBeganMeanwhileRefuses();
    void underABoxNothingIsAdded();
    void theWholeTableIsMarked();

private:
    static QStringList shownNames(ControllerFixture& program);
};

namespace {

QString notHevc(ControllerFixture& program, const QString& name) {
    return program.movie(name).probe(QStringLiteral("h264")).write();
}

QString countText(int count) {
    return getLocalString("IDS_TXT_FILELIST") % QStringLiteral("  (%1)").arg(count);
}

} // namespace

QStringList TestDrop::shownNames(ControllerFixture& program) {
    const auto* const model = program.widget<FileTableView>("theTableNew")->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row)
        names += model->index(row, 1).data().toString();
    return names;
}

void TestDrop::moviesAreAdded() {
    ControllerFixture program;
    const QString a = program.movie(QStringLiteral("a b.mp4")).write();
    const QString b = program.movie(QStringLiteral("100 % \u00e4\u6f22.mp4")).write();
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QCOMPARE(Drop::ofFiles(program, {a, b, a}).behindTheRows(), moviesAnswers);
    QVERIFY(settle(program));
    FileList& files = program.files();
    QCOMPARE(files.rowCount(), 3);
    QCOMPARE(files.recordAt(1)->text(key::srcpath), b);
    QCOMPARE(files.idList, (std::vector<int>{1, 2, 3}));
    QCOMPARE(files.arrayControllerNew, files.fileInfoArr);
    QCOMPARE(shownNames(program), namesOf(files.fileInfoArr));
    QVERIFY(isWaiting(0, program));
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QCOMPARE(program.widget<QLabel>("fileList")->text(), countText(3));
    QVERIFY(program.widget<QAbstractButton>("btnSelectAll")->isChecked());
    QVERIFY(QFile::exists(a) && QFile::exists(b));
}

void TestDrop::anyTypeOfFileIsLookedInto() {
    ControllerFixture program;
    const QStringList paths{program.movie(QStringLiteral("a.MOV")).write(),
                            program.movie(QStringLiteral("b.mkv")).write(),
                            program.movie(QStringLiteral("c")).write()};
    Drop::ofFiles(program, paths).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(shownNames(program),
             (QStringList{QStringLiteral("a.MOV"), QStringLiteral("b.mkv"), QStringLiteral("c")}));
}

void TestDrop::twoOfThreeAreNotHevc() {
    ControllerFixture program;
    const QStringList paths{notHevc(program, QStringLiteral("a.mp4")),
                            program.movie(QStringLiteral("b.mp4")).write(),
                            notHevc(program, QStringLiteral("c.mp4"))};
    program.boxes.promise(okAnswer);
    Drop::ofFiles(program, paths).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_UNSUPPORTED"}));
    QCOMPARE(program.boxes.seen[0].buttons, textsOf({"IDS_BTN_POPUP_OK"}));
    QCOMPARE(shownNames(program), QStringList(QStringLiteral("b.mp4")));
    QCOMPARE(program.state().itemId, 3);
    QCOMPARE(program.files().idList, std::vector<int>{2});
    QCOMPARE(program.files().progressObjects.size(), size_t(3)); // kept: with stray entries
    QCOMPARE(program.widget<QLabel>("fileList")->text(), countText(1));
    // The next drop tells it anew.
    program.boxes.promise(okAnswer);
    Drop::ofFiles(program, {paths[0]}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.seen.size(), 2);
}

// Add File ends silently there; a drop takes each list's own last entry and goes on.
void TestDrop::theFirstOfAnEmptyListIsNotHevc() {
    ControllerFixture program;
    program.boxes.promise(okAnswer);
    Drop::ofFiles(program, {notHevc(program, QStringLiteral("a.mp4"))}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_UNSUPPORTED"}));
    const FileList& files = program.files();
    QVERIFY(files.fileInfoArr.empty() && files.idList.empty() && files.check.empty());
    QVERIFY(files.cmb.isEmpty());
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled()); // kept
}

void TestDrop::aChangedQualityStaysWithItsRow() {
    ControllerFixture program;
    addMovies(program, 1);
    program.files().setCmb(0, program.files().cmbItems[2]);
    program.boxes.promise(okAnswer);
    Drop::ofFiles(program, {notHevc(program, QStringLiteral("z.mp4"))}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.files().cmb, QStringList(program.files().cmbItems[2]));
}

void TestDrop::aRememberedCancelAddsNothing() {
    ControllerFixture program;
    addMovies(program, 2);
    QCOMPARE(Drop::ofRows(program, {1}).at({40, 1}), takenAnswers);
    QVERIFY(settle(program));
    program.volumes.table[program.movies()].removable = true;
    program.state().checkStatusForSdCardDelay = true;
    program.state().resultStoredForSdCardDelay = 1000;
    program.widget<QWidget>("btnRemoveFile")->setEnabled(false);
    const auto probes = program.starts().size();
    const QString movie = program.movie(QStringLiteral("c.mp4")).write();
    QCOMPARE(Drop::ofFiles(program, {movie, movie}).behindTheRows(), moviesAnswers);
    QVERIFY(settle(program));
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.starts().size(), probes);
    QCOMPARE(program.files().rowCount(), 2);
    QCOMPARE(program.state().itemId, 3); // the refused one has used up an id
    // The shown rows are rebuilt all the same, and Remove File is enabled.
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("b.mp4"), QStringLiteral("a.mp4")}));
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
}

void TestDrop::aRememberedOkIsNotAskedAgain() {
    ControllerFixture program;
    program.volumes.table[program.movies()].removable = true;
    program.state().checkStatusForSdCardDelay = true;
    program.state().resultStoredForSdCardDelay = 1001;
    Drop::ofFiles(program, {program.movie(QStringLiteral("a.mp4")).write()}).behindTheRows();
    QVERIFY(settle(program));
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(program.state().checkStatusForSdCardDelay);
}

void TestDrop::anAnswerForAllIsRememberedForTheNextDrop() {
    ControllerFixture program;
    program.volumes.table[program.movies()].removable = true;
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    program.boxes.promise(1001, true);
    Drop::ofFiles(program, {movie}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.seen.size(), 1);
    Drop::ofFiles(program, {movie, movie}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.seen.size(), 1); // a drop never clears the mark
    QCOMPARE(program.files().rowCount(), 3);
}

void TestDrop::theThirdOfFiveIsRefused() {
    ControllerFixture program;
    QStringList paths;
    for (const QString& name : {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("card"),
                                QStringLiteral("4"), QStringLiteral("5")}) {
        const QString folder = program.path(name);
        QVERIFY(QDir().mkpath(folder));
        paths += ScriptedMovie(folder, name + u".mp4").write();
    }
    program.volumes.table[program.path(QStringLiteral("card"))].removable = true;
    program.boxes.promise(1000);
    Drop::ofFiles(program, paths).behindTheRows();
    QVERIFY(settle(program));
    QVERIFY(program.boxes.allKept());
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("1.mp4"), QStringLiteral("2.mp4")}));
    QCOMPARE(program.state().itemId, 3);
    for (const QString& folder : {QStringLiteral("4"), QStringLiteral("5")})
        QVERIFY(!program.volumes.asked().contains(program.path(folder)));
    for (const EncoderStart& each : program.starts())
        QVERIFY(!each.arguments.contains(paths[2]) && !each.arguments.contains(paths[3]) &&
                !each.arguments.contains(paths[4]));
}

void TestDrop::neverAMove_data() {
    QTest::addColumn<int>("offered");
    QTest::addColumn<bool>("isAdded");
    QTest::newRow("move alone") << int(Qt::MoveAction) << false;
    QTest::newRow("link alone") << int(Qt::LinkAction) << false;
    QTest::newRow("move or link") << int(Qt::MoveAction | Qt::LinkAction) << false;
    QTest::newRow("copy alone") << int(Qt::CopyAction) << true;
    QTest::newRow("all") << int(everyAction | Qt::TargetMoveAction) << true;
}

void TestDrop::neverAMove() {
    QFETCH(const int, offered);
    QFETCH(const bool, isAdded);
    ControllerFixture program;
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    Drop drop = Drop::ofFiles(program, {movie});
    drop.offered = Qt::DropActions(offered);
    QCOMPARE(drop.behindTheRows(), isAdded ? moviesAnswers : DropAnswers());
    QVERIFY(settle(program));
    QCOMPARE(program.files().rowCount(), isAdded ? 1 : 0);
    QVERIFY(QFile::exists(movie));
    // Nor rows and text.
    for (const QString& type : {draggedRowsType, QStringLiteral("text/plain")}) {
        Drop other = Drop::of(program, type, archiveRows({}));
        other.offered = Qt::DropActions(offered);
        QCOMPARE(other.behindTheRows(), isAdded ? takenAnswers : DropAnswers());
    }
    QVERIFY(settle(program));
}

void TestDrop::theDropReturnsBeforeTheAddBegins() {
    ControllerFixture program;
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    Drop::ofFiles(program, {movie}).behindTheRows();
    QCOMPARE(program.state().itemId, 0);
    QVERIFY(program.starts().isEmpty());
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    // What was offered is gone when the work begins.
    QTRY_COMPARE(program.files().rowCount(), 1);
    QVERIFY(settle(program));
}

void TestDrop::textAddsNothing() {
    ControllerFixture program;
    addMovies(program, 1);
    program.widget<QWidget>("btnRemoveFile")->setEnabled(false);
    const auto* const model = program.widget<FileTableView>("theTableNew")->model();
    const QSignalSpy reloads(model, &QAbstractItemModel::dataChanged);
    const QString movie = program.movie(QStringLiteral("b.mp4")).write();
    QCOMPARE(Drop::of(program, QStringLiteral("text/plain"), movie.toUtf8()).behindTheRows(),
             takenAnswers);
    QVERIFY(settle(program));
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.state().itemId, 1);
    QVERIFY(!reloads.isEmpty());
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestDrop::unknownTypesAreIgnored() {
    ControllerFixture program;
    Drop drop = Drop::of(program, QStringLiteral("image/png"), "\x89PNG");
    QCOMPARE(drop.behindTheRows(), DropAnswers());
    QVERIFY(settle(program));
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled()); // it did not come so far
    QVERIFY(!program.rowDrag().acceptDrop(*drop.mime, 0));
    QVERIFY(settle(program));
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled()); // and nothing else
    QCOMPARE(program.state().itemId, 0);
}

void TestDrop::addressesThatNameNoFile_data() {
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("http") << QByteArray("http://example.org/a.mp4\r\nhttps://example.org/b.mp4");
    QTest::newRow("another machine") << QByteArray("file://elsewhere.example/home/u/a.mp4\r\n");
    QTest::newRow("sftp") << QByteArray("sftp://localhost/a.mp4\r\n");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a comment") << QByteArray("# nothing\r\n");
    QTest::newRow("no address") << QByteArray("\xff\xfe\0\x01garbage\r\n\r\n:::", 19);
    QTest::newRow("no path") << QByteArray("file://\r\nfile:\r\n");
    QTest::newRow("no whole path") << QByteArray("file:a.mp4\r\na.mp4\r\n");
    QTest::newRow("a zero in the path") << QByteArray("file:///etc/hostname%00.mp4\r\n");
}

void TestDrop::addressesThatNameNoFile() {
    QFETCH(const QByteArray, list);
    ControllerFixture program;
    addMovies(program, 1);
    QCOMPARE(Drop::of(program, QStringLiteral("text/uri-list"), list).behindTheRows().drop,
             Qt::IgnoreAction);
    // A web browser offers the address as text, too.
    Drop both = Drop::of(program, QStringLiteral("text/uri-list"), list);
    both.mime->setData(QStringLiteral("text/plain"), list);
    QCOMPARE(both.behindTheRows(), takenAnswers);
    QVERIFY(settle(program));
    QCOMPARE(program.state().itemId, 1);
    QCOMPARE(program.files().rowCount(), 1);
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestDrop::filesOfThisMachineByName() {
    ControllerFixture program;
    const QByteArray path = QUrl::fromLocalFile(program.movie(QStringLiteral("a.mp4")).write())
                                .path(QUrl::FullyEncoded)
                                .toUtf8();
    const QByteArray list = "http://example.org/x.mp4\r\nfile://localhost" + path + "\r\nfile://" +
                            QSysInfo::machineHostName().toUtf8() + path + "\r\nfile:" + path;
    Drop::of(program, QStringLiteral("text/uri-list"), list).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("a.mp4"), QStringLiteral("a.mp4"),
                                               QStringLiteral("a.mp4")}));
}

void TestDrop::foldersAndMissingFiles() {
    ControllerFixture program;
    addMovies(program, 1);
    const QString empty = program.path(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    writeContent(program.path(QStringLiteral("movies/text.mp4")), "no movie");
    const QStringList paths{empty, program.path(QStringLiteral("nowhere.mp4")),
                            program.path(QStringLiteral("movies/text.mp4")),
                            QStringLiteral("/dev/null"),
                            program.movie(QStringLiteral("z.mp4")).write()};
    program.boxes.promise(okAnswer);
    QCOMPARE(Drop::ofFiles(program, paths).behindTheRows(), moviesAnswers);
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_UNSUPPORTED"}));
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("a.mp4"), QStringLiteral("z.mp4")}));
    QVERIFY(QFile::exists(paths[2]));
}

void TestDrop::aFolderStandsForItsMovies() {
    ControllerFixture program;
    const QString folder = program.path(QStringLiteral("holidays"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/2")));
    QVERIFY(!ScriptedMovie(folder, QStringLiteral("10.mp4")).write().isEmpty());
    QVERIFY(!ScriptedMovie(folder, QStringLiteral("9.mp4")).write().isEmpty());
    QVERIFY(
        !ScriptedMovie(folder + QStringLiteral("/2"), QStringLiteral("x.mkv")).write().isEmpty());
    writeContent(folder + QStringLiteral("/notes.txt"), "not looked at");
    const QString before = program.movie(QStringLiteral("a.mp4")).write();
    Drop::ofFiles(program, {before, folder}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("a.mp4"), QStringLiteral("x.mkv"),
                                               QStringLiteral("9.mp4"), QStringLiteral("10.mp4")}));
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(), QString());
}

void TestDrop::aFolderWithoutMoviesSaysSo() {
    ControllerFixture program;
    const QString folder = program.path(QStringLiteral("papers"));
    QVERIFY(QDir().mkpath(folder));
    writeContent(folder + QStringLiteral("/notes.txt"), "no movie");
    Drop::ofFiles(program, {folder}).behindTheRows();
    QVERIFY(settle(program));
    QCOMPARE(program.widget<QuietLine>("quietLine")->line(), text("IDS_TXT_NO_MOVIES_IN_FOLDER"));
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(program.state().itemId, 0);
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
}

void TestDrop::whatWasToBeSaidOfAFolderGoesWithItsAdd() {
    ControllerFixture program;
    const QString sizeless = program.movie(QStringLiteral("0.mp4"))
                                 .probe(QStringLiteral("hevc"), QStringLiteral("none"))
                                 .write();
    for (int number = 1; number <= FolderMovies::most; ++number)
        writeContent(program.movies() % QStringLiteral("/%1.mp4").arg(number), QByteArray());
    program.boxes.promise(okAnswer);
    program.drop({program.movies()});
    const auto line = [&] { return program.widget<QuietLine>("quietLine")->line(); };
    QVERIFY(line().startsWith(text("IDS_TXT_ADD_ENDED").arg(QStringLiteral("0.mp4"))));
    program.drop({program.movie(QStringLiteral("good.mp4")).write()});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(line(), QString());
}

void TestDrop::aThousandAtOnce() {
    ControllerFixture program;
    QStringList paths;
    for (int i = 0; i < 1000; ++i)
        paths += program.path(QStringLiteral("nowhere%1.mp4").arg(i));
    for (const int at : {0, 500, 1001})
        paths.insert(at, program.movie(QStringLiteral("m%1.mp4").arg(at)).write());
    program.state().probe.duration =
        QStringLiteral("00:00:10.00"); // a movie was converted: one probe each
    program.boxes.promise(okAnswer);
    QCOMPARE(Drop::ofFiles(program, paths).behindTheRows(), moviesAnswers);
    QVERIFY(settle(program));
    QCOMPARE(program.boxes.seen.size(), 1);
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("m0.mp4"), QStringLiteral("m500.mp4"),
                                               QStringLiteral("m1001.mp4")}));
    QCOMPARE(program.state().itemId, 1003);
    QCOMPARE(program.starts().size(), 1003);
}

void TestDrop::duringTheAddTheNextDropIsPutOff() {
    ControllerFixture program;
    const QString slow = program.movie(QStringLiteral("a.mp4"))
                             .probeSteps({"wait-file go", "report video=hevc size=640x480 "
                                                          "duration=00:00:10.00 audio=aac"})
                             .write();
    const QString next = program.movie(QStringLiteral("b.mp4")).write();
    Drop::ofFiles(program, {slow}).behindTheRows();
    bool wasPutOff = false;
    QTimer looks;
    connect(&looks, &QTimer::timeout, this, [&] {
        if (!program.mainThread().isWaiting() || program.starts().isEmpty())
            return;
        looks.stop();
        Drop::ofFiles(program, {next}).behindTheRows();
        QTimer::singleShot(0, this, [&] {
            wasPutOff = program.state().itemId == 1;
            writeContent(program.path(QStringLiteral("movies/go")));
        });
    });
    looks.start(1);
    QTRY_COMPARE(program.files().rowCount(), 2);
    QVERIFY(settle(program));
    QVERIFY(wasPutOff);
    QCOMPARE(shownNames(program), (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
}

void TestDrop::aRunThatBeganMeanwhileRefuses() {
    ControllerFixture program;
    Drop::ofFiles(program, {program.movie(QStringLiteral("a.mp4")).write()}).behindTheRows();
    program.state().isConversionRunning = true; // before the event loop comes to the drop
    QVERIFY(settle(program));
    QCOMPARE(program.state().itemId, 0);
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    program.state().isConversionRunning = false;
}

void TestDrop::underABoxNothingIsAdded() {
    ControllerFixture program;
    const QString movie = program.movie(QStringLiteral("a.mp4")).write();
    QDialog box;
    DropAnswers answers;
    QTimer::singleShot(0, &box, [&] {
        answers = Drop::ofFiles(program, {movie}).behindTheRows();
        QTimer::singleShot(0, &box, &QDialog::reject);
    });
    box.exec();
    QVERIFY(settle(program));
    QCOMPARE(answers.drop, Qt::IgnoreAction);
    QCOMPARE(program.state().itemId, 0);
}

void TestDrop::theWholeTableIsMarked() {
    ControllerFixture program;
    Drop drop = Drop::ofFiles(program, {program.movie(QStringLiteral("a.mp4")).write()});
    const QRgb mark = drop.table.palette().color(QPalette::Highlight).rgb();
    const auto isFramed = [&] {
        const QImage image = drop.table.viewport()->grab().toImage();
        const QPoint center = image.rect().center();
        return image.pixel(center.x(), 1) == mark && image.pixel(1, center.y()) == mark &&
               image.pixel(center.x(), image.height() - 2) == mark &&
               image.pixel(image.width() - 2, center.y()) == mark;
    };
    QVERIFY(!isFramed());
    drop.enter({50, 50});
    QVERIFY(isFramed());
    drop.leave();
    QVERIFY(!isFramed());
    Drop text = Drop::of(program, QStringLiteral("text/plain"), "text");
    text.enter({50, 50});
    QVERIFY(!isFramed());
    text.leave();
}

REELSHIFT_TEST(tst_drop, TestDrop, QApplication)
#include "tst_drop.moc"
