#include "TestProgram.h"
#include "launcher/Arguments.h"
#include "launcher/EncoderAbilities.h"
#include "launcher/SystemEncoder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

Arguments words(const char* text) {
    Arguments result;
    for (const QByteArray& each : QByteArray(text).split(' '))
        result.push_back(each.toStdString());
    return result;
}

QString put(const QTemporaryDir& folder, const QString& path, bool executable = true) {
    const QString whole = folder.filePath(path);
    QDir().mkpath(QFileInfo(whole).path());
    QFile file(whole);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(whole));
    file.setPermissions(QFile::ReadOwner | (executable ? QFile::ExeOwner : QFile::ReadOwner));
    return whole;
}

} // namespace

class TestLauncherRules final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void jobs_data();
    void jobs();
    void namesThatFfmpegRepeats();

    void abilities_data();
    void abilities();
    void anEncoderIsDescribed();

    void theFirstInThePath();
    void onlyWhatMayBeRun();
    void neverALauncher();
    void onlyWholePaths();
    void theProbeBesideTheEncoder();
};

void TestLauncherRules::jobs_data() {
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QByteArray>("without");
    QTest::newRow("job") << QByteArray("-psnr -i a.mp4 -codec:v libx264 b.mp4")
                         << QByteArray("-i a.mp4 -codec:v libx264 b.mp4");
    QTest::newRow("replaces") << QByteArray("-y -psnr -i a.mp4 b.mp4")
                              << QByteArray("-y -i a.mp4 b.mp4");
    QTest::newRow("files called so")
        << QByteArray("-psnr -i -psnr -psnr") << QByteArray("-i -psnr -psnr");
    QTest::newRow("examination") << QByteArray("-i a.mp4") << QByteArray();
    QTest::newRow("examination of one called so") << QByteArray("-i -psnr") << QByteArray();
    QTest::newRow("nothing") << QByteArray("") << QByteArray();
}

void TestLauncherRules::jobs() {
    QFETCH(const QByteArray, given);
    QFETCH(const QByteArray, without);
    const Arguments arguments = words(given);
    QCOMPARE(isJob(arguments), !without.isNull());
    QVERIFY(withoutQualityReport(arguments) == (without.isNull() ? arguments : words(without)));
}

void TestLauncherRules::namesThatFfmpegRepeats() {
    QVERIFY(namesIn(words("-y -psnr -i a.mp4 -g 15 b.mp4")) == words("a.mp4 b.mp4"));
    QVERIFY(namesIn({}).empty());
    QVERIFY(namesIn({"-i"}).empty());
}

void TestLauncherRules::abilities_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("known");
    QTest::addColumn<bool>("x264");
    QTest::addColumn<bool>("zscale");
    const auto row = [](const char* what, const char* answer, bool known, bool x264, bool zscale) {
        QTest::newRow(what) << QByteArray(answer) << known << x264 << zscale;
    };
    row("ffmpeg", "ffmpeg version x\n  configuration: --enable-libx264 --enable-libzimg\n", true,
        true, true);
    row("without zscale", "  configuration: --enable-gpl --enable-libx264\n", true, true, false);
    row("without x264", "  configuration: --enable-libzimg --enable-libx265\n", true, false, true);
    row("ffprobe",
        "program_version.version=\"7.1\"\n"
        "program_version.configuration=\"--enable-libx264 --enable-libzimg\"\nstreams=1\n",
        true, true, true);
    row("a title", "format.tags.title=\"configuration: --enable-libx264\"\n", false, false, false);
    row("nothing", "", false, false, false);
}

void TestLauncherRules::abilities() {
    QFETCH(const QByteArray, answer);
    const EncoderAbilities found = abilitiesFrom(answer.toStdString());
    QTEST(found.knowsItsBuild, "known");
    QTEST(found.wasBuiltWithX264, "x264");
    QTEST(found.hasZscale, "zscale");
}

void TestLauncherRules::anEncoderIsDescribed() {
    QVERIFY(describesX264("Encoder libx264 [libx264 H.264 / AVC / MPEG-4 AVC]:\n    General\n"));
    QVERIFY(!describesX264("Encoder libx264rgb [libx264 H.264 RGB]:\n"));
    QVERIFY(!describesX264("Codec 'libx264' is not recognized by FFmpeg.\n"));
    QVERIFY(!describesX264(""));
}

