#include "TestProgram.h"
#include "platform/desktop/MountTable.h"

#include <QCoreApplication>
#include <QTest>

/// Reading the kernel's mount table and finding the mount that holds a path.
class TestMountTable final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lineIsRead_data();
    void lineIsRead();
    void brokenLineIsSkipped_data();
    void brokenLineIsSkipped();
    void holdingMountIsFound_data();
    void holdingMountIsFound();
    void textMayEndAnywhere();
};

namespace {

const QByteArray desktop = "22 27 0:21 / /proc rw,relatime - proc proc rw\n"
                           "27 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
                           "30 27 0:25 / /run rw shared:2 - tmpfs tmpfs rw\n"
                           "31 27 8:3 / /home rw shared:3 master:1 - xfs /dev/sda3 rw\n"
                           "32 30 8:17 / /run/media/u/My\\040Card rw - vfat /dev/sdb1 rw\n"
                           "33 31 8:5 /videos /home/u/Videos rw - ext4 /dev/sda5 rw\n"
                           "34 27 0:40 / /srv rw - nfs4 nas:/films rw\n";

const QByteArray stackedOnTheSamePoint = "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                         "2 1 0:50 / /mnt rw - autofs systemd-1 rw\n"
                                         "3 2 8:17 / /mnt rw - exfat /dev/sdb1 rw\n";

const QByteArray sameParentTwice = "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                   "2 1 8:17 / /mnt rw - vfat /dev/sdb1 rw\n"
                                   "3 1 8:33 / /mnt rw - xfs /dev/sdc1 rw\n";

const QByteArray hiddenByAnOuterMount = "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                        "2 1 8:17 / /mnt/card rw - vfat /dev/sdb1 rw\n"
                                        "3 1 8:33 / /mnt rw - xfs /dev/sdc1 rw\n";

const QByteArray earlyRoot = "1 1 0:2 / / rw - rootfs rootfs rw\n"
                             "20 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                             "21 20 8:2 / /home rw - xfs /dev/sda2 rw\n";

const QByteArray changedRoot = "40 39 8:2 / /home rw - xfs /dev/sda2 rw\n";

} // namespace

void TestMountTable::lineIsRead_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<uint>("major");
    QTest::addColumn<uint>("minor");
    QTest::addColumn<QString>("mountPoint");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("source");

    const auto row = [](const char* name, const QByteArray& line, uint major, uint minor,
                        const char* mountPoint, const char* type, const char* source) {
        QTest::newRow(name) << line << major << minor << QString::fromUtf8(mountPoint)
                            << QString::fromUtf8(type) << QString::fromUtf8(source);
    };
    row("no optional fields", "36 35 98:0 /mnt1 /mnt2 rw,noatime - ext3 /dev/root rw", 98, 0,
        "/mnt2", "ext3", "/dev/root");
    row("one optional field", "36 35 98:0 / /mnt rw master:1 - ext3 /dev/sda1 rw", 98, 0, "/mnt",
        "ext3", "/dev/sda1");
    row("three optional fields",
        "36 35 259:65536 / /mnt rw shared:7 master:1 unbindable - btrfs /dev/sda1 rw", 259, 65536,
        "/mnt", "btrfs", "/dev/sda1");
    row("blank in the folder", "36 35 8:1 / /media/My\\040Card rw - vfat /dev/sdb1 rw", 8, 1,
        "/media/My Card", "vfat", "/dev/sdb1");
    row("tab, line end and backslash", "36 35 8:1 / /m/a\\011b\\012c\\134d rw - vfat /dev/sdb1 rw",
        8, 1, "/m/a\tb\nc\\d", "vfat", "/dev/sdb1");
    row("backslash and digits that are not an escape",
        "36 35 8:1 / /m/a\\134040b rw - vfat /dev/sdb1 rw", 8, 1, "/m/a\\040b", "vfat",
        "/dev/sdb1");
    row("backslash at the end", "36 35 8:1 / /m/a\\04 rw - vfat /dev/sdb1 rw", 8, 1, "/m/a\\04",
        "vfat", "/dev/sdb1");
    row("letters as they are", "36 35 8:1 / /m/\xC3\x9C rw - vfat /dev/sdb1 rw", 8, 1,
        "/m/\xC3\x9C", "vfat", "/dev/sdb1");
    row("blank in the source", "36 35 0:30 / /m rw - cifs //nas/my\\040films rw", 0, 30, "/m",
        "cifs", "//nas/my films");
    row("empty source", "36 35 0:30 / /m rw - tmpfs  rw", 0, 30, "/m", "tmpfs", "");
    row("folder named like the separator", "36 35 8:1 / /- rw - vfat - rw", 8, 1, "/-", "vfat",
        "-");
}

