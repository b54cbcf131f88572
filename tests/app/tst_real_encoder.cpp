#include "TestProgram.h"
#include "app/RealMovies.h"
#include "app/RunChecks.h"
#include "convert/FileTime.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>

#include <cmath>

#include <sys/mount.h>

namespace {

/// The time of a movie that was taken long ago.
bool setOldTime(const QString& path) {
    return setModificationTime(path, {1'234'567'890, 123'456'789});
}

} // namespace

/// Runs with the installed ffmpeg, through the launcher, and movies that it really decodes.
class TestRealEncoder final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void converts_data();
    void converts();
    void twoMoviesOneWithoutSound();
    void soundThatMp4CannotHoldIsConverted();
    void anEncryptedMovieIsNotConverted();
    void aDamagedMovieIsSkippedAndTheNextConverted();
    void aDamagedMovieStopsTheRun();
    void aSourceThatGoesAndComesBack();
    void theDiskIsFull();
    void samples_data();
    void samples();

private:
    void install(ControllerFixture& program, const QByteArray& before = {}) const;
    [[nodiscard]] QString make(const ControllerFixture& program, const QString& name,
                               const RealMovies::Wish& wish = {}) const;
    [[nodiscard]] QString makeDamaged(const ControllerFixture& program) const;
    void checkResult(const QString& source, const QString& output, const QString& size) const;

    const RealMovies movies_;
    /// Every wish is made once.
    const QTemporaryDir models_;
};

void TestRealEncoder::initTestCase() {
    if (!movies_.missing().isEmpty())
        QSKIP(qPrintable(movies_.missing()));
}

/// Puts the launcher in the fake encoder's place; `before` is what a shell does before it.
void TestRealEncoder::install(ControllerFixture& program, const QByteArray& before) const {
    const QString encoder = program.resources() + QStringLiteral("/ffmpeg");
    QVERIFY(QFile::remove(encoder));
    if (before.isEmpty()) {
        QVERIFY(QFile::link(QStringLiteral(REELSHIFT_LAUNCHER), encoder));
        return;
    }
    writeContent(encoder, "#!/bin/sh\n" + before + "\nexec '" REELSHIFT_LAUNCHER "' \"$@\"\n");
    QVERIFY(QFile::setPermissions(encoder, QFile::ReadOwner | QFile::ExeOwner));
}

QString TestRealEncoder::make(const ControllerFixture& program, const QString& name,
                              const RealMovies::Wish& wish) const {
    const QString path = program.movies() + u'/' + name;
    const size_t number = qHash(QStringList{wish.source, wish.audio} + wish.more);
    const QString model = models_.filePath(QString::number(number) + QStringLiteral(".mp4"));
    QDir().mkpath(QFileInfo(path).path());
    const bool made = QFile::exists(model) || movies_.make(model, wish);
    return made && QFile::copy(model, path) && setOldTime(path) ? path : QString();
}

/// A movie whose pictures are overwritten in the middle of the file.
QString TestRealEncoder::makeDamaged(const ControllerFixture& program) const {
    const QString path = make(program, QStringLiteral("damaged.mp4"),
                              {.more = {QStringLiteral("-movflags"), QStringLiteral("faststart")}});
    QByteArray bytes = contentOf(path);
    const auto from = bytes.size() / 3;
    for (qsizetype i = from; i < from + bytes.size() / 3; ++i)
        bytes[i] = static_cast<char>(i * 37);
    return writeContent(path, bytes);
}

void TestRealEncoder::checkResult(const QString& source, const QString& output,
                                  const QString& size) const {
    const auto before = movies_.factsOf(source);
    const auto after = movies_.factsOf(output);
    QVERIFY(before);
    QVERIFY2(after, qPrintable(output));
    QCOMPARE(after->videoCodec, QStringLiteral("h264"));
    QCOMPARE(after->size, size);
    QCOMPARE(after->pixelFormat, QStringLiteral("yuv420p"));
    QCOMPARE(after->level, 51);
    QVERIFY2(std::fabs(after->seconds - before->seconds) < 0.2,
             qPrintable(QString::number(after->seconds)));
    QCOMPARE(after->audioCodec, before->audioCodec);
    QCOMPARE(after->audioHash, before->audioHash);
    QCOMPARE(QFileInfo(output).lastModified(), QFileInfo(source).lastModified());
}

void TestRealEncoder::converts_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("profile");
    QTest::addColumn<QString>("output");
    const auto row = [](const char* name, int profile, const char* output) {
        QTest::newRow(name) << QString::fromLatin1(name) << profile << QString::fromLatin1(output);
    };
    row("a.b.mp4", 1, "a.b_HQ_640x480.mp4");
    row("pro.mp4", 0, "pro_Pro_640x480.mp4");
    row("normal.mp4", 2, "normal_Normal_640x480.mp4");
    row("Videos/Audio, Duration/trial and error.mp4", 1, "trial and error_HQ_640x480.mp4");
    row("Invalid\ntime= LPSNR=.mp4", 1, "Invalid\ntime= LPSNR=_HQ_640x480.mp4");
}

