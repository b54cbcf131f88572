#include "TestProgram.h"
#include "convert/FileTime.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <sys/mount.h>
#include <sys/stat.h>

/// The time of a file's last change, read from one and given to another.
class TestFileTime final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isTakenOverExactly_data();
    void isTakenOverExactly();
    void leavesTheTimeOfTheLastReadAlone();
    void goesToTheFileBehindALink();
    void nothingThere();
    void aVolumeThatIsReadOnly();

private:
    [[nodiscard]] QString made(const QString& name) const;
    [[nodiscard]] static struct stat factsOf(const QString& path);

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileTime::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

QString TestFileTime::made(const QString& name) const {
    QFile file(folder_->filePath(name));
    return file.open(QIODevice::WriteOnly) ? file.fileName() : QString();
}

struct stat TestFileTime::factsOf(const QString& path) {
    struct stat facts {};
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0)
        qFatal("%s is not there", qPrintable(path));
    return facts;
}

void TestFileTime::isTakenOverExactly_data() {
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<qint64>("nanoseconds");
    QTest::newRow("long ago") << qint64{1'234'567'890} << qint64{0};
    QTest::newRow("a part of a second") << qint64{1'234'567'890} << qint64{123'456'789};
    QTest::newRow("just before the next") << qint64{1'234'567'890} << qint64{999'999'999};
    QTest::newRow("in the future") << qint64{4'000'000'000} << qint64{1};
    QTest::newRow("the beginning") << qint64{0} << qint64{0};
    QTest::newRow("before the beginning") << qint64{-86'400} << qint64{500'000'000};
}

void TestFileTime::isTakenOverExactly() {
    QFETCH(const qint64, seconds);
    QFETCH(const qint64, nanoseconds);
    const QString source = made(QStringLiteral("source \u00e9\n.mp4"));
    const QString output = made(QStringLiteral("output.mp4"));
    QVERIFY(setModificationTime(source, {seconds, nanoseconds}));
    const auto time = modificationTime(source);
    QVERIFY(time);
    QVERIFY(setModificationTime(output, *time));
    QCOMPARE(qint64{factsOf(output).st_mtim.tv_sec}, seconds);
    QCOMPARE(qint64{factsOf(output).st_mtim.tv_nsec}, nanoseconds);
}

void TestFileTime::leavesTheTimeOfTheLastReadAlone() {
    const QString output = made(QStringLiteral("output.mp4"));
    const timespec before = factsOf(output).st_atim;
    QVERIFY(setModificationTime(output, {1'234'567'890, 0}));
    QCOMPARE(factsOf(output).st_atim.tv_sec, before.tv_sec);
    QCOMPARE(factsOf(output).st_atim.tv_nsec, before.tv_nsec);
}

void TestFileTime::goesToTheFileBehindALink() {
    const QString output = made(QStringLiteral("output.mp4"));
    const QString link = folder_->filePath(QStringLiteral("link.mp4"));
    QVERIFY(QFile::link(output, link));
    QVERIFY(setModificationTime(link, {1'234'567'890, 0}));
    QCOMPARE(qint64{factsOf(output).st_mtim.tv_sec}, qint64{1'234'567'890});
}

void TestFileTime::nothingThere() {
    QVERIFY(!modificationTime(folder_->filePath(QStringLiteral("gone.mp4"))));
    QVERIFY(!modificationTime(QString()));
    QVERIFY(!setModificationTime(folder_->filePath(QStringLiteral("gone.mp4")), {1, 0}));
    QCOMPARE(errno, ENOENT);
    QVERIFY(!QFile::exists(folder_->filePath(QStringLiteral("gone.mp4"))));
    QVERIFY(!setModificationTime(QString(), {1, 0}));
}

void TestFileTime::aVolumeThatIsReadOnly() {
    const QByteArray folder = QFile::encodeName(folder_->path());
    if (::mount("none", folder.constData(), "tmpfs", 0, "size=64k") != 0)
        QSKIP("no volume can be mounted here");
    const auto unmount = qScopeGuard([&] { ::umount2(folder.constData(), MNT_DETACH); });
    const QString output = made(QStringLiteral("output.mp4"));
    QCOMPARE(::mount("none", folder.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    QVERIFY(!setModificationTime(output, {1, 0}));
    QCOMPARE(errno, EROFS);
    QVERIFY(modificationTime(output));
}

REELSHIFT_TEST(tst_filetime, TestFileTime, NoApplication)
#include "tst_filetime.moc"
