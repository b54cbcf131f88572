#include "TestProgram.h"
#include "app/Drops.h"
#include "filelist/ProgressObject.h"
#include "platform/MainThread.h"
#include "table/FileTableColumns.h"
#include "table/RowDrag.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QImage>

#include <algorithm>

/// Rows that are dragged to another place of the list.
class TestRowDrag final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDropBetweenTwoRows_data();
    void aDropBetweenTwoRows();
    void theMarkStandsWhereTheDropGoes();
    void theMarkGoesWithTheDrag();
    void theShownRowsChangeWithTheNextAdd();
    void theRunGoesByTheMovedRecords();
    void aRemovalBringsAllListsInLine_data();
    void aRemovalBringsAllListsInLine();
    void theSummaryTakesTheRightRowsOut();
    void theWorkStartsFromTheEventLoop();
    void brokenDataMovesNothing_data();
    void brokenDataMovesNothing();
    void duringARunNothingMoves();
    void insideAWaitTheDropIsPutOff();
    void rowsThatWentMeanwhileAreNotMoved();
    void underABoxNothingMoves();
    void onlyThePrivateTypeLeavesTheTable();
    void buttonsAreNotDragged();
};

namespace {

int edgeOf(const FileTableView& table, int row) {
    const int last = table.model()->rowCount() - 1;
    return row <= last ? table.rowViewportPosition(row)
                       : table.rowViewportPosition(last) + table.rowHeight(last);
}

/// Heights at which the mark's line is seen.
QList<int> markedHeights(const FileTableView& table) {
    const QImage image = table.viewport()->grab().toImage();
    const QRgb mark = table.palette().color(QPalette::Highlight).rgb();
    QList<int> heights;
    for (int y = 0; y < image.height(); ++y) {
        int marked = 0;
        for (int x = 0; x < image.width(); ++x)
            marked += image.pixel(x, y) == mark ? 1 : 0;
        if (marked > image.width() * 9 / 10)
            heights += y;
    }
    return heights;
}

bool marksEdge(const FileTableView& table, int row) {
    const QList<int> heights = markedHeights(table);
    return !heights.isEmpty() && heights.size() <= 4 &&
           std::all_of(heights.begin(), heights.end(),
                       [&](int y) { return std::abs(y - std::max(edgeOf(table, row), 4)) <= 2; });
}

/// Brings the records into the order in which they are shown.
void putBack(FileList& files) {
    for (int row = 0; row < files.rowCount(); ++row) {
        const auto& records = files.fileInfoArr;
        const auto found =
            std::find(records.begin(), records.end(), files.arrayControllerNew[size_t(row)]);
        files.moveRecords({static_cast<int>(found - records.begin())}, row);
    }
}

} // namespace

void TestRowDrag::aDropBetweenTwoRows_data() {
    QTest::addColumn<std::vector<int>>("rows");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("lowerHalf");
    QTest::addColumn<QString>("order");
    QTest::newRow("the upper half of a row is before it")
        << std::vector<int>{3} << 1 << false << "a d b c";
    QTest::newRow("its lower half is behind it") << std::vector<int>{3} << 1 << true << "a b d c";
    QTest::newRow("above all") << std::vector<int>{3} << 0 << false << "d a b c";
    QTest::newRow("below all") << std::vector<int>{0, 1} << 3 << true << "c d a b";
    QTest::newRow("far below all") << std::vector<int>{0, 1} << 9 << true << "c d a b";
    QTest::newRow("on itself") << std::vector<int>{1, 2} << 1 << true << "a b c d";
}

