#include "TestProgram.h"
#include "filelist/FileList.h"
#include "filelist/ListObserver.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"

#include <QCoreApplication>
#include <QTest>

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QString standard = QStringLiteral("standard");

/// What an add does before the movie is examined.
JobRecordPtr begin(FileList& files, int id) {
    const auto record = std::make_shared<JobRecord>();
    record->set(key::id, id);
    record->set(key::name, QStringLiteral("%1.mp4").arg(id));
    files.append(record, standard);
    return record;
}

/// A movie that was accepted and is shown.
JobRecordPtr add(FileList& files, int id) {
    const JobRecordPtr record = begin(files, id);
    files.appendResolution(QStringLiteral("%1x%1").arg(id));
    files.show(record);
    return record;
}

void enqueueAll(FileList& files, std::initializer_list<int> ids) {
    for (const int id : ids)
        files.enqueue(id);
}

std::vector<int> recordIds(const std::vector<JobRecordPtr>& records) {
    std::vector<int> ids;
    for (const JobRecordPtr& record : records)
        ids.push_back(record->id());
    return ids;
}

using Ids = std::vector<int>;

} // namespace

/// The list of movies and the lists beside it.
class TestFileList final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordIsShared();
    void beginsEmpty();
    void appendGrowsItsThreeLists();
    void rowIsCompleteWithTheLastList();
    void lookUpById();
    void lookUpAfterAReorder();
    void rowsOutOfRange_data();
    void rowsOutOfRange();
    void allCheckedNeedsARow();
    void rejectedPickTakesTheEntryBeforeTheLast();
    void rejectedPickOfAnEmptyListIsOutOfRange();
    void rejectedPickLeavesItsProgressRecord();
    void rejectedDropTakesItsOwnEntries();
    void rejectedDropOfAnEmptyList();
    void rejectionOfNothingIsOutOfRange();
    void trimBringsTheListsBack();
    void trimOfListsInStepChangesNothing();
    void removalTakesARowOutOfEverything();
    void removalFromTheLastToTheFirst();
    void removalOfSeveralIsTheSameAsOneByOne();
    void removalOfSeveralOutOfRangeChangesNothing();
    void removalAfterAReorderGoesByPosition();
    void removalAfterAStrayProgressRecord();
    void removalWithShortLists();
    void removalOutOfRangeChangesNothing();
    void whoShowsItHearsOfChanges();
    void aRowThatIsNotShownInItsPlaceShowsAllAnew();
    void dequeue();
    void dequeueHead();
};

void TestFileList::recordIsShared() {
    FileList files;
    const JobRecordPtr record = add(files, 1);
    record->set(key::status, status::STATPR);
    QCOMPARE(files.recordAt(0)->text(key::status), QStringLiteral("Processing"));
    QCOMPARE(files.arrayControllerNew.front()->text(key::status), QStringLiteral("Processing"));
    QCOMPARE(files.recordWithId(1)->text(key::status), QStringLiteral("Processing"));
}

void TestFileList::beginsEmpty() {
    const FileList files;
    QCOMPARE(files.rowCount(), 0);
    QCOMPARE(files.completeRows(), 0);
    QVERIFY(!files.allChecked());
    QVERIFY(!files.recordWithId(0));
    QVERIFY(!files.rowOfId(0));
    QVERIFY(files.name.isEmpty());
    QVERIFY(files.conversionTaskList.empty());
    QVERIFY(files.convertedFileList.empty());
    QVERIFY(files.pausedList.empty());
    QVERIFY(files.filePausedId.empty());
}

void TestFileList::appendGrowsItsThreeLists() {
    FileList files;
    const auto record = std::make_shared<JobRecord>();
    record->set(key::id, 7);
    files.append(record, standard);
    QCOMPARE(files.rowCount(), 1);
    QCOMPARE(files.recordAt(0), record);
    QCOMPARE(files.idList, Ids({7}));
    QCOMPARE(files.progressObjects.size(), size_t(1));
    QCOMPARE(files.progressObjects[0]->currentStep(), qint64{0});
    QCOMPARE(files.check, Ids({1}));
    QCOMPARE(files.cmb, QStringList(standard));
    // The rest comes when the movie was examined.
    QVERIFY(files.resolutionListForTable.isEmpty());
    QVERIFY(files.arrayControllerNew.empty());
    QVERIFY(files.conversionTaskList.empty());
}

void TestFileList::rowIsCompleteWithTheLastList() {
    FileList files;
    add(files, 1);
    QCOMPARE(files.completeRows(), 1);
    const JobRecordPtr second = begin(files, 2);
    QCOMPARE(files.rowCount(), 2);
    QCOMPARE(files.completeRows(), 1);
    files.appendResolution(QStringLiteral("640x480"));
    QCOMPARE(files.completeRows(), 1);
    files.show(second);
    QCOMPARE(files.completeRows(), 2);
}

