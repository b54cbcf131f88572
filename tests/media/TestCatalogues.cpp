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
    QCOMPARE(sizes.items(ResolutionCatalogue::smallestId), sizes.resolutionListFive());
}

REELSHIFT_TEST(test_catalogues, TestCatalogues, NoApplication)
#include "TestCatalogues.moc"
