#include "TestProgram.h"
#include "convert/EncoderCommand.h"

#include <QTest>

#include <stdexcept>

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
    const ProfileCatalogue catalogue(QStringLiteral("first;second;third"),
                                     QStringLiteral("shown 1;shown 2;shown 3"));
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
    QTEST(outputBase(QStringLiteral("/out"), source), "base");
}

void TestEncoderCommand::namesAndDuplicates_data() {
    QTest::addColumn<ProfileKind>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("Pro") << ProfileKind::Pro << QStringLiteral("/out/clip_Pro_1280x720.mp4")
                         << QStringLiteral("/out/clip_Pro(1)_1280x720.mp4")
                         << QStringLiteral("/out/clip_Pro(2)_1280x720.mp4");
    // Kept: a duplicate of the normal quality ends in .mov, its first name in .mp4.
    QTest::newRow("Normal") << ProfileKind::Normal
                            << QStringLiteral("/out/clip_Normal_1280x720.mp4")
                            << QStringLiteral("/out/clip_Normal(1)_1280x720.mov")
                            << QStringLiteral("/out/clip_Normal(2)_1280x720.mov");
    QTest::newRow("HQ") << ProfileKind::HighQuality << QStringLiteral("/out/clip_HQ_1280x720.mp4")
                        << QStringLiteral("/out/clip_HQ(1)_1280x720.mp4")
                        << QStringLiteral("/out/clip_HQ(2)_1280x720.mp4");
}

void TestEncoderCommand::namesAndDuplicates() {
    QFETCH(const ProfileKind, kind);
    const QString base = QStringLiteral("/out/clip");
    const QString size = QStringLiteral("1280x720");
    QTEST(outputName(kind, base, size), "name");
    QTEST(duplicateName(kind, base, 1, size), "first");
    QTEST(duplicateName(kind, base, 2, size), "second");
}

void TestEncoderCommand::duplicatesAreNumberedWithoutBound() {
    QCOMPARE(duplicateName(ProfileKind::HighQuality, QStringLiteral("/o/50%1_%2"), 2147483647,
                           QStringLiteral("4x2")),
             QStringLiteral("/o/50%1_%2_HQ(2147483647)_4x2.mp4"));
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
    for (const QString& size : {QString(), QStringLiteral("1280"), QStringLiteral("1280X720")})
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)scaleFilter(size));
}

void TestEncoderCommand::argumentsInOrder_data() {
    QTest::addColumn<ProfileKind>("kind");
    QTest::addColumn<QString>("crf");
    QTest::newRow("Pro") << ProfileKind::Pro << QStringLiteral("7");
    QTest::newRow("HQ") << ProfileKind::HighQuality << QStringLiteral("15");
    QTest::newRow("Normal") << ProfileKind::Normal << QStringLiteral("23");
}

void TestEncoderCommand::argumentsInOrder() {
    QFETCH(const ProfileKind, kind);
    QFETCH(const QString, crf);
    const QStringList expected{QStringLiteral("-psnr"),
                               QStringLiteral("-i"),
                               QStringLiteral("/v/a b.mov"),
                               QStringLiteral("-codec:v"),
                               QStringLiteral("libx264"),
                               QStringLiteral("-preset"),
                               QStringLiteral("veryfast"),
                               QStringLiteral("-level:v"),
                               QStringLiteral("5.1"),
                               QStringLiteral("-vf"),
                               QStringLiteral("scale=4:2"),
                               QStringLiteral("-crf"),
                               crf,
                               QStringLiteral("-g"),
                               QStringLiteral("15"),
                               QStringLiteral("-pix_fmt"),
                               QStringLiteral("yuv420p"),
                               QStringLiteral("-acodec"),
                               QStringLiteral("copy"),
                               QStringLiteral("-avoid_negative_ts"),
                               QStringLiteral("1"),
                               QStringLiteral("/o/a b_4x2.mp4")};
    QCOMPARE(encoderArguments(kind, QStringLiteral("/v/a b.mov"), QStringLiteral("4x2"),
                              QStringLiteral("/o/a b_4x2.mp4"), false),
             expected);
}

void TestEncoderCommand::overwritingComesFirst() {
    const QStringList without =
        encoderArguments(ProfileKind::Pro, QStringLiteral("/v/a.mov"), QStringLiteral("4x2"),
                         QStringLiteral("/o/a.mp4"), false);
    QVERIFY(!without.contains(QStringLiteral("-y")));
    QCOMPARE(encoderArguments(ProfileKind::Pro, QStringLiteral("/v/a.mov"), QStringLiteral("4x2"),
                              QStringLiteral("/o/a.mp4"), true),
             QStringList(QStringLiteral("-y")) + without);
}

REELSHIFT_TEST(tst_encodercommand, TestEncoderCommand, NoApplication)
#include "tst_encodercommand.moc"
