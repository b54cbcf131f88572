#include "TestProgram.h"
#include "media/ProfileCatalogue.h"
#include "media/ResolutionCatalogue.h"

#include <QTest>

#include <limits>
#include <stdexcept>

/// The profiles that a movie can be given and the picture sizes offered for it.
class TestCatalogues final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void profileLists();
    void profileKind_data();
    void profileKind();
    void shortProfileLists();
    void level_data();
    void level();
    void resolutionId_data();
    void resolutionId();
    void sizes_data();
    void sizes();
    void ownSizes_data();
    void ownSizes();
    void ownSizesOfAll();
    void unknownIds_data();
    void unknownIds();
};

namespace {

ProfileCatalogue catalogue() {
    return {QStringLiteral("H.264 LV1 : Pro;H.264 LV1 : Best Quality;H.264 LV2 : Normal"),
            QStringLiteral("Pro;High;Normal")};
}

} // namespace

void TestCatalogues::profileLists() {
    const ProfileCatalogue profiles = catalogue();
    QCOMPARE(profiles.comboBoxItems().size(), 3);
    QCOMPARE(profiles.comboBoxItem(0), QStringLiteral("H.264 LV1 : Pro"));
    QCOMPARE(profiles.comboBoxItem(2), QStringLiteral("H.264 LV2 : Normal"));
    QCOMPARE(profiles.cmbItems(), (QStringList{QStringLiteral("Pro"), QStringLiteral("High"),
                                               QStringLiteral("Normal")}));
    QCOMPARE(profiles.defaultCmbItem(), QStringLiteral("High"));
    QCOMPARE(ProfileCatalogue::defaultProfile(), QStringLiteral("H.264 LV1 : Best Quality"));
}

void TestCatalogues::profileKind_data() {
    QTest::addColumn<QString>("profile");
    QTest::addColumn<ProfileKind>("kind");
    QTest::newRow("item 0") << QStringLiteral("H.264 LV1 : Pro") << ProfileKind::Pro;
    QTest::newRow("item 1") << QStringLiteral("H.264 LV1 : Best Quality")
                            << ProfileKind::HighQuality;
    QTest::newRow("item 2") << QStringLiteral("H.264 LV2 : Normal") << ProfileKind::Normal;
    QTest::newRow("none of them") << QStringLiteral("H.264 LV9 : x") << ProfileKind::HighQuality;
    QTest::newRow("other case") << QStringLiteral("h.264 lv1 : pro") << ProfileKind::HighQuality;
    QTest::newRow("empty") << QString() << ProfileKind::HighQuality;
}

void TestCatalogues::profileKind() {
    QFETCH(QString, profile);
    QFETCH(ProfileKind, kind);
    QCOMPARE(catalogue().kindOf(profile), kind);
}

void TestCatalogues::shortProfileLists() {
    const ProfileCatalogue profiles(QStringLiteral("IDS_TXT_PROFILELIST"), QStringLiteral("one"));
    QCOMPARE(profiles.kindOf(QStringLiteral("IDS_TXT_PROFILELIST")), ProfileKind::Pro);
    QCOMPARE(profiles.kindOf(ProfileCatalogue::defaultProfile()), ProfileKind::HighQuality);
    QCOMPARE(profiles.cmbItem(0), QStringLiteral("one"));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, void(profiles.defaultCmbItem()));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, void(profiles.comboBoxItem(1)));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, void(profiles.comboBoxItem(-1)));
}

void TestCatalogues::level_data() {
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("level");
    QTest::newRow("default") << ProfileCatalogue::defaultProfile() << QStringLiteral("Level 1");
    QTest::newRow("made of the word") << QStringLiteral("H.264 LV3 : x") << LEVELSTR + u" 3";
    QTest::newRow("nine long") << QStringLiteral("H.264 LV7") << QStringLiteral("Level 7");
    QTest::newRow("eight long") << QStringLiteral("H.264 LV") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestCatalogues::level() {
    QFETCH(QString, profile);
    QFETCH(QString, level);
    if (level.isEmpty())
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, void(ProfileCatalogue::levelText(profile)));
    else
        QCOMPARE(ProfileCatalogue::levelText(profile), level);
}

