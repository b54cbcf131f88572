#include "TestProgram.h"
#include "app/AsNobody.h"
#include "app/FolderFiles.h"
#include "app/PersistedFolders.h"
#include "app/RunChecks.h"
#include "faults/FaultRows.h"

#include <QApplication>
#include <QDir>

/// Faults of the user's own folders: the program starts, converts and ends all the same.
class TestFaultsFolders final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void folders_data();
    void folders();

private:
    static void files();
    static void documents();
    static void home();

    FaultTable table_;
};

namespace {

QString fileOf(const FaultScene& scene, const QString& name) {
    return scene.program.output(name);
}

/// Its end puts the folder that was shown into the file.
QString writesTheFolder(FaultScene& scene) {
    const QByteArray shown = scene.outputFolder().toUtf8();
    scene.program.quit();
    return contentOf(fileOf(scene, PersistedFolders::DEFAULT_PATH_COMPONENT)) == shown
               ? QString()
               : QStringLiteral("the folder was not written at the end");
}

QString showsDefaultFolder(FaultScene& scene) {
    scene.restart();
    return scene.outputFolder() == scene.program.documents()
               ? addBoth(scene)
               : QStringLiteral("shows ") + scene.outputFolder();
}

/// Converts elsewhere, because nothing can be written at home.
QString convertElsewhere(FaultScene& scene) {
    QDir().mkpath(scene.program.path(QStringLiteral("out")));
    scene.setOutputFolder(scene.program.path(QStringLiteral("out")));
    return addBoth(scene);
}

} // namespace

void TestFaultsFolders::folders_data() {
    QTest::addColumn<Fault>("fault");
    files();
    documents();
    home();
}

void TestFaultsFolders::folders() {
    SURVIVE(table_);
}

void TestFaultsFolders::files() {
    for (const FolderFile& each : filesWithoutFolder()) {
        if (each.content.size() < 1 << 20 && !each.content.contains('\0') &&
            QString::fromUtf8(each.content).toUtf8() == each.content)
            continue; // another folder, or none: nothing that the table is about
        Fault fault{.name = QStringLiteral("folder files: ") + QString::fromLatin1(each.what),
                    .prepare =
                        [content = each.content](FaultScene& scene) {
                            scene.program.quit();
                            const QString there = scene.program.path(QStringLiteral("there"));
                            QDir().mkpath(there);
                            const QByteArray bytes = QByteArray(content).replace(
                                "F/", scene.program.path(QString()).toUtf8());
                            for (const QString& name : {PersistedFolders::DEFAULT_PATH_COMPONENT,
                                                        PersistedFolders::ADD_FILE_COMPONENT})
                                writeContent(fileOf(scene, name), bytes);
                            return showsDefaultFolder(scene);
                        },
                    .afterwards = writesTheFolder,
                    .second = std::chrono::milliseconds(20)};
        addHarmlessRow(fault);
    }
    addHarmlessRow({.name = QStringLiteral("folder files: folders in their place"),
                    .prepare =
                        [](FaultScene& scene) {
                            scene.program.quit();
                            for (const QString& name : {PersistedFolders::DEFAULT_PATH_COMPONENT,
                                                        PersistedFolders::ADD_FILE_COMPONENT}) {
                                QFile::remove(fileOf(scene, name));
                                QDir().mkpath(fileOf(scene, name) + QStringLiteral("/in the way"));
                            }
                            return showsDefaultFolder(scene);
                        },
                    .afterwards =
                        [](FaultScene& scene) {
                            scene.program.quit();
                            return QDir(fileOf(scene, PersistedFolders::ADD_FILE_COMPONENT) +
                                        QStringLiteral("/in the way"))
                                           .exists()
                                       ? QString()
                                       : QStringLiteral("the user's folder is gone");
                        }});
}

void TestFaultsFolders::documents() {
    addRow({.name = QStringLiteral("the documents folder is missing"),
            .answer = QStringLiteral("OK"),
            .prepare =
                [](FaultScene& scene) {
                    scene.program.quit();
                    QDir(scene.program.documents()).removeRecursively();
                    return showsDefaultFolder(scene);
                },
            .boxes = {{folderGoneBox}},
            .waiting = QStringList({badName, goodName}),
            .afterwards =
                [](FaultScene& scene) {
                    scene.program.quit();
                    return QFile::exists(scene.program.documents())
                               ? QStringLiteral("a documents folder was made")
                               : QString();
                }});
    addHarmlessRow(
        {.name = QStringLiteral("the documents folder cannot be written"),
         .prepare =
             [](FaultScene& scene) {
                 QFile::setPermissions(scene.program.path(QString()),
                                       QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                           QFile::ReadOther | QFile::ExeOther);
                 QFile::setPermissions(scene.program.documents(),
                                       QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                           QFile::ExeOther);
                 return convertElsewhere(scene);
             },
         .afterwards =
             [](FaultScene& scene) {
                 {
                     const AsNobody nobody;
                     scene.program.quit();
                 }
                 const bool isEmpty = QDir(scene.program.documents()).isEmpty();
                 QFile::setPermissions(scene.program.documents(),
                                       QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
                 return isEmpty ? QString() : QStringLiteral("something was written");
             }});
}

void TestFaultsFolders::home() {
    const auto withoutHome = [](FaultScene& scene) {
        if (QFile::exists(QStringLiteral("/Documents")))
            return QStringLiteral("there is a folder /Documents here");
        const QByteArray home = qgetenv("HOME");
        scene.keep(std::shared_ptr<void>(nullptr, [home](void*) { qputenv("HOME", home); }));
        qunsetenv("HOME");
        scene.program.ofTheUser = true;
        scene.restart();
        return scene.outputFolder() == QStringLiteral("/Documents")
                   ? QString()
                   : QStringLiteral("shows ") + scene.outputFolder();
    };
    addRow({.name = QStringLiteral("HOME is not set"),
            .answer = QStringLiteral("OK"),
            .prepare =
                [withoutHome](FaultScene& scene) {
                    const QString problem = withoutHome(scene);
                    return problem.isEmpty() ? addBoth(scene) : problem;
                },
            .boxes = {{folderGoneBox}},
            .waiting = QStringList({badName, goodName})});
    addHarmlessRow({.name = QStringLiteral("HOME is not set, another folder is selected"),
                    .prepare =
                        [withoutHome](FaultScene& scene) {
                            const QString problem = withoutHome(scene);
                            return problem.isEmpty() ? convertElsewhere(scene) : problem;
                        },
                    .afterwards =
                        [](FaultScene& scene) {
                            scene.program.quit();
                            return QFile::exists(QStringLiteral("/Documents"))
                                       ? QStringLiteral("/Documents was made")
                                       : QString();
                        }});
}

REELSHIFT_TEST(tst_faults_folders, TestFaultsFolders, QApplication)
#include "tst_faults_folders.moc"
