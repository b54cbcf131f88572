#include "TestProgram.h"
#include "update/PartFile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cerrno>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// A file system that lacks the first so many of the ways to move a file without replacing one.
std::atomic<int> lacking = 0;

template <typename Function> Function* original(const char* name) {
    // POSIX lets a pointer to a function come out of dlsym.
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the library's are reserved.
extern "C" {

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    if (lacking >= 1) {
        errno = EINVAL;
        return -1;
    }
    static auto* const next =
        original<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return next(fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) noexcept {
    if (lacking >= 2) {
        errno = EPERM;
        return -1;
    }
    static auto* const next = original<int(const char*, const char*)>("link");
    return next(from, to);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

class TestPartFile final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isHiddenUntilItIsMoved();
    void goesWithItsObject();
    void neverReplaces_data();
    void neverReplaces();
    void saysWhyItCannotBeMoved();

private:
    [[nodiscard]] QString path(const QString& name) const { return folder_->filePath(name); }
    [[nodiscard]] QStringList everything() const {
        return QDir(folder_->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestPartFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
}

void TestPartFile::cleanup() {
    lacking = 0;
}

void TestPartFile::isHiddenUntilItIsMoved() {
    PartFile part;
    part.create(folder_->path());
    part.write("abc");
    QCOMPARE(everything().size(), 1);
    QVERIFY(everything()[0].startsWith(u'.'));
    part.finish();
    QCOMPARE(part.moveTo(path(QStringLiteral("a.deb"))), path(QStringLiteral("a.deb")));
    part.remove();
    QCOMPARE(everything(), {QStringLiteral("a.deb")});
    QCOMPARE(contents(path(QStringLiteral("a.deb"))), QByteArray("abc"));
}

void TestPartFile::goesWithItsObject() {
    {
        PartFile part;
        part.create(folder_->path());
        part.write("abc");
    }
    QVERIFY(everything().isEmpty());
}

void TestPartFile::neverReplaces_data() {
    QTest::addColumn<int>("lacks");
    QTest::newRow("file system that knows how") << 0;
    QTest::newRow("file system that has links only") << 1;
    QTest::newRow("file system that has neither") << 2;
}

void TestPartFile::neverReplaces() {
    QFETCH(int, lacks);
    QFile other(path(QStringLiteral("a.deb")));
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("another's") > 0);
    other.close();
    QVERIFY(QFile::link(QStringLiteral("nowhere"), path(QStringLiteral("a (1).deb"))));
    lacking = lacks;
    PartFile part;
    part.create(folder_->path());
    part.write("ours");
    part.finish();
    QCOMPARE(part.moveTo(other.fileName()), path(QStringLiteral("a (2).deb")));
    QCOMPARE(contents(other.fileName()), QByteArray("another's"));
    QCOMPARE(contents(path(QStringLiteral("a (2).deb"))), QByteArray("ours"));
    QCOMPARE(everything().size(), 3);
}

void TestPartFile::saysWhyItCannotBeMoved() {
    PartFile part;
    part.create(folder_->path());
    part.write("abc");
    part.finish();
    try {
        (void)part.moveTo(path(QStringLiteral("gone/a.deb")));
        QFAIL("It was moved to a folder that is not there");
    } catch (const PartFile::Error& error) {
        QCOMPARE(error.description, QStringLiteral("No such file or directory"));
    }
    part.remove();
    QVERIFY(everything().isEmpty());
}

REELSHIFT_TEST(test_part_file, TestPartFile, NoApplication)
#include "TestPartFile.moc"