void TestCatalogues::resolutionId_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("id");
    constexpr int none = -1;
    QTest::newRow("2160p") << 3840 << 2160 << 0;
    QTest::newRow("cinema, same height") << 4096 << 2160 << 1;
    QTest::newRow("1440p") << 2560 << 1440 << 2;
    QTest::newRow("1080p") << 1920 << 1080 << 3;
    QTest::newRow("720p") << 1280 << 720 << 4;
    QTest::newRow("VGA") << 640 << 480 << 5;
    QTest::newRow("PAL") << 720 << 576 << none;
    QTest::newRow("portrait") << 1080 << 1920 << none;
    QTest::newRow("one row too many") << 1920 << 1088 << none;
    QTest::newRow("one column too few") << 1919 << 1080 << none;
    QTest::newRow("a list's item is no source") << 640 << 360 << none;
    QTest::newRow("nothing") << 0 << 0 << none;
}

void TestCatalogues::resolutionId() {
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, id);
    QCOMPARE(ResolutionCatalogue::resolutionId(width, height).value_or(-1), id);
}

void TestCatalogues::sizes_data() {
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("list");
    QTest::newRow("zero") << 0 << QStringLiteral("3840x2160;1920x1080;960x540");
    QTest::newRow("one") << 1 << QStringLiteral("4096x2160;2048x1080;1024x540");
    QTest::newRow("two") << 2 << QStringLiteral("2560x1440;1280x720");
    QTest::newRow("three") << 3 << QStringLiteral("1920x1080;960x540");
    QTest::newRow("four") << 4 << QStringLiteral("1280x720;640x360");
    QTest::newRow("five") << 5 << QStringLiteral("640x480");
}

void TestCatalogues::sizes() {
    QFETCH(int, id);
    QFETCH(QString, list);
    const ResolutionCatalogue sizes;
    QCOMPARE(sizes.items(id), list.split(u';'));
    QCOMPARE(sizes.getDefaultResolution(id), list.section(u';', 0, 0));
    const QList<QStringList> named{sizes.resolutionListZero(), sizes.resolutionListOne(),
                                   sizes.resolutionListTwo(),  sizes.resolutionListThree(),
                                   sizes.resolutionListFour(), sizes.resolutionListFive()};
    QCOMPARE(named.at(id), sizes.items(id));
    // The first size offered is the size that selects the list.
    const QStringList source = sizes.getDefaultResolution(id).split(u'x');
    QCOMPARE(ResolutionCatalogue::resolutionId(source.at(0).toInt(), source.at(1).toInt()), id);
}

