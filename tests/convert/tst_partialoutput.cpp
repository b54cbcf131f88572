#include "TestProgram.h"
#include "convert/PartialOutput.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Only what an unfinished encoder has made or changed may be deleted.
class TestPartialOutput final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void noPathIsNoOutput();
    void fileThatAppearsIsPartial();
    void fileThatNeverAppearsIsNot();
    void untouchedOlderFileStays();
    void readingAnOlderFileIsNoChange();
    void longerFileIsPartial();
    void sameSizeAtAnotherTimeIsPartial();
    void sameSizeAndTimeInAnotherFileIsPartial();
    void fileInPlaceOfTheNotedOneStays();
    void notedFileIsPartialAsItGrows();
    void vanishedFileIsNone();
    void folderIsNeverPartial();
    void folderIsMissing();
    void oddNames_data();
    void oddNames();
    void linkThatAppearsStaysWithItsFile();
    void fileBehindADanglingLinkIsPartial();
    void changedFileBehindALinkIsPartial();
    void linkPutInPlaceOfAnOlderFileStays();
    void sameFileThroughEveryName();
    void differentFilesAreDifferent();

private:
    [[nodiscard]] QString path(const QString& name) const { return folder_->filePath(name); }
    static void write(const QString& path, const QByteArray& bytes);
    static void setTime(const QString& path, time_t seconds);

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestPartialOutput::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestPartialOutput::write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

void TestPartialOutput::setTime(const QString& path, time_t seconds) {
    const std::array<timespec, 2> times{timespec{seconds, 0}, timespec{seconds, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0), 0);
}

void TestPartialOutput::noPathIsNoOutput() {
    const PartialOutput output;
    QVERIFY(output.path().isEmpty());
    QVERIFY(!output.exists());
    output.remove();
}

void TestPartialOutput::fileThatAppearsIsPartial() {
    const PartialOutput output(path(u"a.mp4"_s));
    QCOMPARE(output.path(), path(u"a.mp4"_s));
    QVERIFY(!output.exists());
    write(output.path(), {});
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
    QVERIFY(!output.exists());
}

void TestPartialOutput::fileThatNeverAppearsIsNot() {
    const PartialOutput output(path(u"a.mp4"_s));
    output.remove();
    QVERIFY(!output.exists());
}

