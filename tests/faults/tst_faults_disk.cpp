#include "TestProgram.h"
#include "app/RunChecks.h"
#include "convert/EncoderCommand.h"
#include "faults/FaultRows.h"
#include "media/ProfileCatalogue.h"

#include <QApplication>
#include <QProcess>

#include <memory>

#include <sys/mount.h>

/// Disks that are too small, and output folders that go away or cannot be written.
class TestFaultsDisk final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void disk_data();
    void disk();

private:
    static void full();
    static void folder();

    FaultTable table_;
};

namespace {

/// A small disk of its own; goes with the last copy of the pointer.
class SmallDisk final {
public:
    /// Null where nothing can be mounted.
    static std::shared_ptr<SmallDisk> mount(const QString& folder, const QByteArray& options) {
        QDir().mkpath(folder);
        if (::mount("none", qPrintable(folder), "tmpfs", 0, options.constData()) != 0)
            return nullptr;
        return std::make_shared<SmallDisk>(folder);
    }
    explicit SmallDisk(QString folder) : folder_(std::move(folder)) {}
    ~SmallDisk() { ::umount2(qPrintable(folder_), MNT_DETACH); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool makeReadOnly() const {
        return ::mount("none", qPrintable(folder_), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    const QString folder_;
};

const QString cannotMount = QStringLiteral("nothing can be mounted here");
const RealMovies::Wish busy{.source =
                                QStringLiteral("mandelbrot=size=640x480:rate=25,trim=duration=4")};

QString addBusy(FaultScene& scene, const RealMovies::Wish& wish = {}) {
    if (scene.isRealEncoder()) {
        if (!scene.makeReal(badName, wish))
            return QStringLiteral("no movie could be made");
        scene.add(badName);
    } else if (!scene.addGood(badName)) {
        return QStringLiteral("no movie could be written");
    }
    return scene.addGood(goodName) ? QString() : QStringLiteral("no movie could be made");
}

/// How large the encoder's output is where there is room.
qint64 outputSize(const FaultScene& scene) {
    const QString output = scene.program.path(QStringLiteral("dry.mp4"));
    QProcess::execute(ControllerFixture::launcher(),
                      QStringList{QStringLiteral("-loglevel"), QStringLiteral("quiet")} +
                          encoderArguments(ProfileKind::HighQuality, scene.source(badName),
                                           QStringLiteral("640x480"), output, true));
    return QFileInfo(output).size();
}

} // namespace

void TestFaultsDisk::disk_data() {
    QTest::addColumn<Fault>("fault");
    full();
    folder();
}

void TestFaultsDisk::disk() {
    SURVIVE(table_);
}

void TestFaultsDisk::full() {
    const auto onDiskOf = [](const std::function<qint64(qint64)>& sizeFor) {
        return [sizeFor](FaultScene& scene) {
            const QString problem = addBusy(scene, busy);
            if (!problem.isEmpty())
                return problem;
            const QString folder = scene.program.path(QStringLiteral("disk"));
            const qint64 size = sizeFor(outputSize(scene));
            const auto disk = SmallDisk::mount(folder, "size=" + QByteArray::number(size));
            if (!disk)
                return cannotMount;
            scene.keep(disk);
            scene.setOutputFolder(folder);
            return QString();
        };
    };
    addDiskFullRow({.name = QStringLiteral("the disk is full in the middle"),
                    .encoder = Encoder::Real,
                    .prepare = onDiskOf([](qint64 whole) { return whole / 2 / 4096 * 4096; })});
    // The pictures fit, the index after them does not.
    addDiskFullRow({.name = QStringLiteral("the disk is full at the very end"),
                    .encoder = Encoder::Real,
                    .prepare = onDiskOf([](qint64 whole) { return (whole - 1) / 4096 * 4096; })});
    addDiskFullRow(
        {.name = QStringLiteral("the file may not grow (a limit of the system)"),
         .encoder = Encoder::Real,
         .prepare = [](FaultScene& scene) {
             const QString problem = addBusy(scene, busy);
             const QString encoder = scene.program.resources() + QStringLiteral("/ffmpeg");
             QFile::remove(encoder);
             writeContent(encoder, "#!/bin/sh\ntrap '' XFSZ\nulimit -f 200\nexec '" +
                                       ControllerFixture::launcher().toUtf8() + "' \"$@\"\n");
             QFile::setPermissions(encoder, QFile::ReadOwner | QFile::ExeOwner);
             return problem;
         }});
    addDiskFullRow({.name = QStringLiteral("the quota is full (texts: see the encoder's table)"),
                    .encoder = Encoder::Real,
                    .prepare = [](FaultScene&) {
                        return QStringLiteral("no file system with quotas can be mounted here");
                    }});
}

void TestFaultsDisk::folder() {
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        const auto separate = [](FaultScene& scene) {
            scene.setOutputFolder(scene.program.path(QStringLiteral("out")));
            QDir().mkpath(scene.outputFolder());
            return addBusy(scene);
        };
        const auto goes = [](FaultScene& scene) {
            QVERIFY(
                QDir().rename(scene.outputFolder(), scene.program.path(QStringLiteral("away"))));
        };
        Fault before{.name = QStringLiteral("the output folder is gone before the run"),
                     .answer = QStringLiteral("OK"),
                     .encoder = encoder,
                     .prepare = separate,
                     .boxes = {{folderGoneBox}},
                     .waiting = QStringList({badName, goodName})};
        before.prepare = [separate, goes](FaultScene& scene) {
            const QString problem = separate(scene);
            goes(scene);
            return problem;
        };
        addRow(before);

        Fault during{.name = QStringLiteral("the output folder goes during the run"),
                     .answer = QStringLiteral("Skip, Skip"),
                     .encoder = encoder,
                     .prepare = separate,
                     .meanwhile =
                         [goes](FaultScene& scene) {
                             QVERIFY(scene.waitForProgress());
                             goes(scene);
                         },
                     .boxes = {{errorBox, 1001}, {errorBox, 1001}, {summaryBox}},
                     .waiting = QStringList({badName, goodName})};
        addRow(during);
        during.answer = QStringLiteral("Stop");
        during.boxes = {{errorBox, 1000}, {summaryBox}};
        addRow(during);

        Fault readOnly{.name = QStringLiteral("the output folder cannot be written"),
                       .answer = QStringLiteral("Skip, Skip"),
                       .encoder = encoder,
                       .prepare =
                           [](FaultScene& scene) {
                               const QString folder = scene.program.path(QStringLiteral("disk"));
                               const auto disk = SmallDisk::mount(folder, "size=4m");
                               if (!disk)
                                   return cannotMount;
                               scene.keep(disk);
                               writeContent(folder + QStringLiteral("/older.mp4"), "old");
                               scene.setOutputFolder(folder);
                               if (!disk->makeReadOnly())
                                   return QStringLiteral("nothing can be made read-only here");
                               return addBusy(scene);
                           },
                       .boxes = {{errorBox, 1001}, {errorBox, 1001}, {summaryBox}},
                       .waiting = QStringList({badName, goodName})};
        addRow(readOnly);
        readOnly.answer = QStringLiteral("Stop");
        readOnly.boxes = {{errorBox, 1000}, {summaryBox}};
        addRow(readOnly);
    }
}

REELSHIFT_TEST(tst_faults_disk, TestFaultsDisk, QApplication)
#include "tst_faults_disk.moc"
