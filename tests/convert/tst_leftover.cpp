#include "TestProgram.h"
#include "convert/Leftover.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr qint64 launched = 1'700'000'000;
constexpr qint64 lastAlive = launched + 100;

QByteArray box(const char* type, const QByteArray& content, quint32 length = 0) {
    if (length == 0)
        length = static_cast<quint32>(content.size()) + 8;
    QByteArray head;
    for (int shift = 24; shift >= 0; shift -= 8)
        head += static_cast<char>(length >> shift);
    return head + type + content;
}

const QByteArray start = box("ftyp", "isom0000isomavc1mp41") + box("free", {});
/// The length of what is still being written is written last.
const QByteArray half = start + QByteArray("\0\0\0\0mdat", 8) + QByteArray(5000, 'x');

RunNote::File fileAt(const QString& path) {
    struct stat facts {};
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0)
        return {};
    return noted(facts);
}

} // namespace

/// What is found at the output's path after the program has died, and which of it is half a movie
/// that the encoder left.
class TestLeftover final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void halfMovie();
    void found_data();
    void found();
    void form_data();
    void form();

private:
    [[nodiscard]] QString at(const QString& name) const { return temporary_->filePath(name); }
    /// Writes a file that was last changed at that time.
    static void write(const QString& path, const QByteArray& content, qint64 time);

    std::unique_ptr<QTemporaryDir> temporary_;
    QString output_;
    RunNote note_;
    Circumstances now_;
};

using Change = std::function<void()>;
Q_DECLARE_METATYPE(Change)

