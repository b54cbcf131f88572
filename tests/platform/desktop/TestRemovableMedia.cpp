#include "TestProgram.h"
#include "platform/desktop/DiskService.h"
#include "platform/desktop/PrivateBus.h"
#include "platform/desktop/RemovableMedia.h"
#include "platform/desktop/SysTree.h"
#include "platform/desktop/VolumeInfo.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTest>

#include <future>

using namespace std::chrono_literals;

/// The disk service on a private bus: what it says, and that its silence holds nobody up.
class TestRemovableMedia final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void objectPath_data();
    void objectPath();
    void answers_data();
    void answers();
    void serviceIsMissing();
    void silentServiceIsLeftAfterTheLimit_data();
    void silentServiceIsLeftAfterTheLimit();
    void silentServiceIsAskedAgainAfterARest();
    void deadBusIsLeftAfterTheLimit_data();
    void deadBusIsLeftAfterTheLimit();
    void frozenBusIsLeftAfterTheLimit();
    void serviceGoesBeforeSysfs_data();
    void serviceGoesBeforeSysfs();
    void limitIsForAllDevicesTogether();
    void manyThreadsAtOnce();

private:
    [[nodiscard]] SystemVolumeInfo::Sources sources(const SysTree& sys, const QString& device);

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<QTemporaryDir> folder_;
};

namespace {

/// Long enough for a loaded machine, far below "for ever".
constexpr qint64 graceMs = 3000;

} // namespace

void TestRemovableMedia::initTestCase() {
    if (!PrivateBus::isAvailable()) {
        QSKIP("dbus-daemon is not installed");
    }
}

void TestRemovableMedia::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    bus_ = std::make_unique<PrivateBus>();
    const QString problem = bus_->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

SystemVolumeInfo::Sources TestRemovableMedia::sources(const SysTree& sys, const QString& device) {
    SystemVolumeInfo::Sources sources;
    sources.mountInfo = folder_->filePath(QStringLiteral("mountinfo"));
    sources.sysFolder = sys.path();
    sources.busAddress = bus_->address();
    QFile mountInfo(sources.mountInfo);
    const QString line = u"1 0 " % device % u" / / rw - ext4 /dev/x rw\n";
    if (!mountInfo.open(QIODevice::WriteOnly) || mountInfo.write(line.toUtf8()) <= 0) {
        qFatal("cannot write the mount table");
    }
    return sources;
}

void TestRemovableMedia::objectPath_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("path");
    QTest::newRow("letters and digits")
        << QStringLiteral("nvme0n1p2") << QStringLiteral("nvme0n1p2");
    QTest::newRow("mapper") << QStringLiteral("dm-0") << QStringLiteral("dm_2d0");
    QTest::newRow("underscore") << QStringLiteral("a_b") << QStringLiteral("a_5fb");
}

void TestRemovableMedia::objectPath() {
    QFETCH(QString, device);
    QFETCH(QString, path);
    QCOMPARE(blockObjectPath(device), u"/org/freedesktop/UDisks2/block_devices/" % path);
}

void TestRemovableMedia::answers_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("manner");
    QTest::addColumn<int>("answer"); // -1: nothing
    const auto row = [](const char* name, const char* device, DiskService::Manner manner,
                        int answer) {
        QTest::newRow(name) << QString::fromLatin1(device) << int(manner) << answer;
    };
    row("card", "sdb1", DiskService::Manner::Answers, 1);
    row("disk in the computer", "sda1", DiskService::Manner::Answers, 0);
    row("USB hard disk", "sdc1", DiskService::Manner::Answers, 0);
    row("device without a drive", "dm-0", DiskService::Manner::Answers, -1);
    row("unknown device", "sdz1", DiskService::Manner::Answers, -1);
    row("drive that has just gone", "sdd1", DiskService::Manner::Answers, -1);
    row("answer that is no answer", "sdb1", DiskService::Manner::WrongType, -1);
}

