#include "TestProgram.h"
#include "filelist/FileList.h"
#include "filelist/JobRecord.h"
#include "filelist/SharedState.h"
#include "filelist/StatusWords.h"

#include <QCoreApplication>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

using Ids = std::vector<int>;

/// One movie's record, the words in it, and the values beside the list.
class TestJobRecord final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordKeepsItsKeysInOrder();
    void recordWithoutAKey();
    void recordKeysAreCaseSensitive();
    void idIsTheLowHalf();
    void statusWords();
    void idSetKeepsEachOnceInOrder();
    void sharedStateBeginsWithoutAnything();
};

void TestJobRecord::recordKeepsItsKeysInOrder() {
    JobRecord record;
    const std::vector<QString> order{
        key::id,      key::name,          key::srcpath,        key::path,
        key::check,   key::audio,         key::video,          key::duration,
        key::profile, key::profileForCol, key::status,         key::progress,
        key::image,   key::converted,     key::conversionstat, key::cmb};
    for (const QString& each : order)
        record.set(each, each);
    QCOMPARE(record.keys(), order);
    // A new value keeps the place, a new key comes last.
    record.set(key::duration, QStringLiteral("00:00:08.00"));
    record.set(key::audio, QStringLiteral("AAC"));
    record.set(key::resolutionID, 3);
    record.set(key::resolution, QStringLiteral("640x480"));
    std::vector<QString> longer = order;
    longer.push_back(key::resolutionID);
    longer.push_back(key::resolution);
    QCOMPARE(record.keys(), longer);
    QCOMPARE(record.text(key::duration), QStringLiteral("00:00:08.00"));
    QCOMPARE(record.number(key::resolutionID), 3);
}

void TestJobRecord::recordWithoutAKey() {
    const JobRecord record;
    QVERIFY(record.keys().empty());
    QVERIFY(!record.contains(key::progressValue));
    QVERIFY(!record.value(key::progressValue).isValid());
    QCOMPARE(record.text(key::progressValue), QString());
    QCOMPARE(record.number(key::resolutionID), 0);
    QCOMPARE(record.id(), 0);
}

void TestJobRecord::recordKeysAreCaseSensitive() {
    JobRecord record;
    record.set(key::profileForCol, QStringLiteral("a"));
    record.set(QStringLiteral("profileforcol"), QStringLiteral("b"));
    QCOMPARE(record.text(key::profileForCol), QStringLiteral("a"));
    QCOMPARE(record.keys().size(), size_t(2));
    record.set(key::status, QString());
    QVERIFY(record.contains(key::status));
    QVERIFY(!record.contains(QStringLiteral("Status")));
}

void TestJobRecord::idIsTheLowHalf() {
    JobRecord record;
    record.set(key::id, static_cast<int>((qint64{1} << 32) + 5));
    QCOMPARE(record.id(), 5);
}

void TestJobRecord::statusWords() {
    QCOMPARE(status::STATWT, QStringLiteral("Waiting"));
    QCOMPARE(status::STATPS, QStringLiteral("Paused"));
    QCOMPARE(status::STATPR, QStringLiteral("Processing"));
    QCOMPARE(status::STATCO, QStringLiteral("Converted"));
    QCOMPARE(status::STATPW, QStringLiteral("PausedWait"));
    QCOMPARE(status::STATFL, QStringLiteral("Failed"));
    QCOMPARE(status::STATCR, QStringLiteral("Converting"));
    QCOMPARE(status::CONCOMPLETE, QStringLiteral("Complete"));
    QCOMPARE(status::CONRUNNING, QStringLiteral("Running"));
    QCOMPARE(status::CONSTOPPED, QStringLiteral("Stopped"));
}

void TestJobRecord::idSetKeepsEachOnceInOrder() {
    IdSet ids;
    QVERIFY(ids.isEmpty());
    for (const int id : {3, 1, 3, 2, 1})
        ids.add(id);
    QCOMPARE(ids.ids(), Ids({3, 1, 2}));
    QVERIFY(ids.contains(1));
    QVERIFY(!ids.contains(4));
    ids.remove(1);
    ids.remove(4);
    QCOMPARE(ids.ids(), Ids({3, 2}));
    ids.add(1);
    QCOMPARE(ids.ids(), Ids({3, 2, 1}));
    ids.removeAll({1, 5, 3});
    QCOMPARE(ids.ids(), Ids({2}));
    QVERIFY(!ids.contains(3));
    ids.clear();
    QVERIFY(ids.isEmpty());
    QVERIFY(!ids.contains(3));
}

void TestJobRecord::sharedStateBeginsWithoutAnything() {
    const SharedState state;
    QCOMPARE(state.itemId, qint64{0});
    QCOMPARE(state.count, qint64{0});
    QVERIFY(state.outputFolder.isEmpty());
    QCOMPARE(state.convertingIndex, -1);
    QVERIFY(state.isSourceAvailable);
    QVERIFY(!state.isConversionRunning);
    QVERIFY(!state.stopped);
    QVERIFY(!state.error);
    QVERIFY(!state.pausedFileIsDeleted);
    QCOMPARE(state.noOfConvertedFile, 0);
    QVERIFY(state.noOfconvertingFileList.isEmpty());
    QVERIFY(!state.checkStatusForFileConflict);
    QVERIFY(!state.checkStatusForSdCardDelay);
    QCOMPARE(state.second, std::chrono::milliseconds(1000));
}

REELSHIFT_TEST(tst_jobrecord, TestJobRecord, QCoreApplication)
#include "tst_jobrecord.moc"