void TestLauncherRules::theFirstInThePath() {
    const QTemporaryDir folder;
    const QString first = put(folder, QStringLiteral("one/ffmpeg"));
    const QString second = put(folder, QStringLiteral("two/ffmpeg"));
    const std::string one = folder.filePath(QStringLiteral("one")).toStdString();
    const std::string two = folder.filePath(QStringLiteral("two")).toStdString();
    QCOMPARE(findSystemEncoder("/nowhere:" + one + ':' + two, "/proc/self/exe"),
             first.toStdString());
    QCOMPARE(findSystemEncoder(two + ':' + one, "/proc/self/exe"), second.toStdString());
    QVERIFY(!findSystemEncoder("/nowhere", "/proc/self/exe"));
    QVERIFY(!findSystemEncoder("", "/proc/self/exe"));
}

void TestLauncherRules::onlyWhatMayBeRun() {
    const QTemporaryDir folder;
    QDir(folder.path()).mkpath(QStringLiteral("folder/ffmpeg"));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("gone")),
                        folder.filePath(QStringLiteral("ffmpeg"))));
    put(folder, QStringLiteral("locked/ffmpeg"), false);
    const QString good = put(folder, QStringLiteral("good/ffmpeg"));
    QStringList path{folder.path()};
    for (const QString& each :
         {QStringLiteral("folder"), QStringLiteral("locked"), QStringLiteral("good")})
        path += folder.filePath(each);
    QCOMPARE(findSystemEncoder(path.join(u':').toStdString(), "/proc/self/exe"),
             good.toStdString());
}

void TestLauncherRules::neverALauncher() {
    const QTemporaryDir folder;
    const QString self = put(folder, QStringLiteral("libexec/launcher"));
    QDir(folder.path()).mkpath(QStringLiteral("links"));
    QVERIFY(QFile::link(self, folder.filePath(QStringLiteral("links/ffmpeg"))));
    put(folder, QStringLiteral("other/reelshift/ffmpeg"));
    QDir(folder.path()).mkpath(QStringLiteral("linked"));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("other/reelshift/ffmpeg")),
                        folder.filePath(QStringLiteral("linked/ffmpeg"))));
    QStringList path;
    for (const QString& each :
         {QStringLiteral("links"), QStringLiteral("other/reelshift"), QStringLiteral("linked")})
        path += folder.filePath(each);
    QVERIFY(!findSystemEncoder(path.join(u':').toStdString(), self.toStdString()));
    const QString good = put(folder, QStringLiteral("good/ffmpeg"));
    path += folder.filePath(QStringLiteral("good"));
    QCOMPARE(findSystemEncoder(path.join(u':').toStdString(), self.toStdString()),
             good.toStdString());
}

void TestLauncherRules::onlyWholePaths() {
    const QTemporaryDir folder;
    put(folder, QStringLiteral("bin/ffmpeg"));
    put(folder, QStringLiteral("ffmpeg"));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const auto found = findSystemEncoder(":.:bin::", "/proc/self/exe");
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!found);
}

void TestLauncherRules::theProbeBesideTheEncoder() {
    const QTemporaryDir folder;
    const std::string encoder = put(folder, QStringLiteral("one/ffmpeg")).toStdString();
    const std::string path = folder.filePath(QStringLiteral("two")).toStdString();
    QVERIFY(!findMovieProbe(encoder, path));
    const std::string other = put(folder, QStringLiteral("two/ffprobe")).toStdString();
    QCOMPARE(findMovieProbe(encoder, path)->path, other);
    QVERIFY(!findMovieProbe(encoder, path)->isOfEncoder);
    const std::string beside = put(folder, QStringLiteral("one/ffprobe")).toStdString();
    QCOMPARE(findMovieProbe(encoder, path)->path, beside);
    QVERIFY(findMovieProbe(encoder, path)->isOfEncoder);
}

REELSHIFT_TEST(tst_launcher_rules, TestLauncherRules, NoApplication)
#include "tst_launcher_rules.moc"
