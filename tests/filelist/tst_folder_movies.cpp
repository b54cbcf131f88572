#include "TestProgram.h"
#include "filelist/FolderMovies.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// Folders that are dropped, as the movies in them.
class TestFolderMovies final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void filesStayAsTheyAre();
    void sortedAsAFileManagerSorts();
    void byTheirEndings_data();
    void byTheirEndings();
    void aLoopOfLinksEnds();
    void aFolderThatCannotBeRead();
    void noMoreThanTheMost();
    void endsWhenItIsStopped();

private:
    void make(const QString& name) const;
    [[nodiscard]] QString path(const QString& name) const { return folder_->filePath(name); }
    /// Below the folder itself.
    [[nodiscard]] QStringList found() const;

    std::unique_ptr<QTemporaryDir> folder_;
    std::atomic<bool> stop_ = false;
};

void TestFolderMovies::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    stop_ = false;
}

void TestFolderMovies::make(const QString& name) const {
    const QString file = path(name);
    QVERIFY(QDir().mkpath(QFileInfo(file).path()));
    QFile made(file);
    QVERIFY(made.open(QIODevice::WriteOnly));
}

QStringList TestFolderMovies::found() const {
    QStringList names;
    for (const QString& each : moviesOf({folder_->path()}, stop_).paths)
        names += QDir(folder_->path()).relativeFilePath(each);
    return names;
}

void TestFolderMovies::filesStayAsTheyAre() {
    const QStringList paths{QStringLiteral("/nowhere/b.txt"), path(QStringLiteral("gone.mp4")),
                            QStringLiteral("/nowhere/b.txt")};
    const FolderMovies movies = moviesOf(paths, stop_);
    QCOMPARE(movies.paths, paths);
    QVERIFY(!movies.hadFolder);
    QVERIFY(!movies.isCut);
}

void TestFolderMovies::sortedAsAFileManagerSorts() {
    for (const char* name : {"b10.mp4", "b9.mp4", "A1.mov", "sub 2/z.mkv", "sub 10/y.mkv",
                             "sub 2/deeper/x.ts", ".hidden.mp4", ".folder/w.mp4", "notes.txt"})
        make(QString::fromLatin1(name));
    QCOMPARE(found(),
             (QStringList{QStringLiteral("sub 2/deeper/x.ts"), QStringLiteral("sub 2/z.mkv"),
                          QStringLiteral("sub 10/y.mkv"), QStringLiteral("A1.mov"),
                          QStringLiteral("b9.mp4"), QStringLiteral("b10.mp4")}));
    const FolderMovies mixed =
        moviesOf({path(QStringLiteral("b10.mp4")), path(QStringLiteral("sub 10"))}, stop_);
    QCOMPARE(mixed.paths,
             (QStringList{path(QStringLiteral("b10.mp4")), path(QStringLiteral("sub 10/y.mkv"))}));
    QVERIFY(mixed.hadFolder);
}

void TestFolderMovies::byTheirEndings_data() {
    QTest::addColumn<bool>("isMovie");
    for (const char* name : {"a.mp4", "a.M4V", "a.MOV", "a.qt", "a.mkv", "a.ts", "a.MTS", "a.m2ts",
                             "a.hevc", "a.h265", "a.265", "a.b.mp4", "\xc3\xa9.mp4"})
        QTest::newRow(name) << true;
    for (const char* name : {"mp4", ".mp4", "amp4", "a.mp4.part", "a.avi", "a.jpg", "a.", "a265"})
        QTest::newRow(name) << false;
}

void TestFolderMovies::byTheirEndings() {
    QFETCH(bool, isMovie);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    make(name);
    QCOMPARE(found(), isMovie ? QStringList{name} : QStringList());
}

void TestFolderMovies::aLoopOfLinksEnds() {
    make(QStringLiteral("sub/a.mp4"));
    QVERIFY(QFile::link(folder_->path(), path(QStringLiteral("sub/up"))));
    QVERIFY(QFile::link(path(QStringLiteral("sub")), path(QStringLiteral("twin"))));
    QVERIFY(QFile::link(path(QStringLiteral("sub/a.mp4")), path(QStringLiteral("b.mp4"))));
    QVERIFY(QFile::link(path(QStringLiteral("gone")), path(QStringLiteral("gone.mp4"))));
    QCOMPARE(found(), (QStringList{QStringLiteral("sub/a.mp4"), QStringLiteral("b.mp4")}));
    // Named twice it stands for its movies once.
    QCOMPARE(moviesOf({folder_->path(), folder_->path()}, stop_).paths.size(), 2);
}

void TestFolderMovies::aFolderThatCannotBeRead() {
    const FolderMovies movies = moviesOf({QStringLiteral("/proc/self/fd/999999")}, stop_);
    QCOMPARE(movies.paths.size(), 1); // no folder: whoever adds it says so
    QVERIFY(!movies.hadFolder);
}

void TestFolderMovies::noMoreThanTheMost() {
    QStringList paths;
    for (qsizetype at = 0; at < FolderMovies::most; ++at)
        paths += QStringLiteral("/nowhere/%1.mp4").arg(at);
    QVERIFY(!moviesOf(paths, stop_).isCut);
    make(QStringLiteral("a.mp4"));
    const FolderMovies movies = moviesOf(paths + QStringList{folder_->path()}, stop_);
    QVERIFY(movies.isCut);
    QCOMPARE(movies.paths, paths);
}

void TestFolderMovies::endsWhenItIsStopped() {
    make(QStringLiteral("a.mp4"));
    stop_ = true;
    QVERIFY(found().isEmpty());
}

REELSHIFT_TEST(tst_folder_movies, TestFolderMovies, QCoreApplication)
#include "tst_folder_movies.moc"