void TestLeftover::write(const QString& path, const QByteArray& content, qint64 time) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    const timespec times[] = {{0, UTIME_OMIT}, {time, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

/// An encoder that was seen to make its file, and that died with the program.
void TestLeftover::init() {
    temporary_ = std::make_unique<QTemporaryDir>();
    output_ = at(QStringLiteral("out.mp4"));
    const QString source = at(QStringLiteral("in.mp4"));
    write(source, start + box("moov", "in"), launched - 1000);
    write(output_, half, lastAlive - 1);
    note_ = RunNote();
    note_.boot = "one";
    note_.launched = launched;
    note_.output = QFile::encodeName(output_);
    note_.source = QFile::encodeName(source);
    note_.sourceFile = fileAt(source);
    note_.made = fileAt(output_);
    now_ = {"one", lastAlive, {}};
}

void TestLeftover::halfMovie() {
    QCOMPARE(leftover(note_, now_), Leftover::HalfMovie);
    // Where the program did not live to see it.
    note_.made.reset();
    QCOMPARE(leftover(note_, now_), Leftover::HalfMovie);
    // In place of an older output.
    note_.before = RunNote::File{note_.sourceFile.device, fileAt(output_).inode, 3, 4, 5};
    QCOMPARE(leftover(note_, now_), Leftover::HalfMovie);
    // After another start of the computer disks may have other numbers.
    note_.made = fileAt(output_);
    now_.boot = "two";
    ++note_.made->device;
    QCOMPARE(leftover(note_, now_), Leftover::HalfMovie);
}

void TestLeftover::found_data() {
    QTest::addColumn<Leftover>("expected");
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, Leftover expected, Change change) {
        QTest::newRow(name) << expected << std::move(change);
    };
    const auto remove = [this] { QVERIFY(QFile::remove(output_)); };
    row("no file", Leftover::Nothing, remove);
    row("its disk is not there", Leftover::OutOfReach,
        [this] { note_.output = QFile::encodeName(at(QStringLiteral("disk/out.mp4"))); });
    row("its folder is a file now", Leftover::OutOfReach,
        [this] { note_.output = QFile::encodeName(output_ + QStringLiteral("/out.mp4")); });
    row("a link to it", Leftover::NoFile, [this] {
        QVERIFY(QFile::rename(output_, at(QStringLiteral("moved.mp4"))));
        QVERIFY(QFile::link(at(QStringLiteral("moved.mp4")), output_));
    });
    row("a link to nothing", Leftover::NoFile, [=, this] {
        remove();
        QVERIFY(QFile::link(at(QStringLiteral("nothing")), output_));
    });
    row("a folder", Leftover::NoFile, [=, this] {
        remove();
        QVERIFY(QDir().mkdir(output_));
    });
    row("a pipe", Leftover::NoFile, [=, this] {
        remove();
        QCOMPARE(::mkfifo(QFile::encodeName(output_).constData(), 0600), 0);
    });
    row("the source, by its path", Leftover::Source, [this] { note_.source = note_.output; });
    row("the source, by another name", Leftover::Source, [=, this] {
        remove();
        QVERIFY(QFile::rename(at(QStringLiteral("in.mp4")), output_));
        note_.made.reset();
    });
    row("a link to the source", Leftover::Source, [=, this] {
        remove();
        QCOMPARE(::link(note_.source.constData(), note_.output.constData()), 0);
    });
    row("the source has come back as another file", Leftover::Source, [this] {
        QVERIFY(QFile::remove(at(QStringLiteral("in.mp4"))));
        QCOMPARE(::link(note_.output.constData(), note_.source.constData()), 0);
    });
    row("an older output that was not touched", Leftover::Older, [this] {
        note_.made.reset();
        note_.before = fileAt(output_);
    });
    row("another file in its place", Leftover::Changed, [this] {
        write(at(QStringLiteral("new.mp4")), half, lastAlive - 1);
        QVERIFY(QFile::remove(output_));
        QVERIFY(QFile::rename(at(QStringLiteral("new.mp4")), output_));
    });
    row("on another disk", Leftover::Changed, [this] { ++note_.made->device; });
    row("written to since", Leftover::Changed, [this] { write(output_, half, lastAlive + 3600); });
    row("from before the launch", Leftover::Changed, [this] {
        note_.made.reset();
        write(output_, half, launched - 60);
    });
    row("a whole movie", Leftover::Whole,
        [this] { write(output_, start + box("mdat", "x") + box("moov", "x"), lastAlive); });
    row("not a movie at all", Leftover::Changed, [this] { write(output_, "text", lastAlive); });
    row("a job writes there now", Leftover::InUse, [this] {
        RunNote other = note_;
        other.made.reset();
        now_.underWay = {other};
    });
    row("a job writes there now, by another name", Leftover::InUse, [this] {
        RunNote other = note_;
        other.output = "/elsewhere";
        now_.underWay = {other};
    });
    row("a job reads it", Leftover::InUse, [this] {
        RunNote other;
        other.output = "/elsewhere";
        other.sourceFile = fileAt(output_);
        now_.underWay = {other};
    });
}

void TestLeftover::found() {
    QFETCH(Change, change);
    change();
    QTEST(leftover(note_, now_), "expected");
}

void TestLeftover::form_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Leftover>("expected");
    const auto row = [](const char* name, const QByteArray& content, Leftover expected) {
        QTest::newRow(name) << content << expected;
    };
    const QByteArray large("\0\0\0\1mdat\0\0\0\0\0\0\0\24xxxx", 20);
    row("empty", {}, Leftover::HalfMovie);
    row("zeros", QByteArray(4096, '\0'), Leftover::HalfMovie);
    row("only the beginning", start, Leftover::HalfMovie);
    row("cut in a head", start + "\0\0", Leftover::HalfMovie);
    row("cut in its pictures", start + box("mdat", "xx", 9999), Leftover::HalfMovie);
    row("pictures, no index", start + box("mdat", "xx"), Leftover::HalfMovie);
    row("a large one, no index", start + large, Leftover::HalfMovie);
    row("a large one", start + large + box("moov", {}), Leftover::Whole);
    row("QuickTime", box("ftyp", "qt  ") + box("wide", {}) + QByteArray("\0\0\0\0mdatx", 9),
        Leftover::HalfMovie);
    row("the index first", start + box("moov", "x") + box("mdat", "x"), Leftover::Whole);
    row("an index that is cut", start + box("moov", "x", 999), Leftover::Whole);
    row("in pieces", start + box("moof", "x"), Leftover::Changed);
    row("no beginning", box("mdat", "x"), Leftover::Changed);
    row("Matroska", "\x1a\x45\xdf\xa3\x01\x02\x03\x04\x05\x06\x07\x08", Leftover::Changed);
    row("a few bytes", "abc", Leftover::Changed);
    row("a length of two", start + box("mdat", "xxxx", 2), Leftover::Changed);
    row("a large length of nothing", start + QByteArray("\0\0\0\1mdat\0\0\0\0\0\0\0\0", 16),
        Leftover::Changed);
    row("a length that turns round",
        start + QByteArray("\0\0\0\1mdat\xff\xff\xff\xff\xff\xff\xff\xff", 16),
        Leftover::HalfMovie);
    row("boxes without end", start + box("free", {}).repeated(100'000), Leftover::Changed);
}

void TestLeftover::form() {
    QFETCH(QByteArray, content);
    write(output_, content, lastAlive);
    QTEST(leftover(note_, now_), "expected");
}

REELSHIFT_TEST(tst_leftover, TestLeftover, NoApplication)
#include "tst_leftover.moc"