void TestMountTable::lineIsRead() {
    QFETCH(QByteArray, line);
    const MountTable table(line);
    QCOMPARE(table.mounts().size(), 1);
    const Mount& mount = table.mounts().constFirst();
    QCOMPARE(mount.id, 36);
    QCOMPARE(mount.parent, 35);
    QTEST(mount.major, "major");
    QTEST(mount.minor, "minor");
    QTEST(mount.mountPoint, "mountPoint");
    QTEST(mount.type, "type");
    QTEST(mount.source, "source");
}

void TestMountTable::brokenLineIsSkipped_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no separator") << QByteArray("36 35 8:1 / /m rw vfat /dev/sdb1 rw");
    QTest::newRow("nothing after the separator") << QByteArray("36 35 8:1 / /m rw -");
    QTest::newRow("no source") << QByteArray("36 35 8:1 / /m rw - vfat");
    QTest::newRow("id is no number") << QByteArray("x 35 8:1 / /m rw - vfat /dev/sdb1 rw");
    QTest::newRow("device is no number") << QByteArray("36 35 8:a / /m rw - vfat /dev/sdb1 rw");
    QTest::newRow("device without colon") << QByteArray("36 35 81 / /m rw - vfat /dev/sdb1 rw");
}

void TestMountTable::brokenLineIsSkipped() {
    QFETCH(QByteArray, line);
    QVERIFY(MountTable(line).isEmpty());
    const MountTable table(line + '\n' + desktop);
    QCOMPARE(table.mounts().size(), 7);
    QCOMPARE(table.holding(QStringLiteral("/home/u"))->id, 31);
}

void TestMountTable::holdingMountIsFound_data() {
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("id"); // 0: no mount

    const auto row = [](const char* name, const QByteArray& table, const char* path, int id) {
        QTest::newRow(name) << table << QString::fromUtf8(path) << id;
    };
    row("root itself", desktop, "/", 27);
    row("below the root", desktop, "/usr/share", 27);
    row("mount point itself", desktop, "/home", 31);
    row("below a mount point", desktop, "/home/u/film.mp4", 31);
    row("a name that only begins alike", desktop, "/homes/u", 27);
    row("bind mount", desktop, "/home/u/Videos/2023", 33);
    row("escaped mount point", desktop, "/run/media/u/My Card/DCIM", 32);
    row("beside the escaped one", desktop, "/run/media/u/My", 30);
    row("network", desktop, "/srv/a", 34);
    row("last mount on the same point", stackedOnTheSamePoint, "/mnt/a", 3);
    row("last of two with one parent", sameParentTwice, "/mnt/a", 3);
    row("hidden by a later outer mount", hiddenByAnOuterMount, "/mnt/card/a", 3);
    row("root mounted over the early one", earlyRoot, "/usr", 20);
    row("below the root over the early one", earlyRoot, "/home/u", 21);
    row("root is not in the table", changedRoot, "/home/u", 40);
    row("nothing holds it", changedRoot, "/usr", 0);
    row("empty table", QByteArray(), "/usr", 0);
}

void TestMountTable::holdingMountIsFound() {
    QFETCH(QByteArray, table);
    QFETCH(QString, path);
    const MountTable mounts(table);
    const Mount* mount = mounts.holding(path);
    QTEST(mount ? mount->id : 0, "id");
}

void TestMountTable::textMayEndAnywhere() {
    for (qsizetype length = 0; length <= desktop.size(); ++length) {
        const MountTable table(desktop.left(length));
        const Mount* mount = table.holding(QStringLiteral("/home/u"));
        const bool hasRoot = length > desktop.indexOf("/dev/vda rw");
        QVERIFY2(!hasRoot || (mount && (mount->id == 27 || mount->id == 31)),
                 qPrintable(QString::number(length)));
    }
}

REELSHIFT_TEST(test_mount_table, TestMountTable, QCoreApplication)
#include "TestMountTable.moc"
