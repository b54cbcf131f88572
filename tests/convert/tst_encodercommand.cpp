#include "TestProgram.h"
#include "convert/EncoderCommand.h"

#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ProfileKind)

/// What the encoder is told and where it writes to.
class TestEncoderCommand final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void profileTextsChooseSettings_data();
    void profileTextsChooseSettings();
    void baseLosesTheLastExtensionOnly_data();
    void baseLosesTheLastExtensionOnly();
    void namesAndDuplicates_data();
    void namesAndDuplicates();
    void duplicatesAreNumberedWithoutBound();
    void scaleFilterTakesTheTextsAsTheyStand_data();
    void scaleFilterTakesTheTextsAsTheyStand();
    void sizeWithoutHeightThrows();
    void argumentsInOrder_data();
    void argumentsInOrder();
    void overwritingComesFirst();
};

void TestEncoderCommand::profileTextsChooseSettings_data() {
    QTest::addColumn<QString>("profile");
    QTest::addColumn<ProfileKind>("kind");
    QTest::addColumn<QString>("crf");
    const auto row = [](const char* profile, ProfileKind kind, const char* crf) {
        QTest::addRow("'%s'", profile)
            << QString::fromUtf8(profile) << kind << QString::fromUtf8(crf);
    };
    row("first", ProfileKind::Pro, "7");
    row("second", ProfileKind::HighQuality, "15");
    row("third", ProfileKind::Normal, "23");
    // Every other text is high quality.
    row("First", ProfileKind::HighQuality, "15");
    row("third ", ProfileKind::HighQuality, "15");
    row("", ProfileKind::HighQuality, "15");
    row("shown 3", ProfileKind::HighQuality, "15");
}

void TestEncoderCommand::profileTextsChooseSettings() {
    QFETCH(const QString, profile);
    const ProfileCatalogue catalogue(u"first;second;third"_s, u"shown 1;shown 2;shown 3"_s);
    QTEST(catalogue.kindOf(profile), "kind");
    QTEST(rateFactor(catalogue.kindOf(profile)), "crf");
}

void TestEncoderCommand::baseLosesTheLastExtensionOnly_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("base");
    const auto row = [](const char* source, const char* base) {
        QTest::addRow("%s", source) << QString::fromUtf8(source) << QString::fromUtf8(base);
    };
    row("/v/clip.mp4", "/out/clip");
    row("/v/a.b.mov", "/out/a.b");
    row("/v/a.b", "/out/a");
    row("/v/no extension", "/out/no extension");
    row("/v.d/no extension", "/out/no extension");
    row("/v/.hidden", "/out/.hidden");
    row("/v/.hidden.mp4", "/out/.hidden");
    row("/v/ends in a dot.", "/out/ends in a dot");
    row("/v/\u00e9\u4e2d%1 'q' \"d\" $x.mp4", "/out/\u00e9\u4e2d%1 'q' \"d\" $x");
    row("/v/new\nline.mp4", "/out/new\nline");
    row("clip.mp4", "/out/clip");
}

void TestEncoderCommand::baseLosesTheLastExtensionOnly() {
    QFETCH(const QString, source);
    QTEST(outputBase(u"/out"_s, source), "base");
}

void TestEncoderCommand::namesAndDuplicates_data() {
    QTest::addColumn<ProfileKind>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("Pro") << ProfileKind::Pro << u"/out/clip_Pro_1280x720.mp4"_s
                         << u"/out/clip_Pro(1)_1280x720.mp4"_s
                         << u"/out/clip_Pro(2)_1280x720.mp4"_s;
    // Kept: a duplicate of the normal quality ends in .mov, its first name in .mp4.
    QTest::newRow("Normal") << ProfileKind::Normal << u"/out/clip_Normal_1280x720.mp4"_s
                            << u"/out/clip_Normal(1)_1280x720.mov"_s
                            << u"/out/clip_Normal(2)_1280x720.mov"_s;
    QTest::newRow("HQ") << ProfileKind::HighQuality << u"/out/clip_HQ_1280x720.mp4"_s
                        << u"/out/clip_HQ(1)_1280x720.mp4"_s << u"/out/clip_HQ(2)_1280x720.mp4"_s;
}