void TestFileList::lookUpById() {
    FileList files;
    const JobRecordPtr first = add(files, 1);
    const JobRecordPtr third = add(files, 3);
    QCOMPARE(files.recordWithId(1), first);
    QCOMPARE(files.recordWithId(3), third);
    QVERIFY(!files.recordWithId(2));
    QVERIFY(!files.recordWithId(-1));
    QCOMPARE(files.rowOfId(3), std::optional(1));
    QVERIFY(!files.rowOfId(2));
}

void TestFileList::lookUpAfterAReorder() {
    FileList files;
    add(files, 1);
    add(files, 2);
    files.moveRecords({1}, 0);
    // Kept: a reorder moves the records alone, so the id's place is the old one.
    QCOMPARE(files.recordWithId(1), files.fileInfoArr[1]);
    QCOMPARE(files.rowOfId(1), std::optional(0));
}

void TestFileList::rowsOutOfRange_data() {
    QTest::addColumn<int>("row");
    for (const int row :
         {-1, -2, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QTest::addRow("%d", row) << row;
}

void TestFileList::rowsOutOfRange() {
    QFETCH(const int, row);
    FileList files;
    add(files, 1);
    add(files, 2);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)files.recordAt(row));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.removeRow(row));
}

void TestFileList::allCheckedNeedsARow() {
    FileList files;
    QVERIFY(!files.allChecked());
    add(files, 1);
    add(files, 2);
    QVERIFY(files.allChecked());
    files.setCheck(1, 0);
    QVERIFY(!files.allChecked());
    // Anything but 0 counts as checked.
    files.setCheck(1, -1);
    QVERIFY(files.allChecked());
}

void TestFileList::rejectedPickTakesTheEntryBeforeTheLast() {
    FileList files;
    add(files, 1);
    add(files, 2);
    files.setCmb(0, QStringLiteral("first"));
    files.setCmb(1, QStringLiteral("changed"));
    begin(files, 3);
    files.dropRejectedPicked();
    QCOMPARE(recordIds(files.fileInfoArr), Ids({1, 2}));
    QCOMPARE(files.idList, Ids({1, 2}));
    QCOMPARE(files.check, Ids({1, 1}));
    // Kept: the row above loses its quality and gets the rejected movie's default.
    QCOMPARE(files.cmb, QStringList({QStringLiteral("first"), standard}));
}

void TestFileList::rejectedPickOfAnEmptyListIsOutOfRange() {
    FileList files;
    const JobRecordPtr first = begin(files, 1);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.dropRejectedPicked());
    QCOMPARE(files.rowCount(), 0);
    QVERIFY(files.check.empty());
    QCOMPARE(files.cmb, QStringList(standard));
    QCOMPARE(files.idList, Ids({1}));
    files.undoAppend(first);
    QVERIFY(files.cmb.isEmpty());
    QVERIFY(files.idList.empty());
    QCOMPARE(files.progressObjects.size(), size_t(1));
}

void TestFileList::rejectedPickLeavesItsProgressRecord() {
    FileList files;
    add(files, 1);
    begin(files, 2);
    files.dropRejectedPicked();
    add(files, 3);
    QCOMPARE(files.idList, Ids({1, 3}));
    QCOMPARE(files.rowCount(), 2);
    QCOMPARE(files.progressObjects.size(), size_t(3));
    QCOMPARE(files.resolutionListForTable,
             QStringList({QStringLiteral("1x1"), QStringLiteral("3x3")}));
    QCOMPARE(files.completeRows(), 2);
}

void TestFileList::rejectedDropTakesItsOwnEntries() {
    FileList files;
    add(files, 1);
    files.setCmb(0, QStringLiteral("changed"));
    begin(files, 2);
    files.dropRejectedDropped();
    QCOMPARE(files.cmb, QStringList(QStringLiteral("changed")));
    QCOMPARE(files.idList, Ids({1}));
    QCOMPARE(files.check, Ids({1}));
    QCOMPARE(files.rowCount(), 1);
    QCOMPARE(files.progressObjects.size(), size_t(2));
}

void TestFileList::rejectedDropOfAnEmptyList() {
    FileList files;
    begin(files, 1);
    files.dropRejectedDropped();
    QCOMPARE(files.rowCount(), 0);
    QVERIFY(files.check.empty());
    QVERIFY(files.cmb.isEmpty());
    QVERIFY(files.idList.empty());
    QCOMPARE(files.progressObjects.size(), size_t(1));
}

void TestFileList::rejectionOfNothingIsOutOfRange() {
    FileList files;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.dropRejectedPicked());
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.dropRejectedDropped());
    QCOMPARE(files.rowCount(), 0);
}