void TestRealEncoder::converts() {
    QFETCH(QString, name);
    QFETCH(int, profile);
    QFETCH(QString, output);
    ControllerFixture program;
    install(program);
    const QString title = QStringLiteral("title=trial and error: Holiday Video, Invalid");
    const QString movie = make(program, name, {.more = {QStringLiteral("-metadata"), title}});
    QVERIFY(!movie.isEmpty());
    program.add({movie});
    QCOMPARE(program.files().rowCount(), 1);
    program.files().recordAt(0)->set(key::profile, program.files().comboBoxItems[profile]);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.files().rowCount(), 0);
    checkResult(movie, program.output(output), QStringLiteral("640x480"));
}

void TestRealEncoder::twoMoviesOneWithoutSound() {
    ControllerFixture program;
    install(program);
    const QString first = make(program, QStringLiteral("a.mp4"));
    const QString second = make(program, QStringLiteral("b.mp4"), {.audio = QString()});
    program.add({first, second});
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 1);
    checkResult(first, program.output(QStringLiteral("a_HQ_640x480.mp4")),
                QStringLiteral("640x480"));
    checkResult(second, program.output(QStringLiteral("b_HQ_640x480.mp4")),
                QStringLiteral("640x480"));
}

void TestRealEncoder::soundThatMp4CannotHoldIsConverted() {
    ControllerFixture program;
    install(program);
    // Matroska under a name that the list takes.
    const QString movie = make(program, QStringLiteral("pcm.mp4"),
                               {.audio = QStringLiteral("pcm_s16le"),
                                .more = {QStringLiteral("-f"), QStringLiteral("matroska")}});
    const QString good = make(program, QStringLiteral("b.mp4"));
    program.add({movie, good});
    QCOMPARE(program.files().rowCount(), 2);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 1);
    const auto facts = movies_.factsOf(program.output(QStringLiteral("pcm_HQ_640x480.mp4")));
    QVERIFY(facts);
    QCOMPARE(facts->videoCodec, QStringLiteral("h264"));
    QCOMPARE(facts->audioCodec, QStringLiteral("aac"));
    checkResult(good, program.output(QStringLiteral("b_HQ_640x480.mp4")),
                QStringLiteral("640x480"));
}

// The encoder ends in good order: it copies the sound and skips what it takes for damaged pictures.
void TestRealEncoder::anEncryptedMovieIsNotConverted() {
    ControllerFixture program;
    install(program);
    const QString movie =
        make(program, QStringLiteral("locked.mp4"),
             {.source = QStringLiteral("testsrc2=size=1280x720:rate=25:duration=4"),
              .more = {QStringLiteral("-encryption_scheme"), QStringLiteral("cenc-aes-ctr"),
                       QStringLiteral("-encryption_key"), QString(32, u'7'),
                       QStringLiteral("-encryption_kid"), QString(32, u'a')}});
    QVERIFY(!movie.isEmpty());
    program.add({movie, make(program, QStringLiteral("b.mp4"))});
    QCOMPARE(program.files().rowCount(), 2);
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.messages().first().endsWith(QStringLiteral("locked.mp4")));
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
}

// Also with a second so short that the complaints come in a piece without a position.
void TestRealEncoder::aDamagedMovieIsSkippedAndTheNextConverted() {
    ControllerFixture program;
    install(program);
    const QString good = make(program, QStringLiteral("b.mp4"));
    program.add({makeDamaged(program), good});
    QCOMPARE(program.files().rowCount(), 2);
    program.boxes.promise(skipError);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.messages().first().startsWith(
        linesOf({"IDS_TXT_POPUP_ERROR", "IDS_TXT_POPUP_WANTTOSKIP"})));
    QVERIFY(program.boxes.messages().first().endsWith(QStringLiteral("damaged.mp4")));
    QVERIFY(isWaiting(0, program));
    QCOMPARE(namesIn(program.documents()), QStringList(QStringLiteral("b_HQ_640x480.mp4")));
    checkResult(good, program.output(QStringLiteral("b_HQ_640x480.mp4")),
                QStringLiteral("640x480"));
}

void TestRealEncoder::aDamagedMovieStopsTheRun() {
    ControllerFixture program;
    install(program);
    const QString damaged = makeDamaged(program);
    const QByteArray before = contentOf(damaged);
    program.add({damaged, make(program, QStringLiteral("b.mp4"))});
    program.boxes.promise(1000);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.seen.size(), 2);
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(namesIn(program.documents()).isEmpty());
    QCOMPARE(contentOf(damaged), before);
}

