#include "TestProgram.h"
#include "platform/desktop/FakeVolumes.h"
#include "platform/desktop/MountTable.h"
#include "platform/desktop/SysTree.h"
#include "platform/desktop/VolumeInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

/// The facts of a path, where the disk service is not there.
class TestVolumeInfo final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typeOfTheKernel_data();
    void typeOfTheKernel();
    void factsOfAPath_data();
    void factsOfAPath();
    void goneFolderIsJudgedByWhatIsLeft();
    void linkIsFollowed();
    void withoutAMountTable();
    void thisComputer();
    void tableForTests();

private:
    void write(const QString& mountInfo);
    [[nodiscard]] SystemVolumeInfo::Sources sources(const SysTree& sys) const;

    QTemporaryDir folder_;
    QString root_ = QDir(folder_.path()).canonicalPath();
};

void TestVolumeInfo::write(const QString& mountInfo) {
    QFile file(root_ % u"/mountinfo");
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(mountInfo.toUtf8()) > 0);
}

SystemVolumeInfo::Sources TestVolumeInfo::sources(const SysTree& sys) const {
    SystemVolumeInfo::Sources sources;
    sources.mountInfo = root_ % u"/mountinfo";
    sources.sysFolder = sys.path();
    sources.busAddress = u"unix:path=" % root_ % u"/no-bus";
    return sources;
}

void TestVolumeInfo::typeOfTheKernel_data() {
    QTest::addColumn<QString>("kernelType");
    QTest::addColumn<QString>("type");
    const auto row = [](const char* kernelType, const char* type) {
        QTest::newRow(kernelType) << QString::fromLatin1(kernelType) << QString::fromLatin1(type);
    };
    row("vfat", "msdos");
    row("msdos", "msdos");
    row("fat", "msdos");
    row("exfat", "exfat");
    row("ext4", "ext4");
    row("fuseblk", "fuseblk");
    row("nfs4", "nfs4");
    row("", "");
}

void TestVolumeInfo::typeOfTheKernel() {
    QFETCH(QString, kernelType);
    QTEST(volumeType(kernelType), "type");
}

void TestVolumeInfo::factsOfAPath_data() {
    QTest::addColumn<QString>("mount"); // device, type and source of the mounted folder
    QTest::addColumn<bool>("removable");
    QTest::addColumn<QString>("type");
    const auto row = [](const char* name, const char* mount, bool removable, const char* type) {
        QTest::newRow(name) << QString::fromLatin1(mount) << removable << QString::fromLatin1(type);
    };
    row("card", "8:17 vfat /dev/sdb1", true, "msdos");
    row("fixed FAT", "8:2 vfat /dev/sda2", false, "msdos");
    row("exFAT card", "8:17 exfat /dev/sdb1", true, "exfat");
    row("NTFS card in user space", "0:50 fuseblk /dev/reelshift-none/sdb1", true, "fuseblk");
    row("encrypted card", "253:1 ext4 /dev/mapper/luks", true, "ext4");
    row("network", "0:51 nfs4 nas:/films", false, "nfs4");
    row("overlay", "0:52 overlay overlay", false, "overlay");
    row("device that sysfs does not know", "8:99 ext4 /dev/sdz1", false, "ext4");
}

void TestVolumeInfo::factsOfAPath() {
    QFETCH(QString, mount);
    const QStringList fields = mount.split(u' ');
    QVERIFY(QDir(root_).mkpath(QStringLiteral("My Card/DCIM")));
    write(u"1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 " % fields[0] % u" / " % root_ %
          u"/My\\040Card rw - " % fields[1] % u' ' % fields[2] % u" rw\n");
    SysTree sys;
    sys.addDisk(QStringLiteral("sda"), QStringLiteral("8:0"), false);
    sys.addPartition(QStringLiteral("sda"), QStringLiteral("sda2"), QStringLiteral("8:2"));
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    sys.addPartition(QStringLiteral("sdb"), QStringLiteral("sdb1"), QStringLiteral("8:17"));
    sys.addStacked(QStringLiteral("dm-1"), QStringLiteral("253:1"), {QStringLiteral("sdb1")});

    SystemVolumeInfo volumes(sources(sys));
    const VolumeFacts facts = volumes.facts(root_ % u"/My Card/DCIM");
    QTEST(facts.removable, "removable");
    QTEST(facts.type, "type");
    QCOMPARE(volumes.facts(root_), (VolumeFacts{false, QStringLiteral("ext4")}));
}

void TestVolumeInfo::goneFolderIsJudgedByWhatIsLeft() {
    QVERIFY(QDir(root_).mkpath(QStringLiteral("card")));
    write(u"1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 8:16 / " % root_ %
          u"/card rw - vfat /dev/sdb rw\n");
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    SystemVolumeInfo volumes(sources(sys));
    const VolumeFacts card{true, QStringLiteral("msdos")};
    QCOMPARE(volumes.facts(root_ % u"/card/gone/and more"), card);
    QCOMPARE(volumes.facts(root_ % u"/card/"), card);
    QCOMPARE(volumes.facts(QStringLiteral("/gone")).type, QStringLiteral("ext4"));
}

void TestVolumeInfo::linkIsFollowed() {
    QVERIFY(QDir(root_).mkpath(QStringLiteral("stick/films")));
    QVERIFY(QFile::link(root_ % u"/stick/films", root_ % u"/link"));
    write(u"1 0 8:1 / / rw - ext4 /dev/sda1 rw\n2 1 8:16 / " % root_ %
          u"/stick rw - exfat /dev/sdb rw\n");
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    SystemVolumeInfo volumes(sources(sys));
    QCOMPARE(volumes.facts(root_ % u"/link"), (VolumeFacts{true, QStringLiteral("exfat")}));
}

void TestVolumeInfo::withoutAMountTable() {
    SysTree sys;
    SystemVolumeInfo::Sources none = sources(sys);
    none.mountInfo = root_ % u"/no-mountinfo";
    const VolumeFacts facts = SystemVolumeInfo(none).facts(root_);
    QCOMPARE(facts.type, QString::fromLatin1(QStorageInfo(root_).fileSystemType()));
    QVERIFY(!facts.removable);
}

void TestVolumeInfo::thisComputer() {
    SystemVolumeInfo volumes;
    const VolumeFacts processes = volumes.facts(QStringLiteral("/proc/self"));
    QCOMPARE(processes, (VolumeFacts{false, QStringLiteral("proc")}));
    // A changed root is in no mount table, and nothing is known about its volume.
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    QVERIFY(table.open(QIODevice::ReadOnly));
    const bool rootIsListed = MountTable(table.readAll()).holding(QStringLiteral("/")) != nullptr;
    QCOMPARE(volumes.facts(QStringLiteral("/")).type.isEmpty(), !rootIsListed);
}

void TestVolumeInfo::tableForTests() {
    FakeVolumes volumes;
    const VolumeFacts card{true, QStringLiteral("msdos")};
    volumes.table.insert(QStringLiteral("/card"), card);
    volumes.table.insert(QStringLiteral("/card/disk"), VolumeFacts{false, QStringLiteral("xfs")});
    QCOMPARE(volumes.facts(QStringLiteral("/card/a")), card);
    QCOMPARE(volumes.facts(QStringLiteral("/card/disk/a")).type, QStringLiteral("xfs"));
    QCOMPARE(volumes.facts(QStringLiteral("/cards")), VolumeFacts());
    QCOMPARE(volumes.asked().size(), 3);
}

REELSHIFT_TEST(test_volume_info, TestVolumeInfo, QCoreApplication)
#include "TestVolumeInfo.moc"