void TestCatalogues::ownSizes_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QString>("list");
    constexpr int most = std::numeric_limits<int>::max();
    const auto row = [](const char* name, int width, int height, const char* list) {
        QTest::newRow(name) << width << height << QString::fromLatin1(list);
    };
    row("portrait phone", 720, 1280, "720x1280;360x640");
    row("portrait 1080p", 1080, 1920, "1080x1920;540x960");
    row("small", 640, 360, "640x360;320x180");
    row("PAL", 720, 576, "720x576;360x288");
    row("uncropped 1080p", 1920, 1088, "1920x1088;960x544");
    row("square", 2160, 2160, "2160x2160;1080x1080");
    // Each number goes down to the next even one, the half's as well.
    row("odd", 321, 241, "320x240;160x120");
    row("odd width", 641, 480, "640x480;320x240");
    row("half is odd", 642, 482, "642x482;320x240");
    row("both", 643, 483, "642x482;320x240");
    // Level 5.1 ends at 36,864 macroblocks; one that is cut by the edge counts whole.
    row("8K", 7680, 4320, "3840x2160;1920x1080");
    row("8K, portrait", 4320, 7680, "2160x3840;1080x1920");
    row("cinema 8K", 8192, 4320, "4096x2160;2048x1080");
    row("just fits", 4096, 2304, "4096x2304;2048x1152");
    row("one column more", 4098, 2304, "2048x1152;1024x576");
    row("one row more", 4096, 2306, "2048x1152;1024x576");
    row("the odd row does not count", 4096, 2305, "4096x2304;2048x1152");
    row("half of it does not fit", 16384, 8640, "4096x2160;2048x1080");
    row("wide", 36864 * 16, 16, "589824x16;294912x8");
    row("wider", 36864 * 16 + 2, 16, "294912x8;147456x4");
    // Nothing is offered that has no picture.
    row("smallest", 2, 2, "2x2");
    row("its half is too thin", 3, 480, "2x480");
    row("both halves just do", 4, 4, "4x4;2x2");
    row("thin and long", 2, 100'000, "2x100000");
    row("one pixel", 1, 1, "");
    row("one pixel wide", 1, 480, "");
    row("one pixel high", 640, 1, "");
    row("nothing", 0, 0, "");
    row("no height", 640, 0, "");
    row("largest numbers", most, most, "2046x2046;1022x1022");
    row("too long to be halved", most, 2, "");
    row("long and one wide", 1, most, "");
}

void TestCatalogues::ownSizes() {
    QFETCH(const int, width);
    QFETCH(const int, height);
    QFETCH(const QString, list);
    QCOMPARE(ResolutionCatalogue::sizesOf(width, height), list.split(u';', Qt::SkipEmptyParts));
}

/// What holds for every size: even numbers, never larger than the source, never more than the
/// level, and the first offer is the source's own wherever that fits.
void TestCatalogues::ownSizesOfAll() {
    const QList<int> numbers{0,    1,    2,    3,    4,     15,    16,      17,
                             31,   240,  241,  255,  720,   1079,  1080,    1919,
                             1920, 2159, 2160, 2161, 3840,  4095,  4096,    4097,
                             7680, 8191, 8192, 9999, 16384, 65535, 1 << 20, 1 << 30};
    for (const int width : numbers) {
        for (const int height : numbers) {
            const QStringList list = ResolutionCatalogue::sizesOf(width, height);
            QVERIFY(list.size() <= 2);
            qint64 area = qint64{width} * height;
            for (const QString& each : list) {
                const qint64 w = each.section(u'x', 0, 0).toLongLong();
                const qint64 h = each.section(u'x', 1).toLongLong();
                QVERIFY2(w >= 2 && h >= 2 && w % 2 == 0 && h % 2 == 0, qPrintable(each));
                QVERIFY2(((w + 15) / 16) * ((h + 15) / 16) <= 36'864, qPrintable(each));
                QVERIFY2(w * h <= area, qPrintable(each));
                area = w * h / 4;
            }
            const bool fits =
                (qint64{width / 2 * 2} + 15) / 16 * ((qint64{height / 2 * 2} + 15) / 16) <= 36'864;
            if (fits && width > 1 && height > 1)
                QCOMPARE(list.value(0),
                         QStringLiteral("%1x%2").arg(width / 2 * 2).arg(height / 2 * 2));
        }
    }
}

void TestCatalogues::unknownIds_data() {
    QTest::addColumn<int>("id");
    for (const int id : {-1, 6, 1000, std::numeric_limits<int>::min()})
        QTest::addRow("%d", id) << id;
}

void TestCatalogues::unknownIds() {
    QFETCH(int, id);
    const ResolutionCatalogue sizes;
    QCOMPARE(sizes.getDefaultResolution(id), QStringLiteral("640x480"));
    QVERIFY(sizes.items(id).isEmpty());
}

REELSHIFT_TEST(test_catalogues, TestCatalogues, NoApplication)
#include "TestCatalogues.moc"