void TestRealEncoder::aSourceThatGoesAndComesBack() {
    ControllerFixture program;
    const QString aside = program.path(QStringLiteral("aside.mp4"));
    const QString movie = make(program, QStringLiteral("a.mp4"));
    install(program);
    program.add({movie});
    // The movie goes away after the job has looked for it and before the encoder opens it.
    install(program, "[ -e '" + aside.toUtf8() + "' ] || mv '" + movie.toUtf8() + "' '" +
                         aside.toUtf8() + "'");
    bool isBack = false;
    program.boxes.promise(1001, false, [&] { isBack = QFile::copy(aside, movie); });
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QVERIFY(isBack);
    QCOMPARE(program.boxes.messages(),
             textsOf({"IDS_TXT_POPUP_UNEXPECTEDREMOVE", "IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.files().rowCount(), 0);
    checkResult(movie, program.output(QStringLiteral("a_HQ_640x480.mp4")),
                QStringLiteral("640x480"));
}

void TestRealEncoder::theDiskIsFull() {
    ControllerFixture program;
    install(program);
    const QString disk = program.path(QStringLiteral("disk"));
    QVERIFY(QDir().mkpath(disk));
    if (::mount("none", qPrintable(disk), "tmpfs", 0, "size=256k") != 0)
        QSKIP("no small disk can be mounted here");
    const auto unmount = qScopeGuard([&] { ::umount2(qPrintable(disk), MNT_DETACH); });
    const QString movie =
        make(program, QStringLiteral("a.mp4"),
             {.source = QStringLiteral("mandelbrot=size=640x480:rate=25,trim=duration=3")});
    QVERIFY(!movie.isEmpty());
    program.add({movie, make(program, QStringLiteral("b.mp4"))});
    QCOMPARE(program.files().rowCount(), 2);
    program.files().recordAt(0)->set(key::profile, program.files().comboBoxItems[0]);
    program.widget<QLineEdit>("outputFolderPath")->setText(disk);
    program.boxes.promise(okAnswer);
    program.boxes.promise(okAnswer);
    QVERIFY(program.runToEnd());
    QCOMPARE(program.boxes.messages(),
             QStringList({linesOf({"IDS_TXT_POPUP_MEMORYFULL", "IDS_TXT_DATA_NOTCONVERTED"}),
                          getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL")}));
    QVERIFY(isWaiting(0, program));
    QVERIFY(isWaiting(1, program));
    QVERIFY(runControlsAre(true, program));
    QVERIFY(namesIn(disk).isEmpty());
}

void TestRealEncoder::samples_data() {
    QTest::addColumn<QString>("path");
    const QString folder = QStringLiteral(REELSHIFT_SAMPLES);
    const auto files =
        QDir(folder).entryInfoList({QStringLiteral("*.mp4"), QStringLiteral("*.MOV")}, QDir::Files);
    for (const QFileInfo& each : files)
        QTest::newRow(qPrintable(each.fileName())) << each.filePath();
    if (files.isEmpty())
        QTest::newRow("none") << QString();
}

/// Real movies of a folder that the build was told of: all convert, but for the ones whose names
/// begin with NEG, which are refused. Large and long ones at half their size: at their own the
/// window's test converts them.
void TestRealEncoder::samples() {
    QFETCH(QString, path);
    if (path.isEmpty())
        QSKIP("REELSHIFT_SAMPLES names no folder with movies");
    ControllerFixture program;
    install(program);
    const bool isRefused = QFileInfo(path).fileName().startsWith(QStringLiteral("NEG"));
    program.boxes.promise(okAnswer);
    if (isRefused) {
        // The first movie of a list goes silently: a good one stands before it.
        program.add({make(program, QStringLiteral("good.mp4"))});
        program.drop({path});
        QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_UNSUPPORTED"}));
        QCOMPARE(program.files().rowCount(), 1);
        return;
    }
    program.drop({path});
    QCOMPARE(program.files().rowCount(), 1);
    QString size = program.files().recordAt(0)->text(key::resolution);
    const QStringList sides = size.split(u'x');
    if (sides[0].toInt() * sides[1].toInt() >= 1280 * 720 && movies_.factsOf(path)->seconds > 2) {
        size = QStringLiteral("%1x%2").arg(sides[0].toInt() / 2).arg(sides[1].toInt() / 2);
        program.files().setResolution(0, size);
        program.files().recordAt(0)->set(key::resolution, size);
    }
    program.click("btnConvertFile");
    QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), 120000);
    QCOMPARE(program.boxes.messages(), textsOf({"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}));
    QCOMPARE(program.files().rowCount(), 0);
    const QString output =
        QFileInfo(path).completeBaseName() + QStringLiteral("_HQ_") + size + QStringLiteral(".mp4");
    checkResult(path, program.output(output), size);
}

REELSHIFT_TEST(tst_real_encoder, TestRealEncoder, QApplication)
#include "tst_real_encoder.moc"