void TestPartialOutput::untouchedOlderFileStays() {
    write(path(u"a.mp4"_s), "older");
    const PartialOutput output(path(u"a.mp4"_s));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::readingAnOlderFileIsNoChange() {
    write(path(u"a.mp4"_s), "older");
    const PartialOutput output(path(u"a.mp4"_s));
    QFile file(output.path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("older"));
    QVERIFY(!output.exists());
}

void TestPartialOutput::longerFileIsPartial() {
    write(path(u"a.mp4"_s), "older");
    setTime(path(u"a.mp4"_s), 1000);
    const PartialOutput output(path(u"a.mp4"_s));
    write(output.path(), "older and more");
    setTime(output.path(), 1000);
    QVERIFY(output.exists());
}

void TestPartialOutput::sameSizeAtAnotherTimeIsPartial() {
    write(path(u"a.mp4"_s), "older");
    setTime(path(u"a.mp4"_s), 1000);
    const PartialOutput output(path(u"a.mp4"_s));
    write(output.path(), "newer");
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
}

void TestPartialOutput::sameSizeAndTimeInAnotherFileIsPartial() {
    write(path(u"a.mp4"_s), "older");
    setTime(path(u"a.mp4"_s), 1000);
    const PartialOutput output(path(u"a.mp4"_s));
    // Made before the older one goes, so that it is another inode.
    write(path(u"b.mp4"_s), "newer");
    setTime(path(u"b.mp4"_s), 1000);
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(QFile::rename(path(u"b.mp4"_s), output.path()));
    QVERIFY(output.exists());
}

void TestPartialOutput::fileInPlaceOfTheNotedOneStays() {
    const PartialOutput output(path(u"a.mp4"_s));
    QFile encoders(output.path()); // open until its encoder ends
    QVERIFY(encoders.open(QIODevice::WriteOnly));
    output.note();
    QVERIFY(QFile::remove(output.path()));
    write(output.path(), "others");
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(!output.judge());
    output.remove();
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::notedFileIsPartialAsItGrows() {
    const PartialOutput output(path(u"a.mp4"_s));
    write(output.path(), "some");
    output.note();
    write(output.path(), "some and more");
    QVERIFY(output.exists());
    QVERIFY(output.judge());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
}

void TestPartialOutput::vanishedFileIsNone() {
    write(path(u"a.mp4"_s), "older");
    const PartialOutput output(path(u"a.mp4"_s));
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(!output.exists());
    output.remove();
}

void TestPartialOutput::folderIsNeverPartial() {
    const PartialOutput output(path(u"a.mp4"_s));
    QVERIFY(QDir().mkdir(output.path()));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::folderIsMissing() {
    const PartialOutput output(path(u"missing/a.mp4"_s));
    QVERIFY(!output.exists());
    output.remove();
}

void TestPartialOutput::oddNames_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"a b.mp4", "new\nline.mp4", "-y.mp4", "\u00e9\u4e2d.mp4", "a'\"$x.mp4",
                             "a:b|c*.mp4", "%1.mp4"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestPartialOutput::oddNames() {
    QFETCH(const QString, name);
    const PartialOutput output(path(name));
    write(output.path(), "partial");
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(QDir(folder_->path()).isEmpty());
}

void TestPartialOutput::linkThatAppearsStaysWithItsFile() {
    write(path(u"source.mp4"_s), "source");
    const PartialOutput output(path(u"out.mp4"_s));
    QVERIFY(QFile::link(path(u"source.mp4"_s), output.path()));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(path(u"source.mp4"_s)));
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::fileBehindADanglingLinkIsPartial() {
    QVERIFY(QFile::link(path(u"elsewhere.mp4"_s), path(u"out.mp4"_s)));
    const PartialOutput output(path(u"out.mp4"_s));
    QVERIFY(!output.exists());
    write(output.path(), "partial");
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(path(u"elsewhere.mp4"_s)));
    QVERIFY(!output.exists());
}

void TestPartialOutput::changedFileBehindALinkIsPartial() {
    write(path(u"elsewhere.mp4"_s), "older");
    QVERIFY(QFile::link(path(u"elsewhere.mp4"_s), path(u"out.mp4"_s)));
    const PartialOutput output(path(u"out.mp4"_s));
    output.remove();
    QVERIFY(QFile::exists(path(u"elsewhere.mp4"_s)));
    write(output.path(), "partial");
    output.remove();
    QVERIFY(!QFile::exists(path(u"elsewhere.mp4"_s)));
}

void TestPartialOutput::linkPutInPlaceOfAnOlderFileStays() {
    write(path(u"source.mp4"_s), "source");
    write(path(u"out.mp4"_s), "older");
    const PartialOutput output(path(u"out.mp4"_s));
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(QFile::link(path(u"source.mp4"_s), output.path()));
    output.remove();
    QVERIFY(QFile::exists(path(u"source.mp4"_s)));
}

void TestPartialOutput::sameFileThroughEveryName() {
    const QString file = path(u"a.mp4"_s);
    write(file, "movie");
    QVERIFY(isSameFile(file, file));
    QCOMPARE(::link(QFile::encodeName(file).constData(),
                    QFile::encodeName(path(u"hard.mp4"_s)).constData()),
             0);
    QVERIFY(isSameFile(file, path(u"hard.mp4"_s)));
    QVERIFY(QFile::link(file, path(u"soft.mp4"_s)));
    QVERIFY(isSameFile(path(u"soft.mp4"_s), file));
    QVERIFY(isSameFile(path(u"soft.mp4"_s), path(u"hard.mp4"_s)));
    QVERIFY(QDir().mkdir(path(u"sub"_s)));
    QVERIFY(isSameFile(path(u"sub/../a.mp4"_s), file));
}

void TestPartialOutput::differentFilesAreDifferent() {
    write(path(u"a.mp4"_s), "movie");
    write(path(u"b.mp4"_s), "movie");
    QVERIFY(!isSameFile(path(u"a.mp4"_s), path(u"b.mp4"_s)));
    QVERIFY(!isSameFile(path(u"a.mp4"_s), path(u"missing.mp4"_s)));
    QVERIFY(!isSameFile(path(u"missing.mp4"_s), path(u"missing.mp4"_s)));
    QVERIFY(!isSameFile({}, {}));
    QVERIFY(QFile::link(path(u"missing.mp4"_s), path(u"dangling.mp4"_s)));
    QVERIFY(!isSameFile(path(u"dangling.mp4"_s), path(u"missing.mp4"_s)));
}

REELSHIFT_TEST(tst_partialoutput, TestPartialOutput, NoApplication)
#include "tst_partialoutput.moc"
