#include "TestProgram.h"
#include "convert/PartialOutput.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    QCOMPARE(output.path(), path(QStringLiteral("a.mp4")));
    QVERIFY(!output.exists());
    write(output.path(), {});
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
    QVERIFY(!output.exists());
}

void TestPartialOutput::fileThatNeverAppearsIsNot() {
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    output.remove();
    QVERIFY(!output.exists());
}

void TestPartialOutput::untouchedOlderFileStays() {
    write(path(QStringLiteral("a.mp4")), "older");
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::readingAnOlderFileIsNoChange() {
    write(path(QStringLiteral("a.mp4")), "older");
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    QFile file(output.path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("older"));
    QVERIFY(!output.exists());
}

void TestPartialOutput::longerFileIsPartial() {
    write(path(QStringLiteral("a.mp4")), "older");
    setTime(path(QStringLiteral("a.mp4")), 1000);
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    write(output.path(), "older and more");
    setTime(output.path(), 1000);
    QVERIFY(output.exists());
}

void TestPartialOutput::sameSizeAtAnotherTimeIsPartial() {
    write(path(QStringLiteral("a.mp4")), "older");
    setTime(path(QStringLiteral("a.mp4")), 1000);
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    write(output.path(), "newer");
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
}

void TestPartialOutput::sameSizeAndTimeInAnotherFileIsPartial() {
    write(path(QStringLiteral("a.mp4")), "older");
    setTime(path(QStringLiteral("a.mp4")), 1000);
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    // Made before the older one goes, so that it is another inode.
    write(path(QStringLiteral("b.mp4")), "newer");
    setTime(path(QStringLiteral("b.mp4")), 1000);
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(QFile::rename(path(QStringLiteral("b.mp4")), output.path()));
    QVERIFY(output.exists());
}

void TestPartialOutput::fileInPlaceOfTheNotedOneStays() {
    const PartialOutput output(path(QStringLiteral("a.mp4")));
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
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    write(output.path(), "some");
    output.note();
    write(output.path(), "some and more");
    QVERIFY(output.exists());
    QVERIFY(output.judge());
    output.remove();
    QVERIFY(!QFile::exists(output.path()));
}

void TestPartialOutput::vanishedFileIsNone() {
    write(path(QStringLiteral("a.mp4")), "older");
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(!output.exists());
    output.remove();
}

void TestPartialOutput::folderIsNeverPartial() {
    const PartialOutput output(path(QStringLiteral("a.mp4")));
    QVERIFY(QDir().mkdir(output.path()));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::folderIsMissing() {
    const PartialOutput output(path(QStringLiteral("missing/a.mp4")));
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
    write(path(QStringLiteral("source.mp4")), "source");
    const PartialOutput output(path(QStringLiteral("out.mp4")));
    QVERIFY(QFile::link(path(QStringLiteral("source.mp4")), output.path()));
    QVERIFY(!output.exists());
    output.remove();
    QVERIFY(QFile::exists(path(QStringLiteral("source.mp4"))));
    QVERIFY(QFile::exists(output.path()));
}

void TestPartialOutput::fileBehindADanglingLinkIsPartial() {
    QVERIFY(QFile::link(path(QStringLiteral("elsewhere.mp4")), path(QStringLiteral("out.mp4"))));
    const PartialOutput output(path(QStringLiteral("out.mp4")));
    QVERIFY(!output.exists());
    write(output.path(), "partial");
    QVERIFY(output.exists());
    output.remove();
    QVERIFY(!QFile::exists(path(QStringLiteral("elsewhere.mp4"))));
    QVERIFY(!output.exists());
}

void TestPartialOutput::changedFileBehindALinkIsPartial() {
    write(path(QStringLiteral("elsewhere.mp4")), "older");
    QVERIFY(QFile::link(path(QStringLiteral("elsewhere.mp4")), path(QStringLiteral("out.mp4"))));
    const PartialOutput output(path(QStringLiteral("out.mp4")));
    output.remove();
    QVERIFY(QFile::exists(path(QStringLiteral("elsewhere.mp4"))));
    write(output.path(), "partial");
    output.remove();
    QVERIFY(!QFile::exists(path(QStringLiteral("elsewhere.mp4"))));
}

void TestPartialOutput::linkPutInPlaceOfAnOlderFileStays() {
    write(path(QStringLiteral("source.mp4")), "source");
    write(path(QStringLiteral("out.mp4")), "older");
    const PartialOutput output(path(QStringLiteral("out.mp4")));
    QVERIFY(QFile::remove(output.path()));
    QVERIFY(QFile::link(path(QStringLiteral("source.mp4")), output.path()));
    output.remove();
    QVERIFY(QFile::exists(path(QStringLiteral("source.mp4"))));
}

void TestPartialOutput::sameFileThroughEveryName() {
    const QString file = path(QStringLiteral("a.mp4"));
    write(file, "movie");
    QVERIFY(isSameFile(file, file));
    QCOMPARE(::link(QFile::encodeName(file).constData(),
                    QFile::encodeName(path(QStringLiteral("hard.mp4"))).constData()),
             0);
    QVERIFY(isSameFile(file, path(QStringLiteral("hard.mp4"))));
    QVERIFY(QFile::link(file, path(QStringLiteral("soft.mp4"))));
    QVERIFY(isSameFile(path(QStringLiteral("soft.mp4")), file));
    QVERIFY(isSameFile(path(QStringLiteral("soft.mp4")), path(QStringLiteral("hard.mp4"))));
    QVERIFY(QDir().mkdir(path(QStringLiteral("sub"))));
    QVERIFY(isSameFile(path(QStringLiteral("sub/../a.mp4")), file));
}

void TestPartialOutput::differentFilesAreDifferent() {
    write(path(QStringLiteral("a.mp4")), "movie");
    write(path(QStringLiteral("b.mp4")), "movie");
    QVERIFY(!isSameFile(path(QStringLiteral("a.mp4")), path(QStringLiteral("b.mp4"))));
    QVERIFY(!isSameFile(path(QStringLiteral("a.mp4")), path(QStringLiteral("missing.mp4"))));
    QVERIFY(!isSameFile(path(QStringLiteral("missing.mp4")), path(QStringLiteral("missing.mp4"))));
    QVERIFY(!isSameFile({}, {}));
    QVERIFY(QFile::link(path(QStringLiteral("missing.mp4")), path(QStringLiteral("dangling.mp4"))));
    QVERIFY(!isSameFile(path(QStringLiteral("dangling.mp4")), path(QStringLiteral("missing.mp4"))));
}

REELSHIFT_TEST(tst_partialoutput, TestPartialOutput, NoApplication)
#include "tst_partialoutput.moc"