void TestRowDrag::aDropBetweenTwoRows() {
    QFETCH(const std::vector<int>, rows);
    QFETCH(const int, row);
    QFETCH(const bool, lowerHalf);
    QFETCH(const QString, order);
    ControllerFixture program;
    addMovies(program, 4);
    Drop drop = Drop::ofRows(program, rows);
    const QAbstractItemModelTester tester(drop.table.model());
    const int height = drop.table.rowHeight(0);
    const int y = row * height + (lowerHalf ? height - 2 : 1);
    QCOMPARE(drop.at({40, std::min(y, drop.table.viewport()->height() - 1)}), takenAnswers);
    QVERIFY(settle(program));
    QCOMPARE(namesOf(program.files().fileInfoArr).join(u' ').remove(QStringLiteral(".mp4")), order);
    QCOMPARE(drop.table.model()->rowCount(), 4);
    QVERIFY(program.widget<QWidget>("btnRemoveFile")->isEnabled());
}

void TestRowDrag::theMarkStandsWhereTheDropGoes() {
    ControllerFixture program;
    addMovies(program, 3);
    FileList& files = program.files();
    for (int y = 2; y < 250; y += 9) {
        Drop drop = Drop::ofRows(program, {1});
        QVERIFY(markedHeights(drop.table).isEmpty());
        QCOMPARE(drop.enter({300, y}), Qt::CopyAction);
        QCOMPARE(drop.move({300, y}), Qt::CopyAction);
        int shown = 0;
        while (shown < 3 && !marksEdge(drop.table, shown))
            ++shown;
        QVERIFY2(marksEdge(drop.table, shown), QByteArray::number(y).constData());
        drop.at({300, y});
        QVERIFY(markedHeights(drop.table).isEmpty());
        QVERIFY(settle(program));
        FileList expected;
        for (const JobRecordPtr& record : files.arrayControllerNew)
            expected.append(record, QString());
        expected.moveRecords({1}, shown);
        QCOMPARE(namesOf(files.fileInfoArr), namesOf(expected.fileInfoArr));
        putBack(files);
    }
}

void TestRowDrag::theMarkGoesWithTheDrag() {
    ControllerFixture program;
    addMovies(program, 3);
    Drop drop = Drop::ofRows(program, {0});
    const int height = drop.table.rowHeight(0);
    drop.enter({10, height + 2});
    QVERIFY(marksEdge(drop.table, 1));
    drop.move({10, 3 * height - 2});
    QVERIFY(marksEdge(drop.table, 3));
    drop.leave();
    QVERIFY(markedHeights(drop.table).isEmpty());
    // A drop that the list would refuse has no mark.
    program.state().isConversionRunning = true;
    QCOMPARE(drop.enter({10, height + 2}), Qt::CopyAction);
    QVERIFY(markedHeights(drop.table).isEmpty());
    drop.leave();
    program.state().isConversionRunning = false;
}

