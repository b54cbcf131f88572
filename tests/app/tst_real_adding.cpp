#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/ControllerFixture.h"
#include "app/RealMovies.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

/// Movies as the real encoder describes them: which are taken, and what is read of them.
class TestRealAdding final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void misleadingNames_data();
    void misleadingNames();
    void otherCodecs_data();
    void otherCodecs();
    void samples_data();
    void samples();

private:
    /// The movie that most tests look at, under a name of the test's own.
    [[nodiscard]] QString movieAs(const ControllerFixture& program, const QString& name) const;

    const RealMovies movies_;
    QTemporaryDir folder_;
};

void TestRealAdding::initTestCase() {
    if (!movies_.missing().isEmpty())
        QSKIP(qPrintable(movies_.missing()));
    RealMovies::Wish wish;
    wish.source = QStringLiteral("testsrc2=size=1280x720:rate=10:duration=1");
    for (const char* entry : {"title=Holiday Video", "artist=trial and error",
                              "comment=Duration: 99:99:99.99, Audio: mp3, Video: h264, 1x1"})
        wish.more << QStringLiteral("-metadata") << QString::fromLatin1(entry);
    QVERIFY(movies_.make(folder_.filePath(QStringLiteral("movie.mp4")), wish));
}

QString TestRealAdding::movieAs(const ControllerFixture& program, const QString& name) const {
    const QString path = program.movies() + u'/' + name;
    QDir().mkpath(QFileInfo(path).path());
    return QFile::copy(folder_.filePath(QStringLiteral("movie.mp4")), path) ? path : QString();
}

void TestRealAdding::misleadingNames_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("clip.mp4");
    QTest::newRow("in Videos") << QStringLiteral("Videos/Audio, Duration/clip.mp4");
    QTest::newRow("titled") << QStringLiteral("Holiday Video, 3x4.mp4");
    QTest::newRow("trial and error") << QStringLiteral("trial and error Invalid.mp4");
    QTest::newRow("a report inside") << QStringLiteral("a':\n  Duration: 1, Video: h264, 2x2.mp4");
    QTest::newRow("quotes") << QStringLiteral("\"it's\" `now` <b>%1.mp4");
    QTest::newRow("emoji") << QString::fromUtf8("🎬 été/日本 Video, x.mp4");
    QTest::newRow("dash") << QStringLiteral("-i.mp4");
    QTest::newRow("255 bytes") << QString(QString(251, u'n') + QStringLiteral(".mp4"));
}

void TestRealAdding::misleadingNames() {
    QFETCH(QString, name);
    ControllerFixture program;
    QVERIFY(program.useRealEncoder());
    const QString path = movieAs(program, name);
    QVERIFY(!path.isEmpty());
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    const JobRecord& record = *program.files().recordAt(0);
    QCOMPARE(record.text(key::name), QFileInfo(path).fileName());
    const QString duration = record.text(key::duration);
    QVERIFY2(duration.startsWith(QStringLiteral("00:00:01.")), qPrintable(duration));
    QCOMPARE(record.text(key::audio), QStringLiteral("AAC"));
    QCOMPARE(record.text(key::video), QStringLiteral("HEVC"));
    QCOMPARE(record.text(key::resolution), QStringLiteral("1280x720"));
    QCOMPARE(record.number(key::resolutionID), 4);
    QVERIFY(program.boxes.seen.isEmpty());
}

void TestRealAdding::otherCodecs_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("more");
    QTest::newRow("H.264 called HEVC")
        << QStringLiteral("hevc, Video: hevc, 1920x1080.mp4")
        << QStringList{QStringLiteral("-c:v"),      QStringLiteral("libx264"),
                       QStringLiteral("-tag:v"),    QStringLiteral("avc1"),
                       QStringLiteral("-metadata"), QStringLiteral("title=Video: hevc, 1920x1080")};
    QTest::newRow("sound alone") << QStringLiteral("Video: hevc, 1920x1080.mp4")
                                 << QStringList{QStringLiteral("-vn")};
}

void TestRealAdding::otherCodecs() {
    QFETCH(QString, name);
    QFETCH(QStringList, more);
    ControllerFixture program;
    QVERIFY(program.useRealEncoder());
    const QString path = program.movies() + u'/' + name;
    RealMovies::Wish wish;
    wish.source = QStringLiteral("testsrc2=size=320x240:rate=10:duration=0.5");
    wish.more = more;
    QVERIFY(movies_.make(path, wish));
    program.boxes.promise(1000);
    program.add({movieAs(program, QStringLiteral("good.mp4")), path});
    QCOMPARE(program.files().rowCount(), 1);
    QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
}

void TestRealAdding::samples_data() {
    QTest::addColumn<QString>("path");
    const QString folder = QStringLiteral(REELSHIFT_SAMPLES);
    if (!folder.isEmpty()) {
        const auto files = QDir(folder).entryInfoList(
            {QStringLiteral("*.mp4"), QStringLiteral("*.MOV")}, QDir::Files);
        for (const QFileInfo& each : files)
            QTest::newRow(qPrintable(each.fileName())) << each.filePath();
        QVERIFY2(!files.isEmpty(), "REELSHIFT_SAMPLES holds no movies");
    } else {
        QTest::newRow("none") << QString();
    }
}

// Their names say what they are: NEG is refused, others name their size (the first of two tracks'
// first), and AAC where there is sound of that kind.
void TestRealAdding::samples() {
    QFETCH(QString, path);
    if (path.isEmpty())
        QSKIP("REELSHIFT_SAMPLES is not set");
    ControllerFixture program;
    QVERIFY(program.useRealEncoder());
    const QString name = QFileInfo(path).fileName();
    const QString good = movieAs(program, QStringLiteral("good.mp4"));
    if (name.startsWith(QStringLiteral("NEG_"))) {
        program.boxes.promise(1000);
        program.add({good, path, good});
        QCOMPARE(program.files().idList, (std::vector<int>{1, 3}));
        QCOMPARE(program.boxes.messages(), QStringList{text("IDS_TXT_UNSUPPORTED")});
        return;
    }
    program.add({path});
    QCOMPARE(program.files().rowCount(), 1);
    const JobRecord& record = *program.files().recordAt(0);
    const QString size =
        QRegularExpression(QStringLiteral("_(\\d+x\\d+)[_+]")).match(name).captured(1);
    QVERIFY(!size.isEmpty());
    const bool isOdd = size == QStringLiteral("321x241");
    QCOMPARE(record.text(key::resolution), isOdd ? QStringLiteral("320x240") : size);
    QCOMPARE(record.text(key::video), QStringLiteral("HEVC"));
    if (name.contains(QStringLiteral("_noaudio_")))
        QCOMPARE(record.text(key::audio), QStringLiteral("None"));
    else if (name.contains(QStringLiteral("_aac_")))
        QCOMPARE(record.text(key::audio), QStringLiteral("AAC"));
    const QRegularExpression clock(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d$"));
    QVERIFY(clock.match(record.text(key::duration)).hasMatch());
    const QRegularExpression length(QStringLiteral("_(\\d+(?:\\.\\d+)?)s_"));
    const double seconds = length.match(name).captured(1).toDouble();
    const double read = record.text(key::duration).mid(6).toDouble();
    QVERIFY2(qAbs(read - seconds) < 0.6, qPrintable(record.text(key::duration)));
}

REELSHIFT_TEST(tst_real_adding, TestRealAdding, QApplication)
#include "tst_real_adding.moc"