void TestRemovableMedia::answers() {
    QFETCH(QString, device);
    QFETCH(int, manner);
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.addDrive(QStringLiteral("internal"), false, false);
    service.addDrive(QStringLiteral("card"), true, true);
    service.addDrive(QStringLiteral("usb"), true, false);
    service.addBlock(QStringLiteral("sda1"), QStringLiteral("internal"));
    service.addBlock(QStringLiteral("sdb1"), QStringLiteral("card"));
    service.addBlock(QStringLiteral("sdc1"), QStringLiteral("usb"));
    service.addBlock(QStringLiteral("sdd1"), QStringLiteral("gone"));
    service.addBlock(QStringLiteral("dm_2d0"), {});
    service.setManner(DiskService::Manner(manner));

    RemovableMedia media(bus_->address());
    const std::optional<bool> answer = media.isRemovable(device, QDeadlineTimer(30s));
    QTEST(answer ? int(*answer) : -1, "answer");
    QCOMPARE(service.asked().constFirst(), blockObjectPath(device));
}

void TestRemovableMedia::serviceIsMissing() {
    RemovableMedia media(bus_->address());
    const QDeadlineTimer deadline(30s);
    QCOMPARE(media.isRemovable(QStringLiteral("sdb1"), deadline), std::nullopt);
    QVERIFY(!deadline.hasExpired());
}

void TestRemovableMedia::silentServiceIsLeftAfterTheLimit_data() {
    QTest::addColumn<int>("manner");
    QTest::newRow("silent") << int(DiskService::Manner::Silent);
    QTest::newRow("silent on drives") << int(DiskService::Manner::SilentOnDrives);
}

void TestRemovableMedia::silentServiceIsLeftAfterTheLimit() {
    QFETCH(int, manner);
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.addDrive(QStringLiteral("card"), true, false);
    service.addBlock(QStringLiteral("sdb"), QStringLiteral("card"));
    service.setManner(DiskService::Manner(manner));
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), true);
    SystemVolumeInfo volumes(sources(sys, QStringLiteral("8:16")));

    QElapsedTimer clock;
    clock.start();
    QVERIFY(volumes.facts(QStringLiteral("/")).removable); // what sysfs says
    const qint64 first = clock.elapsed();
    QVERIFY2(first >= 900 && first < 1000 + graceMs, qPrintable(QString::number(first)));

    // The next file does not wait again.
    const qsizetype asked = service.asked().size();
    QVERIFY(volumes.facts(QStringLiteral("/")).removable);
    QCOMPARE(service.asked().size(), asked);
}

void TestRemovableMedia::silentServiceIsAskedAgainAfterARest() {
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.addDrive(QStringLiteral("card"), true, true);
    service.addBlock(QStringLiteral("sdb"), QStringLiteral("card"));
    service.setManner(DiskService::Manner::Silent);
    RemovableMedia media(bus_->address(), 10ms);
    QCOMPARE(media.isRemovable(QStringLiteral("sdb"), QDeadlineTimer(200ms)), std::nullopt);
    service.setManner(DiskService::Manner::Answers);
    QTRY_COMPARE(media.isRemovable(QStringLiteral("sdb"), QDeadlineTimer(30s)),
                 std::optional<bool>(true));
}

void TestRemovableMedia::deadBusIsLeftAfterTheLimit_data() {
    QTest::addColumn<bool>("letsIn");
    QTest::newRow("says nothing at all") << false;
    QTest::newRow("lets in and then says nothing") << true;
}

void TestRemovableMedia::deadBusIsLeftAfterTheLimit() {
    QFETCH(bool, letsIn);
    QThread thread;
    auto* server = new QLocalServer;
    const QString socket = folder_->filePath(QStringLiteral("dead-bus"));
    QVERIFY(server->listen(socket));
    if (letsIn) {
        connect(server, &QLocalServer::newConnection, server, [server] {
            QLocalSocket* client = server->nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, client, [client] {
                const QByteArray text = client->readAll();
                if (text.contains("AUTH EXTERNAL")) {
                    client->write("OK 1234deadbeef1234deadbeef12345678\r\n");
                } else if (text.contains("NEGOTIATE_UNIX_FD")) {
                    client->write("AGREE_UNIX_FD\r\n");
                }
            });
        });
    }
    server->moveToThread(&thread);
    connect(&thread, &QThread::finished, server, &QObject::deleteLater);
    thread.start();

    RemovableMedia media(u"unix:path=" % socket);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(media.isRemovable(QStringLiteral("sdb"), QDeadlineTimer(500ms)), std::nullopt);
    const qint64 elapsed = clock.elapsed();
    thread.quit();
    thread.wait();
    QVERIFY2(elapsed >= 400 && elapsed < 500 + graceMs, qPrintable(QString::number(elapsed)));
}

