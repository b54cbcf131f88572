#include "TestProgram.h"
#include "filelist/FileList.h"
#include "table/DraggedRows.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QTest>

#include <algorithm>
#include <limits>
#include <stdexcept>

using Rows = std::vector<int>;

/// The row numbers that a drag carries, and what they do to the records.
class TestDraggedRows final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goThereAndBack();
    void everyCutIsRefused();
    void everyAdditionIsRefused();
    void brokenDataIsRefused_data();
    void brokenDataIsRefused();
    void everyFlippedBitIsRefusedOrARowOfTheList();
    void recordsAreMoved_data();
    void recordsAreMoved();
    void theListsBesideStayAsTheyAre();
    void aRowOutOfRangeMovesNothing();
};

namespace {

QByteArray archiveOf(quint32 mark, quint32 length, const Rows& rows) {
    QByteArray archive;
    QDataStream stream(&archive, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << mark << length;
    for (const int row : rows)
        stream << static_cast<qint32>(row);
    return archive;
}

/// The head of every archive.
quint32 ownMark() {
    quint32 mark = 0;
    QDataStream(archiveRows({})) >> mark;
    return mark;
}

FileList& fill(FileList& list, int rows) {
    for (int i = 0; i < rows; ++i) {
        const auto record = std::make_shared<JobRecord>();
        record->set(key::id, i);
        list.append(record, QString::number(i));
        list.setCheck(i, i % 2);
        list.appendResolution(QString::number(i));
    }
    list.showRecords();
    return list;
}

Rows idsOf(const std::vector<JobRecordPtr>& records) {
    Rows ids;
    for (const JobRecordPtr& each : records)
        ids.push_back(each->id());
    return ids;
}

} // namespace

void TestDraggedRows::goThereAndBack() {
    for (const Rows& rows : {Rows{}, Rows{0}, Rows{3}, Rows{0, 1, 2, 3}, Rows{1, 3}})
        QCOMPARE(unarchiveRows(archiveRows(rows), 4), std::optional(rows));
    Rows many;
    for (int row = 0; row < 100000; ++row)
        many.push_back(row);
    QCOMPARE(unarchiveRows(archiveRows(many), 100000), std::optional(many));
}

void TestDraggedRows::everyCutIsRefused() {
    const QByteArray archive = archiveRows({0, 2, 5});
    for (qsizetype length = 0; length < archive.size(); ++length)
        QVERIFY(!unarchiveRows(archive.first(length), 6));
}

void TestDraggedRows::everyAdditionIsRefused() {
    const QByteArray archive = archiveRows({0, 2, 5});
    for (const QByteArray& more : {QByteArray(1, '\0'), QByteArray(4, '\0'), archive})
        QVERIFY(!unarchiveRows(archive + more, 6));
}

void TestDraggedRows::brokenDataIsRefused_data() {
    QTest::addColumn<QByteArray>("archive");
    constexpr int most = std::numeric_limits<int>::max();
    const quint32 mark = ownMark();
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("file:///home/u/a.mp4\r\n");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("ones") << QByteArray(4096, '\xff');
    QTest::newRow("another mark") << archiveOf(mark + 1, 1, {0});
    QTest::newRow("the row behind the end") << archiveOf(mark, 1, {4});
    QTest::newRow("far behind the end") << archiveOf(mark, 2, {0, most});
    QTest::newRow("negative") << archiveOf(mark, 1, {-1});
    QTest::newRow("most negative") << archiveOf(mark, 2, {0, std::numeric_limits<int>::min()});
    QTest::newRow("twice") << archiveOf(mark, 2, {1, 1});
    QTest::newRow("descending") << archiveOf(mark, 2, {2, 1});
    QTest::newRow("a length too large") << archiveOf(mark, 3, {0, 1});
    QTest::newRow("a length too small") << archiveOf(mark, 1, {0, 1});
    QTest::newRow("a length without end") << archiveOf(mark, 0xffffffffU, {0, 1});
    QTest::newRow("a length that wraps") << archiveOf(mark, 0x40000001U, {0});
}

void TestDraggedRows::brokenDataIsRefused() {
    QFETCH(const QByteArray, archive);
    QVERIFY(!unarchiveRows(archive, 4));
}

void TestDraggedRows::everyFlippedBitIsRefusedOrARowOfTheList() {
    const QByteArray archive = archiveRows({1, 4, 6});
    for (qsizetype bit = 0; bit < 8 * archive.size(); ++bit) {
        QByteArray flipped = archive;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        const auto rows = unarchiveRows(flipped, 8);
        if (!rows)
            continue;
        QCOMPARE(rows->size(), size_t(3));
        QVERIFY(rows->front() >= 0 && rows->back() < 8);
        QVERIFY(std::is_sorted(rows->begin(), rows->end()));
    }
}

void TestDraggedRows::recordsAreMoved_data() {
    QTest::addColumn<Rows>("rows");
    QTest::addColumn<int>("target");
    QTest::addColumn<Rows>("order");
    QTest::newRow("two to the end") << Rows{0, 1} << 4 << Rows{2, 3, 0, 1};
    QTest::newRow("the last to the top") << Rows{3} << 0 << Rows{3, 0, 1, 2};
    QTest::newRow("one down") << Rows{0} << 2 << Rows{1, 0, 2, 3};
    QTest::newRow("one up") << Rows{2} << 1 << Rows{0, 2, 1, 3};
    QTest::newRow("two that stand apart") << Rows{0, 3} << 2 << Rows{1, 0, 3, 2};
    QTest::newRow("between themselves") << Rows{0, 2} << 1 << Rows{0, 2, 1, 3};
    QTest::newRow("before itself") << Rows{1} << 1 << Rows{0, 1, 2, 3};
    QTest::newRow("behind itself") << Rows{1} << 2 << Rows{0, 1, 2, 3};
    QTest::newRow("all") << Rows{0, 1, 2, 3} << 2 << Rows{0, 1, 2, 3};
    QTest::newRow("none") << Rows{} << 2 << Rows{0, 1, 2, 3};
    QTest::newRow("far behind the end") << Rows{0} << 99 << Rows{1, 2, 3, 0};
    QTest::newRow("before the top") << Rows{2} << -1 << Rows{2, 0, 1, 3};
}

void TestDraggedRows::recordsAreMoved() {
    QFETCH(const Rows, rows);
    QFETCH(const int, target);
    FileList list;
    fill(list, 4).moveRecords(rows, target);
    QTEST(idsOf(list.fileInfoArr), "order");
}

// Kept: who drags rows changes the order of the records and nothing else.
void TestDraggedRows::theListsBesideStayAsTheyAre() {
    FileList list;
    fill(list, 4);
    const auto progress = list.progressObjects;
    list.moveRecords({3}, 0);
    QCOMPARE(list.idList, (Rows{0, 1, 2, 3}));
    QCOMPARE(list.check, (Rows{0, 1, 0, 1}));
    QCOMPARE(list.cmb.join(u' '), QStringLiteral("0 1 2 3"));
    QCOMPARE(list.resolutionListForTable.join(u' '), QStringLiteral("0 1 2 3"));
    QCOMPARE(list.progressObjects, progress);
    QCOMPARE(idsOf(list.arrayControllerNew), (Rows{0, 1, 2, 3}));
}

void TestDraggedRows::aRowOutOfRangeMovesNothing() {
    FileList list;
    fill(list, 4);
    for (const Rows& rows : {Rows{0, 4}, Rows{-1, 0}})
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, list.moveRecords(rows, 2));
    QCOMPARE(idsOf(list.fileInfoArr), (Rows{0, 1, 2, 3}));
}

REELSHIFT_TEST(tst_dragged_rows, TestDraggedRows, QCoreApplication)
#include "tst_dragged_rows.moc"