void TestFileList::trimBringsTheListsBack() {
    FileList files;
    add(files, 1);
    const JobRecordPtr second = begin(files, 2);
    files.appendResolution(QStringLiteral("half-built"));
    files.undoAppend(second);
    QCOMPARE(files.idList, Ids({1}));
    QCOMPARE(files.check, Ids({1}));
    QCOMPARE(files.cmb, QStringList(standard));
    QCOMPARE(files.resolutionListForTable, QStringList(QStringLiteral("1x1")));
    QCOMPARE(files.progressObjects.size(), size_t(2));
    QCOMPARE(files.completeRows(), 1);
}

void TestFileList::trimOfListsInStepChangesNothing() {
    FileList files;
    add(files, 1);
    const JobRecordPtr second = add(files, 2);
    files.undoAppend(second); // it is shown
    QCOMPARE(files.completeRows(), 2);
    QCOMPARE(files.idList, Ids({1, 2}));
    FileList empty;
    empty.undoAppend(second);
    QCOMPARE(empty.rowCount(), 0);
}

void TestFileList::removalTakesARowOutOfEverything() {
    FileList files;
    for (const int id : {1, 2, 3})
        add(files, id);
    files.setCheck(2, 0);
    files.setCmb(2, QStringLiteral("third"));
    enqueueAll(files, {3, 2, 1, 2});
    files.noteConverted(2);
    const auto third = files.progressObjects[2];
    files.removeRow(1);
    QCOMPARE(recordIds(files.fileInfoArr), Ids({1, 3}));
    QCOMPARE(recordIds(files.arrayControllerNew), Ids({1, 3}));
    QCOMPARE(files.idList, Ids({1, 3}));
    QCOMPARE(files.check, Ids({1, 0}));
    QCOMPARE(files.cmb, QStringList({standard, QStringLiteral("third")}));
    QCOMPARE(files.resolutionListForTable,
             QStringList({QStringLiteral("1x1"), QStringLiteral("3x3")}));
    QCOMPARE(files.progressObjects.size(), size_t(2));
    QCOMPARE(files.progressObjects[1], third);
    QCOMPARE(files.conversionTaskList, Ids({3, 1}));
    QCOMPARE(files.convertedFileList, Ids({2}));
    QCOMPARE(files.completeRows(), 2);
}

void TestFileList::removalFromTheLastToTheFirst() {
    FileList files;
    for (int id = 1; id <= 5; ++id)
        add(files, id);
    for (const int row : {4, 2, 0})
        files.removeRow(row);
    QCOMPARE(recordIds(files.fileInfoArr), Ids({2, 4}));
    QCOMPARE(files.idList, Ids({2, 4}));
    QCOMPARE(files.resolutionListForTable,
             QStringList({QStringLiteral("2x2"), QStringLiteral("4x4")}));
    files.removeRow(1);
    files.removeRow(0);
    QCOMPARE(files.rowCount(), 0);
    QCOMPARE(files.completeRows(), 0);
    QVERIFY(files.progressObjects.empty());
    QVERIFY(!files.allChecked());
}

void TestFileList::removalOfSeveralIsTheSameAsOneByOne() {
    const auto fill = [](FileList& files) {
        begin(files, 9);
        files.dropRejectedDropped(); // leaves a stray progress record
        for (int id = 1; id <= 6; ++id)
            add(files, id);
        begin(files, 7); // has no size and is not shown yet
        files.moveRecords({4}, 1);
        files.moveRecords({2}, 5); // the second and the fifth have changed places
        files.setCheck(3, 0);
        files.setCmb(3, QStringLiteral("fourth"));
        enqueueAll(files, {7, 2, 5, 3, 6, 1, 5});
    };
    FileList files;
    FileList other;
    fill(files);
    fill(other);
    const std::vector<std::shared_ptr<ProgressObject>> progress = files.progressObjects;
    files.removeRows({1, 6, 2, 4});
    for (const int row : {6, 4, 2, 1})
        other.removeRow(row);
    QCOMPARE(recordIds(files.fileInfoArr), Ids({1, 4, 6}));
    QCOMPARE(recordIds(files.fileInfoArr), recordIds(other.fileInfoArr));
    QCOMPARE(recordIds(files.arrayControllerNew), recordIds(other.arrayControllerNew));
    QCOMPARE(files.idList, other.idList);
    QCOMPARE(files.check, other.check);
    QCOMPARE(files.cmb, other.cmb);
    QCOMPARE(files.resolutionListForTable, other.resolutionListForTable);
    QCOMPARE(files.progressObjects,
             (decltype(progress){progress[0], progress[3], progress[5], progress[7]}));
    QCOMPARE(files.conversionTaskList, Ids({6, 1}));
    QCOMPARE(files.conversionTaskList, other.conversionTaskList);
    files.removeRows({});
    QCOMPARE(files.rowCount(), 3);
}