void TestEncoderCommand::namesAndDuplicates() {
    QFETCH(const ProfileKind, kind);
    const QString base = u"/out/clip"_s;
    const QString size = u"1280x720"_s;
    QTEST(outputName(kind, base, size), "name");
    QTEST(duplicateName(kind, base, 1, size), "first");
    QTEST(duplicateName(kind, base, 2, size), "second");
}

void TestEncoderCommand::duplicatesAreNumberedWithoutBound() {
    QCOMPARE(duplicateName(ProfileKind::HighQuality, u"/o/50%1_%2"_s, 2147483647, u"4x2"_s),
             u"/o/50%1_%2_HQ(2147483647)_4x2.mp4"_s);
}

void TestEncoderCommand::scaleFilterTakesTheTextsAsTheyStand_data() {
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("filter");
    const auto row = [](const char* size, const char* filter) {
        QTest::addRow("'%s'", size) << QString::fromUtf8(size) << QString::fromUtf8(filter);
    };
    row("1280x720", "scale=1280:720");
    row("0640x0480", "scale=0640:0480");
    row("3x3", "scale=3:3");
    row("1x2x3", "scale=1:2");
    row("x", "scale=:");
    row(" 1 x 2 ", "scale= 1 : 2 ");
}

void TestEncoderCommand::scaleFilterTakesTheTextsAsTheyStand() {
    QFETCH(const QString, size);
    QTEST(scaleFilter(size), "filter");
}

void TestEncoderCommand::sizeWithoutHeightThrows() {
    for (const QString& size : {QString(), u"1280"_s, u"1280X720"_s})
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)scaleFilter(size));
}

void TestEncoderCommand::argumentsInOrder_data() {
    QTest::addColumn<ProfileKind>("kind");
    QTest::addColumn<QString>("crf");
    QTest::newRow("Pro") << ProfileKind::Pro << u"7"_s;
    QTest::newRow("HQ") << ProfileKind::HighQuality << u"15"_s;
    QTest::newRow("Normal") << ProfileKind::Normal << u"23"_s;
}

void TestEncoderCommand::argumentsInOrder() {
    QFETCH(const ProfileKind, kind);
    QFETCH(const QString, crf);
    const QStringList expected{u"-psnr"_s,
                               u"-i"_s,
                               u"/v/a b.mov"_s,
                               u"-codec:v"_s,
                               u"libx264"_s,
                               u"-preset"_s,
                               u"veryfast"_s,
                               u"-level:v"_s,
                               u"5.1"_s,
                               u"-vf"_s,
                               u"scale=4:2"_s,
                               u"-crf"_s,
                               crf,
                               u"-g"_s,
                               u"15"_s,
                               u"-pix_fmt"_s,
                               u"yuv420p"_s,
                               u"-acodec"_s,
                               u"copy"_s,
                               u"-avoid_negative_ts"_s,
                               u"1"_s,
                               u"/o/a b_4x2.mp4"_s};
    QCOMPARE(encoderArguments(kind, u"/v/a b.mov"_s, u"4x2"_s, u"/o/a b_4x2.mp4"_s, false),
             expected);
}

void TestEncoderCommand::overwritingComesFirst() {
    const QStringList without =
        encoderArguments(ProfileKind::Pro, u"/v/a.mov"_s, u"4x2"_s, u"/o/a.mp4"_s, false);
    QVERIFY(!without.contains(u"-y"_s));
    QCOMPARE(encoderArguments(ProfileKind::Pro, u"/v/a.mov"_s, u"4x2"_s, u"/o/a.mp4"_s, true),
             QStringList(u"-y"_s) + without);
}

REELSHIFT_TEST(tst_encodercommand, TestEncoderCommand, NoApplication)
#include "tst_encodercommand.moc"
