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
    QTest::addColumn<bool>("reports");
    const QByteArray psnr("-psnr               calculate PSNR of compressed frames");
    const QByteArray deprecated = psnr + " (deprecated, use -flags +psnr)";
    QTest::newRow("4.4 and 5.1") << QByteArray("-vstats x\n" + psnr + "\n-qphist  show\n") << true;
    QTest::newRow("listed twice") << QByteArray(psnr + "\nOther\n" + psnr + '\n') << true;
    // 6.0 still prints it, which its answer does not tell from 6.1.
    QTest::newRow("6.0") << QByteArray(deprecated + "\n-qphist  show QP histogram\n") << false;
    QTest::newRow("6.1") << QByteArray(deprecated + "\n-qphist  deprecated, does nothing\n")
                         << false;
    QTest::newRow("7.0") << QByteArray("-vstats             dump\n-vtag  force\n") << false;
    QTest::newRow("other things of that name")
        << QByteArray("-psnr2 PSNR\n  --psnr PSNR\nuse -psnr for the PSNR\n") << false;
    QTest::newRow("described in another way") << QByteArray("-psnr      does nothing\n") << false;
    QTest::newRow("no answer") << QByteArray() << false;
}

void TestLauncherRules::abilities() {
    QFETCH(const QByteArray, answer);
    QFETCH(const bool, reports);
    const QByteArray banner("ffmpeg version x\n  built with gcc\n  configuration: --enable-gpl");
    for (const char* build : {" --enable-libx264 --enable-libx265\n", " --enable-libx265\n"}) {
        const QByteArray whole = banner + build + answer;
        const EncoderAbilities found = abilitiesFrom(whole.toStdString());
        QCOMPARE(found.reportsQuality, reports);
        QCOMPARE(found.wasBuiltWithX264, QByteArray(build).contains("x264"));
    }
    QCOMPARE(abilitiesFrom(answer.toStdString()).reportsQuality, reports);
    QVERIFY(!abilitiesFrom(answer.toStdString()).wasBuiltWithX264);
}

void TestLauncherRules::anEncoderIsDescribed() {
    QVERIFY(describesX264("Encoder libx264 [libx264 H.264 / AVC / MPEG-4 AVC]:\n    General\n"));
    QVERIFY(!describesX264("Encoder libx264rgb [libx264 H.264 RGB]:\n"));
    QVERIFY(!describesX264("Codec 'libx264' is not recognized by FFmpeg.\n"));
    QVERIFY(!describesX264(""));
}

void TestLauncherRules::theFirstInThePath() {
    const QTemporaryDir folder;
    const QString first = put(folder, u"one/ffmpeg"_s);
    const QString second = put(folder, u"two/ffmpeg"_s);
    const std::string one = folder.filePath(u"one"_s).toStdString();
    const std::string two = folder.filePath(u"two"_s).toStdString();
    QCOMPARE(findSystemEncoder("/nowhere:" + one + ':' + two, "/proc/self/exe"),
             first.toStdString());
    QCOMPARE(findSystemEncoder(two + ':' + one, "/proc/self/exe"), second.toStdString());
    QVERIFY(!findSystemEncoder("/nowhere", "/proc/self/exe"));
    QVERIFY(!findSystemEncoder("", "/proc/self/exe"));
}

void TestLauncherRules::onlyWhatMayBeRun() {
    const QTemporaryDir folder;
    QDir(folder.path()).mkpath(u"folder/ffmpeg"_s);
    QVERIFY(QFile::link(folder.filePath(u"gone"_s), folder.filePath(u"ffmpeg"_s)));
    put(folder, u"locked/ffmpeg"_s, false);
    const QString good = put(folder, u"good/ffmpeg"_s);
    QStringList path{folder.path()};
    for (const QString& each : {u"folder"_s, u"locked"_s, u"good"_s})
        path += folder.filePath(each);
    QCOMPARE(findSystemEncoder(path.join(u':').toStdString(), "/proc/self/exe"),
             good.toStdString());
}

void TestLauncherRules::neverALauncher() {
    const QTemporaryDir folder;
    const QString self = put(folder, u"libexec/launcher"_s);
    QDir(folder.path()).mkpath(u"links"_s);
    QVERIFY(QFile::link(self, folder.filePath(u"links/ffmpeg"_s)));
    put(folder, u"other/reelshift/ffmpeg"_s);
    QDir(folder.path()).mkpath(u"linked"_s);
    QVERIFY(QFile::link(folder.filePath(u"other/reelshift/ffmpeg"_s),
                        folder.filePath(u"linked/ffmpeg"_s)));
    QStringList path;
    for (const QString& each : {u"links"_s, u"other/reelshift"_s, u"linked"_s})
        path += folder.filePath(each);
    QVERIFY(!findSystemEncoder(path.join(u':').toStdString(), self.toStdString()));
    const QString good = put(folder, u"good/ffmpeg"_s);
    path += folder.filePath(u"good"_s);
    QCOMPARE(findSystemEncoder(path.join(u':').toStdString(), self.toStdString()),
             good.toStdString());
}

void TestLauncherRules::onlyWholePaths() {
    const QTemporaryDir folder;
    put(folder, u"bin/ffmpeg"_s);
    put(folder, u"ffmpeg"_s);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const auto found = findSystemEncoder(":.:bin::", "/proc/self/exe");
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!found);
}

REELSHIFT_TEST(tst_launcher_rules, TestLauncherRules, NoApplication)
#include "tst_launcher_rules.moc"