void TestFileList::removalOfSeveralOutOfRangeChangesNothing() {
    FileList files;
    add(files, 1);
    add(files, 2);
    enqueueAll(files, {1, 2});
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.removeRows({0, 2}));
    QCOMPARE(files.completeRows(), 2);
    QCOMPARE(files.conversionTaskList, Ids({1, 2}));
}

void TestFileList::removalAfterAReorderGoesByPosition() {
    FileList files;
    add(files, 1);
    add(files, 2);
    enqueueAll(files, {1, 2});
    files.moveRecords({1}, 0);
    // Kept: each list loses what stands there, the queue loses the moved record's id.
    files.removeRow(0);
    QCOMPARE(recordIds(files.fileInfoArr), Ids({1}));
    QCOMPARE(files.idList, Ids({2}));
    QCOMPARE(recordIds(files.arrayControllerNew), Ids({2}));
    QCOMPARE(files.conversionTaskList, Ids({1}));
}

void TestFileList::removalAfterAStrayProgressRecord() {
    FileList files;
    begin(files, 1);
    files.dropRejectedDropped();
    add(files, 2);
    const auto own = files.progressObjects[1];
    files.removeRow(0);
    // Kept: the stray record goes in place of the row's own.
    QCOMPARE(files.progressObjects.size(), size_t(1));
    QCOMPARE(files.progressObjects[0], own);
}

void TestFileList::removalWithShortLists() {
    FileList files;
    add(files, 1);
    begin(files, 2);
    // A row that is still examined can go as well.
    files.removeRow(1);
    QCOMPARE(recordIds(files.fileInfoArr), Ids({1}));
    QCOMPARE(files.resolutionListForTable, QStringList(QStringLiteral("1x1")));
    QCOMPARE(recordIds(files.arrayControllerNew), Ids({1}));
    QCOMPARE(files.completeRows(), 1);
}

void TestFileList::removalOutOfRangeChangesNothing() {
    FileList files;
    add(files, 1);
    files.enqueue(1);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.removeRow(1));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, files.removeRow(-1));
    QCOMPARE(files.completeRows(), 1);
    QCOMPARE(files.conversionTaskList, Ids({1}));
}

namespace {

class Notes final : public ListObserver {
public:
    QStringList notes;

    void reload() override { notes += QStringLiteral("all"); }
    void rowsWereAdded() override { notes += QStringLiteral("more"); }
    void rowChanged(int row) override { notes += QStringLiteral("row %1").arg(row); }
    void rowsWereRemoved(std::vector<int> rows) override {
        for (const int row : rows)
            notes += QStringLiteral("without %1").arg(row);
    }
};

} // namespace

void TestFileList::whoShowsItHearsOfChanges() {
    FileList files;
    files.rowChanged(0); // nobody shows it
    Notes observer;
    files.setObserver(&observer);
    for (const int id : {1, 2, 3})
        add(files, id);
    QCOMPARE(std::exchange(observer.notes, {}),
             (QStringList{QStringLiteral("more"), QStringLiteral("more"), QStringLiteral("more")}));
    files.rowChanged(1);
    files.removeRows({2, 0});
    files.reload();
    QCOMPARE(observer.notes, (QStringList{QStringLiteral("row 1"), QStringLiteral("without 2"),
                                          QStringLiteral("without 0"), QStringLiteral("all")}));
}

void TestFileList::aRowThatIsNotShownInItsPlaceShowsAllAnew() {
    FileList files;
    for (const int id : {1, 2, 3})
        add(files, id);
    Notes observer;
    files.setObserver(&observer);
    files.moveRecords({1}, 0);
    files.rowChanged(1);
    files.rowChanged(2);
    files.rowChanged(3);
    QCOMPARE(observer.notes,
             (QStringList{QStringLiteral("all"), QStringLiteral("row 2"), QStringLiteral("all")}));
}

void TestFileList::dequeue() {
    FileList files;
    files.dequeue(1);
    enqueueAll(files, {1, 2, 1, 3});
    files.dequeue(1);
    QCOMPARE(files.conversionTaskList, Ids({2, 3}));
    files.dequeue(4);
    QCOMPARE(files.conversionTaskList, Ids({2, 3}));
}

void TestFileList::dequeueHead() {
    FileList files;
    files.dequeueHead(1);
    QVERIFY(files.conversionTaskList.empty());
    enqueueAll(files, {1, 2, 1});
    files.dequeueHead(2);
    QCOMPARE(files.conversionTaskList, Ids({1, 2, 1}));
    files.dequeueHead(1);
    QCOMPARE(files.conversionTaskList, Ids({2, 1}));
}

REELSHIFT_TEST(tst_filelist, TestFileList, QCoreApplication)
#include "tst_filelist.moc"