void TestRemovableMedia::frozenBusIsLeftAfterTheLimit() {
    bus_->freeze();
    RemovableMedia media(bus_->address());
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(media.isRemovable(QStringLiteral("sdb"), QDeadlineTimer(500ms)), std::nullopt);
    const qint64 elapsed = clock.elapsed();
    bus_->thaw();
    QVERIFY2(elapsed >= 400 && elapsed < 500 + graceMs, qPrintable(QString::number(elapsed)));
}

void TestRemovableMedia::serviceGoesBeforeSysfs_data() {
    QTest::addColumn<bool>("inService");
    QTest::addColumn<bool>("inSysfs");
    QTest::newRow("service says card") << true << false;
    QTest::newRow("service says fixed") << false << true;
}

void TestRemovableMedia::serviceGoesBeforeSysfs() {
    QFETCH(bool, inService);
    QFETCH(bool, inSysfs);
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.addDrive(QStringLiteral("d"), true, inService);
    service.addBlock(QStringLiteral("sdb1"), QStringLiteral("d"));
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), inSysfs);
    sys.addPartition(QStringLiteral("sdb"), QStringLiteral("sdb1"), QStringLiteral("8:17"));
    sys.addStacked(QStringLiteral("dm-0"), QStringLiteral("253:0"), {QStringLiteral("sdb1")});
    SystemVolumeInfo::Sources from = sources(sys, QStringLiteral("253:0"));
    from.answerLimit = 30s;
    SystemVolumeInfo volumes(from);
    QCOMPARE(volumes.facts(QStringLiteral("/")), (VolumeFacts{inService, QStringLiteral("ext4")}));
}

void TestRemovableMedia::limitIsForAllDevicesTogether() {
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.setManner(DiskService::Manner::Silent);
    SysTree sys;
    QStringList disks;
    for (int i = 0; i < 8; ++i) {
        disks += u"nvme" % QString::number(i) % u"n1";
        sys.addDisk(disks.constLast(), u"259:" % QString::number(i), false);
    }
    sys.addStacked(QStringLiteral("md0"), QStringLiteral("9:0"), disks);
    SystemVolumeInfo volumes(sources(sys, QStringLiteral("9:0")));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!volumes.facts(QStringLiteral("/")).removable);
    const qint64 elapsed = clock.elapsed();
    QVERIFY2(elapsed < 1000 + graceMs, qPrintable(QString::number(elapsed)));
    QCOMPARE(service.asked().size(), 1);
}

void TestRemovableMedia::manyThreadsAtOnce() {
    DiskService service(bus_->address());
    QVERIFY(service.isReady());
    service.addDrive(QStringLiteral("card"), true, true);
    service.addBlock(QStringLiteral("sdb"), QStringLiteral("card"));
    SysTree sys;
    sys.addDisk(QStringLiteral("sdb"), QStringLiteral("8:16"), false);
    SystemVolumeInfo::Sources from = sources(sys, QStringLiteral("8:16"));
    from.answerLimit = 30s;
    SystemVolumeInfo volumes(from);
    std::vector<std::future<bool>> workers;
    for (int i = 0; i < 8; ++i) {
        workers.push_back(std::async(std::launch::async, [&volumes] {
            return volumes.facts(QStringLiteral("/")).removable;
        }));
    }
    for (std::future<bool>& worker : workers) {
        QVERIFY(worker.get());
    }
}

REELSHIFT_TEST(test_removable_media, TestRemovableMedia, QCoreApplication)
#include "TestRemovableMedia.moc"
