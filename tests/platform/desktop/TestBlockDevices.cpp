#include "TestProgram.h"
#include "platform/desktop/BlockDevices.h"
#include "platform/desktop/MountTable.h"
#include "platform/desktop/SysTree.h"

#include <QCoreApplication>
#include <QTest>

/// From a mount to the real devices below it, and what sysfs says of them.
class TestBlockDevices final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void devicesBelow_data();
    void devicesBelow();
    void removableMedium_data();
    void removableMedium();
    void ringOfSlavesEnds();
    void diskWithoutTheAttribute();
};

namespace {

/// Fills a tree with one of each kind of device.
void build(SysTree& sys) {
    sys.addDisk(QStringLiteral("sda"), QStringLiteral("8:0"), false);
    sys.addPartition(QStringLiteral("sda"), QStringLiteral("sda2"), QStringLiteral("8:2"));
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    sys.addPartition(QStringLiteral("sdb"), QStringLiteral("sdb1"), QStringLiteral("8:17"));
    sys.addDisk(QStringLiteral("sdc"), QStringLiteral("8:32"), true);
    sys.addDisk(QStringLiteral("mmcblk0"), QStringLiteral("179:0"), false);
    sys.setCardType(QStringLiteral("mmcblk0"), QStringLiteral("SD"));
    sys.addPartition(QStringLiteral("mmcblk0"), QStringLiteral("mmcblk0p1"),
                     QStringLiteral("179:1"));
    sys.addDisk(QStringLiteral("mmcblk1"), QStringLiteral("179:8"), false);
    sys.setCardType(QStringLiteral("mmcblk1"), QStringLiteral("MMC"));
    sys.addStacked(QStringLiteral("dm-0"), QStringLiteral("253:0"), {QStringLiteral("sda2")});
    sys.addStacked(QStringLiteral("dm-1"), QStringLiteral("253:1"), {QStringLiteral("sdb1")});
    sys.addStacked(QStringLiteral("md0"), QStringLiteral("9:0"),
                   {QStringLiteral("sda2"), QStringLiteral("sdb1")});
    sys.addPartition(QStringLiteral("md0"), QStringLiteral("md0p1"), QStringLiteral("259:0"));
    sys.addStacked(QStringLiteral("dm-2"), QStringLiteral("253:2"), {QStringLiteral("md0")});
    sys.addStacked(QStringLiteral("dm-3"), QStringLiteral("253:3"),
                   {QStringLiteral("dm-0"), QStringLiteral("sda2")});
}

Mount mountOf(uint major, uint minor, const QString& source = {}) {
    Mount mount;
    mount.major = major;
    mount.minor = minor;
    mount.source = source;
    return mount;
}

} // namespace

void TestBlockDevices::devicesBelow_data() {
    QTest::addColumn<uint>("major");
    QTest::addColumn<uint>("minor");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("names");

    const auto row = [](const char* name, uint major, uint minor, const char* source,
                        const char* names) {
        QTest::newRow(name) << major << minor << QString::fromLatin1(source)
                            << QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
    };
    row("partition", 8U, 2U, "/dev/sda2", "sda2");
    row("whole disk", 8U, 32U, "/dev/sdc", "sdc");
    row("the number counts, not the name", 8U, 17U, "/dev/root", "sdb1");
    row("encrypted", 253U, 1U, "/dev/mapper/luks", "sdb1");
    row("RAID", 9U, 0U, "/dev/md0", "sda2 sdb1");
    row("partition of a RAID", 259U, 0U, "/dev/md0p1", "sda2 sdb1");
    row("volume group on a RAID", 253U, 2U, "/dev/mapper/vg", "sda2 sdb1");
    row("one device by two ways", 253U, 3U, "/dev/mapper/x", "sda2");
    row("unknown number", 8U, 99U, "/dev/sda2", "");
    row("own number, names the device", 0U, 40U, "/dev/reelshift-none/sdb1", "sdb1");
    row("own number, unknown device", 0U, 40U, "/dev/reelshift-none/sdz1", "");
    row("tmpfs", 0U, 25U, "tmpfs", "");
    row("overlay", 0U, 26U, "overlay", "");
    row("network", 0U, 27U, "nas:/films", "");
    row("share named like a device", 0U, 27U, "//nas/sdb1", "");
    row("empty source", 0U, 27U, "", "");
}

void TestBlockDevices::devicesBelow() {
    QFETCH(uint, major);
    QFETCH(uint, minor);
    QFETCH(QString, source);
    SysTree sys;
    build(sys);
    const QList<BlockDevice> devices =
        BlockDevices(sys.path()).below(mountOf(major, minor, source));
    QStringList names;
    for (const BlockDevice& device : devices) {
        names += device.name;
    }
    QTEST(names, "names");
}

void TestBlockDevices::removableMedium_data() {
    QTest::addColumn<uint>("major");
    QTest::addColumn<uint>("minor");
    QTest::addColumn<bool>("removable");
    QTest::newRow("partition of a fixed disk") << 8U << 2U << false;
    QTest::newRow("partition of a stick") << 8U << 17U << true;
    QTest::newRow("stick without partitions") << 8U << 32U << true;
    QTest::newRow("card in a built-in reader") << 179U << 1U << true;
    QTest::newRow("soldered memory") << 179U << 8U << false;
    QTest::newRow("encrypted fixed disk") << 253U << 0U << false;
    QTest::newRow("encrypted stick") << 253U << 1U << true;
}

void TestBlockDevices::removableMedium() {
    QFETCH(uint, major);
    QFETCH(uint, minor);
    SysTree sys;
    build(sys);
    const QList<BlockDevice> devices = BlockDevices(sys.path()).below(mountOf(major, minor));
    QCOMPARE(devices.size(), 1);
    QTEST(BlockDevices::hasRemovableMedium(devices.constFirst()), "removable");
}

void TestBlockDevices::ringOfSlavesEnds() {
    SysTree sys;
    sys.addStacked(QStringLiteral("dm-1"), QStringLiteral("253:1"), {});
    sys.addStacked(QStringLiteral("dm-0"), QStringLiteral("253:0"), {QStringLiteral("dm-1")});
    QVERIFY(QFile::link(sys.path() % u"/class/block/dm-0",
                        sys.path() % u"/devices/virtual/block/dm-1/slaves/dm-0"));
    QVERIFY(BlockDevices(sys.path()).below(mountOf(253, 0)).isEmpty());
}

void TestBlockDevices::diskWithoutTheAttribute() {
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    const QList<BlockDevice> devices = BlockDevices(sys.path()).below(mountOf(8, 16));
    QCOMPARE(devices.size(), 1);
    sys.removeAttribute(QStringLiteral("sdb"));
    QVERIFY(!BlockDevices::hasRemovableMedium(devices.constFirst()));
}

REELSHIFT_TEST(test_block_devices, TestBlockDevices, QCoreApplication)
#include "TestBlockDevices.moc"