// Kept: the reorder moves the records alone. The lists beside and what is shown follow later, or
// not at all.
void TestRowDrag::theShownRowsChangeWithTheNextAdd() {
    ControllerFixture program;
    const QString a = program.movie(QStringLiteral("a.mp4")).write();
    const QString b = program.movie(QStringLiteral("b.mp4"))
                          .probe(QStringLiteral("hevc"), QStringLiteral("1280x720"))
                          .write();
    program.add({a, b});
    FileList& files = program.files();
    auto* const model = program.widget<FileTableView>("theTableNew")->model();
    QVERIFY(model->setData(model->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    files.setCmb(0, files.cmbItems[2]);
    Drop drop = Drop::ofRows(program, {1});
    const auto shownNames = [&] {
        QStringList names;
        for (int row = 0; row < drop.table.model()->rowCount(); ++row)
            names += drop.table.model()->index(row, 1).data().toString();
        return names;
    };
    QCOMPARE(drop.at({40, 1}), takenAnswers);
    QVERIFY(settle(program));

    QCOMPARE(namesOf(files.fileInfoArr),
             (QStringList{QStringLiteral("b.mp4"), QStringLiteral("a.mp4")}));
    QCOMPARE(shownNames(), (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QCOMPARE(files.idList, (std::vector<int>{1, 2}));
    QCOMPARE(files.check, (std::vector<int>{0, 1}));
    QCOMPARE(files.cmb[0], files.cmbItems[2]);
    QCOMPARE(files.resolutionListForTable,
             (QStringList{QStringLiteral("640x480"), QStringLiteral("1280x720")}));
    QVERIFY(!program.widget<QCheckBox>("btnSelectAll")->isChecked());

    program.add({program.movie(QStringLiteral("c.mp4")).write()});
    QCOMPARE(shownNames(), (QStringList{QStringLiteral("b.mp4"), QStringLiteral("a.mp4"),
                                        QStringLiteral("c.mp4")}));
    QCOMPARE(files.check, (std::vector<int>{0, 1, 1}));
    QCOMPARE(files.resolutionListForTable,
             (QStringList{QStringLiteral("640x480"), QStringLiteral("1280x720"),
                          QStringLiteral("640x480")}));
}

// Kept: the queue is filled from the moved records, and each id's row is looked up in the list of
// ids, which has the old order. Every movie is converted once.
void TestRowDrag::theRunGoesByTheMovedRecords() {
    ControllerFixture program;
    const QStringList movies = addMovies(program, 3);
    QCOMPARE(Drop::ofRows(program, {2}).at({40, 1}), takenAnswers);
    QVERIFY(settle(program));
    FileList& files = program.files();
    QCOMPARE(
        namesOf(files.fileInfoArr),
        (QStringList{QStringLiteral("c.mp4"), QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QStringList expected;
    for (const JobRecordPtr& queued : files.fileInfoArr)
        expected += files.recordAt(*files.rowOfId(queued->id()))->text(key::srcpath);
    QCOMPARE(expected, (QStringList{movies[1], movies[2], movies[0]}));
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QStringList converted;
    for (const EncoderStart& each : program.encodes())
        converted += each.arguments[2];
    QCOMPARE(converted, expected);
    QCOMPARE(namesIn(program.documents()).size(), 3);
}

void TestRowDrag::aRemovalBringsAllListsInLine_data() {
    QTest::addColumn<bool>("byButton");
    QTest::newRow("Remove File") << false;
    QTest::newRow("the row's button") << true;
}

void TestRowDrag::aRemovalBringsAllListsInLine() {
    QFETCH(const bool, byButton);
    ControllerFixture program;
    const auto movie = [&](const char* name, const char* size) {
        return program.movie(QString::fromLatin1(name))
            .probe(QStringLiteral("hevc"), QString::fromLatin1(size))
            .write();
    };
    program.add(
        {movie("a.mp4", "640x480"), movie("b.mp4", "1280x720"), movie("c.mp4", "720x1280")});
    FileList& files = program.files();
    auto* const model = program.widget<FileTableView>("theTableNew")->model();
    const int quality = static_cast<int>(TableColumn::Cmb);
    const int size = static_cast<int>(TableColumn::Res);
    QVERIFY(model->setData(model->index(2, quality), files.cmbItems[2], Qt::EditRole));
    QVERIFY(model->setData(model->index(1, size), QStringLiteral("640x360"), Qt::EditRole));
    for (const int row : {1, 2})
        QVERIFY(model->setData(model->index(row, 0), Qt::Unchecked, Qt::CheckStateRole));
    const auto progress = files.progressObjects;
    QCOMPARE(Drop::ofRows(program, {2}).at({40, 1}), takenAnswers);
    QVERIFY(settle(program));
    QCOMPARE(
        namesOf(files.fileInfoArr),
        (QStringList{QStringLiteral("c.mp4"), QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QCOMPARE(files.idList, (std::vector<int>{1, 2, 3}));

    if (byButton)
        program.clickRowButton(0);
    else
        program.click("btnRemoveFile");
    // Kept: the place counts, and in the new order another movie stands there.
    QCOMPARE(namesOf(files.fileInfoArr),
             (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QCOMPARE(files.arrayControllerNew, files.fileInfoArr);
    QCOMPARE(files.idList, (std::vector<int>{1, 2}));
    QCOMPARE(files.check, (std::vector<int>{1, 0}));
    QCOMPARE(files.cmb, (QStringList{files.cmbItems[1], files.cmbItems[1]}));
    QCOMPARE(files.resolutionListForTable,
             (QStringList{QStringLiteral("640x480"), QStringLiteral("640x360")}));
    QVERIFY(files.progressObjects[0] == progress[0] && files.progressObjects[1] == progress[1]);
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("a.mp4"));
    QCOMPARE(model->index(1, size).data().toString(), QStringLiteral("640x360"));

    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(namesIn(program.documents()),
             (QStringList{QStringLiteral("a_HQ_640x480.mp4"), QStringLiteral("b_HQ_640x360.mp4")}));
    QCOMPARE(files.rowCount(), 0);
}

void TestRowDrag::theSummaryTakesTheRightRowsOut() {
    ControllerFixture program;
    addMovies(program, 3);
    QCOMPARE(Drop::ofRows(program, {2}).at({40, 1}), takenAnswers);
    QVERIFY(settle(program));
    FileList& files = program.files();
    files.recordAt(1)->set(key::duration,
                           QStringLiteral("None")); // a.mp4: it is dropped without a word
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(namesOf(files.fileInfoArr), QStringList{QStringLiteral("a.mp4")});
    QCOMPARE(files.idList, std::vector<int>{1});
    QCOMPARE(files.arrayControllerNew, files.fileInfoArr);
    files.recordAt(0)->set(key::duration, QStringLiteral("00:00:10.00"));
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(namesIn(program.documents()).size(), 3);
    QCOMPARE(files.rowCount(), 0);
}

void TestRowDrag::theWorkStartsFromTheEventLoop() {
    ControllerFixture program;
    addMovies(program, 2);
    QCOMPARE(Drop::ofRows(program, {1}).at({40, 1}), takenAnswers);
    QCOMPARE(namesOf(program.files().fileInfoArr),
             (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QTRY_COMPARE(namesOf(program.files().fileInfoArr),
                 (QStringList{QStringLiteral("b.mp4"), QStringLiteral("a.mp4")}));
}

void TestRowDrag::brokenDataMovesNothing_data() {
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("another program's") << QByteArray("bplist00\xd4\x01\x02");
    QTest::newRow("cut") << archiveRows({0, 1}).chopped(1);
    QTest::newRow("too long") << archiveRows({0, 1}) + 'x';
    QTest::newRow("a row behind the end") << archiveRows({0, 3});
    QTest::newRow("a row before the top") << archiveRows({-1, 0});
    QTest::newRow("rows of a longer list") << archiveRows({2147483646, 2147483647});
    QTest::newRow("a row twice") << archiveRows({1, 1});
}

void TestRowDrag::brokenDataMovesNothing() {
    QFETCH(const QByteArray, data);
    ControllerFixture program;
    addMovies(program, 3);
    const auto before = program.files().fileInfoArr;
    Drop drop = Drop::of(program, draggedRowsType, data);
    // Movies beside it are not looked at: the private type comes first.
    drop.mime->setUrls({QUrl::fromLocalFile(program.movie(QStringLiteral("z.mp4")).write())});
    QCOMPARE(drop.at({40, 1}).drop, Qt::IgnoreAction);
    QVERIFY(settle(program));
    QCOMPARE(program.files().fileInfoArr, before);
    QCOMPARE(program.files().arrayControllerNew, before);
    QCOMPARE(program.files().idList.size(), size_t(3));
}

void TestRowDrag::duringARunNothingMoves() {
    ControllerFixture program;
    const QStringList movies{
        program.movie(QStringLiteral("a.mp4"))
            .encode({"create", "header", "progress 5", "wait-file go", "write 10", "summary 10"})
            .write(),
        program.movie(QStringLiteral("b.mp4")).write()};
    program.add(movies);
    program.click("btnConvertFile");
    QTRY_COMPARE(program.files().recordAt(0)->text(key::progressValue), QStringLiteral("50 %"));
    program.widget<QWidget>("btnRemoveFile")->setEnabled(false);
    Drop drop = Drop::ofRows(program, {1});
    QCOMPARE(drop.at({40, 1}), moviesAnswers); // looked welcome, and was refused
    QCOMPARE(Drop::ofFiles(program, {movies[0]}).behindTheRows(), moviesAnswers);
    QCOMPARE(Drop::of(program, QStringLiteral("text/plain"), "text").behindTheRows(),
             moviesAnswers);
    QCoreApplication::processEvents();
    QCOMPARE(namesOf(program.files().fileInfoArr),
             (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
    QCOMPARE(program.state().itemId, 2);
    QVERIFY(!program.widget<QWidget>("btnRemoveFile")->isEnabled());
    program.boxes.promise(okAnswer);
    writeContent(program.path(QStringLiteral("movies/go")));
    QVERIFY(program.waitUntilIdle());
    QCOMPARE(program.encodes().size(), 2);
}

void TestRowDrag::insideAWaitTheDropIsPutOff() {
    ControllerFixture program;
    addMovies(program, 2);
    Drop drop = Drop::ofRows(program, {1});
    bool isOver = false;
    bool wasUntouched = false;
    QTimer::singleShot(0, this, [&] {
        drop.at({40, 1});
        QTimer::singleShot(0, this, [&] {
            wasUntouched = program.files().recordAt(0)->text(key::name) == QStringLiteral("a.mp4");
            isOver = true;
            program.mainThread().wake();
        });
    });
    program.mainThread().waitUntil([&] { return isOver; });
    QVERIFY(wasUntouched);
    QTRY_COMPARE(program.files().recordAt(0)->text(key::name), QStringLiteral("b.mp4"));
}

void TestRowDrag::rowsThatWentMeanwhileAreNotMoved() {
    ControllerFixture program;
    addMovies(program, 3);
    Drop::ofRows(program, {2}).at({40, 1});
    program.clickRowButton(1); // before the event loop comes to the drop
    QVERIFY(settle(program));
    QCOMPARE(namesOf(program.files().fileInfoArr),
             (QStringList{QStringLiteral("a.mp4"), QStringLiteral("c.mp4")}));
}

void TestRowDrag::underABoxNothingMoves() {
    ControllerFixture program;
    addMovies(program, 2);
    Drop drop = Drop::ofRows(program, {1});
    DropAnswers answers;
    QDialog box;
    QTimer::singleShot(0, &box, [&] {
        answers = drop.at({40, 1});
        QTimer::singleShot(0, &box, &QDialog::reject);
    });
    box.exec();
    QVERIFY(settle(program));
    QCOMPARE(answers.drop, Qt::IgnoreAction);
    QCOMPARE(namesOf(program.files().fileInfoArr),
             (QStringList{QStringLiteral("a.mp4"), QStringLiteral("b.mp4")}));
}

void TestRowDrag::onlyThePrivateTypeLeavesTheTable() {
    const auto data = RowDrag::writeRowsWithIndexes({0, 2});
    QCOMPARE(data->formats(), QStringList(QStringLiteral("MyPrivateTableViewDataType")));
    QCOMPARE(unarchiveRows(data->data(draggedRowsType), 3), std::optional(std::vector<int>{0, 2}));
    ControllerFixture program;
    const auto& table = *program.widget<FileTableView>("theTableNew");
    QVERIFY(table.dragEnabled());
    QVERIFY(table.viewport()->acceptDrops());
}

void TestRowDrag::buttonsAreNotDragged() {
    ControllerFixture program;
    addMovies(program, 1);
    const auto* const model = program.widget<FileTableView>("theTableNew")->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        const bool isButton = column == 0 || column == model->columnCount() - 1;
        QCOMPARE(bool(model->index(0, column).flags() & Qt::ItemIsDragEnabled), !isButton);
    }
}

REELSHIFT_TEST(tst_row_drag, TestRowDrag, QApplication)
#include "tst_row_drag.moc"
