#include "TestProgram.h"
#include "platform/DeadShare.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace std::chrono_literals;

/// A file manager on the session bus that notes what it is asked to show.
class FileManagerService final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    enum class Manner { Shows, Refuses, Silent };

    QStringList calls;
    Manner manner = Manner::Shows;

public Q_SLOTS:
    void ShowFolders(const QStringList& uris, const QString& startupId) {
        note(QStringLiteral("ShowFolders"), uris, startupId);
    }
    void ShowItems(const QStringList& uris, const QString& startupId) {
        note(QStringLiteral("ShowItems"), uris, startupId);
    }

private:
    void note(const QString& method, const QStringList& uris, const QString& startupId) {
        calls += method % u' ' % uris.join(u' ') % u" [" % startupId % u']';
        if (manner == Manner::Silent) {
            setDelayedReply(true);
        } else if (manner == Manner::Refuses) {
            sendErrorReply(QDBusError::Failed, QStringLiteral("not today"));
        }
    }
};

/// Showing a folder through the desktop's file manager, or else through the desktop.
class TestFileManager final : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void openUrl(const QUrl& url) { opened_ += url; }

private Q_SLOTS:
    void init();
    void cleanup();
    void folderIsShown();
    void nameIsEncoded();
    void fileIsSelectedInItsFolder();
    void desktopOpensWithoutABus_data();
    void desktopOpensWithoutABus();
    void desktopOpensWithoutAFileManager();
    void desktopOpensAfterARefusal();
    void desktopOpensAfterSilence();
    void fileOpensItsFolder();
    void aFolderThatDoesNotAnswer();
    void destroyedWhileWaiting();
    void sessionBusOfTheEnvironment_data();
    void sessionBusOfTheEnvironment();

private:
    void startService();

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<FileManagerService> service_;
    QList<QUrl> opened_;
};

namespace {

const QString fileManagerConnection = QStringLiteral("test-file-manager");

} // namespace

void TestFileManager::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    service_ = std::make_unique<FileManagerService>();
    opened_.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
}

void TestFileManager::cleanup() {
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QDBusConnection::disconnectFromBus(fileManagerConnection);
    service_.reset();
    bus_.reset();
}

/// Starts the private bus with the file manager on it.
void TestFileManager::startService() {
    if (!PrivateBus::isAvailable()) {
        QSKIP("dbus-daemon is not installed");
    }
    bus_ = std::make_unique<PrivateBus>();
    const QString problem = bus_->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QDBusConnection connection =
        QDBusConnection::connectToBus(bus_->address(), fileManagerConnection);
    QVERIFY(connection.registerObject(QStringLiteral("/org/freedesktop/FileManager1"),
                                      service_.get(), QDBusConnection::ExportAllSlots));
    QVERIFY(connection.registerService(QStringLiteral("org.freedesktop.FileManager1")));
}

#define START_SERVICE()                                                                            \
    startService();                                                                                \
    if (QTest::currentTestFailed() || !bus_) {                                                     \
        return;                                                                                    \
    }

void TestFileManager::folderIsShown() {
    START_SERVICE()
    DesktopFileManager manager(bus_->address());
    manager.showFolder(folder_->path());
    QTRY_COMPARE(service_->calls.size(), 1);
    QCOMPARE(service_->calls.constFirst(), u"ShowFolders file://" % folder_->path() % u" []");
    // Nothing else opens it when the answer is in.
    QTRY_VERIFY(manager.children().isEmpty());
    QVERIFY(opened_.isEmpty());
}

void TestFileManager::nameIsEncoded() {
    START_SERVICE()
    const QString name = QString::fromUtf8("My films #1 100%?\xC3\xA4&b=c;d");
    QVERIFY(QDir(folder_->path()).mkdir(name));
    DesktopFileManager manager(bus_->address());
    manager.showFolder(folder_->filePath(name));
    QTRY_COMPARE(service_->calls.size(), 1);
    QCOMPARE(service_->calls.constFirst(), u"ShowFolders file://" % folder_->path() %
                                               u"/My%20films%20%231%20100%25%3F%C3%A4&b=c;d []");
}

void TestFileManager::fileIsSelectedInItsFolder() {
    START_SERVICE()
    QFile file(folder_->filePath(QStringLiteral("a.mp4")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    DesktopFileManager manager(bus_->address());
    manager.showFolder(file.fileName());
    QTRY_COMPARE(service_->calls.size(), 1);
    QCOMPARE(service_->calls.constFirst(), u"ShowItems file://" % file.fileName() % u" []");
}

void TestFileManager::desktopOpensWithoutABus_data() {
    QTest::addColumn<QString>("address");
    QTest::newRow("no address") << QString();
    QTest::newRow("nobody listens") << QStringLiteral("unix:path=/nonexistent/bus");
    QTest::newRow("nonsense") << QStringLiteral("nonsense");
}

void TestFileManager::desktopOpensWithoutABus() {
    QFETCH(QString, address);
    DesktopFileManager manager(address);
    manager.showFolder(folder_->path());
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});
}

void TestFileManager::desktopOpensWithoutAFileManager() {
    START_SERVICE()
    QVERIFY(QDBusConnection(fileManagerConnection)
                .unregisterService(QStringLiteral("org.freedesktop.FileManager1")));
    DesktopFileManager manager(bus_->address());
    manager.showFolder(folder_->path());
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});
    QVERIFY(service_->calls.isEmpty());
}

void TestFileManager::desktopOpensAfterARefusal() {
    START_SERVICE()
    service_->manner = FileManagerService::Manner::Refuses;
    DesktopFileManager manager(bus_->address());
    manager.showFolder(folder_->path());
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});
    QCOMPARE(service_->calls.size(), 1);
}

void TestFileManager::desktopOpensAfterSilence() {
    START_SERVICE()
    bus_->freeze();
    QElapsedTimer clock;
    clock.start();
    DesktopFileManager manager(bus_->address(), 1s);
    manager.showFolder(folder_->path());
    const qint64 blocked = clock.elapsed();
    QVERIFY2(blocked < 900, qPrintable(QString::number(blocked)));
    QVERIFY(opened_.isEmpty());
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});
    QVERIFY(clock.elapsed() >= 900);
    bus_->thaw();
}

void TestFileManager::fileOpensItsFolder() {
    QFile file(folder_->filePath(QStringLiteral("a.mp4")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    DesktopFileManager manager{QString()};
    manager.showFolder(file.fileName());
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});
}

void TestFileManager::aFolderThatDoesNotAnswer() {
    DesktopFileManager manager{QString()};
    auto share = std::make_unique<DeadShare>(folder_->path());
    manager.showFolder(folder_->path());
    QTRY_COMPARE(DeadShare::hangingCalls(), 1);
    QVERIFY(opened_.isEmpty());
    share.reset();
    QTRY_COMPARE(opened_, QList<QUrl>{QUrl::fromLocalFile(folder_->path())});

    // One that comes back after the program's end says nothing.
    share = std::make_unique<DeadShare>(folder_->path());
    auto other = std::make_unique<DesktopFileManager>(QString());
    other->showFolder(folder_->path());
    QTRY_COMPARE(DeadShare::hangingCalls(), 1);
    other.reset();
    share.reset();
    QTRY_COMPARE(DeadShare::hangingCalls(), 0);
    QCOMPARE(opened_.size(), 1);
}

void TestFileManager::destroyedWhileWaiting() {
    START_SERVICE()
    service_->manner = FileManagerService::Manner::Silent;
    auto manager = std::make_unique<DesktopFileManager>(bus_->address(), 200ms);
    manager->showFolder(folder_->path());
    QTRY_COMPARE(service_->calls.size(), 1);
    manager.reset();
    // A second one that waits as long is told of the silence; by then the first would have been.
    DesktopFileManager other(bus_->address(), 200ms);
    other.showFolder(folder_->path());
    QTRY_COMPARE(opened_.size(), 1);
    QTRY_VERIFY(other.children().isEmpty());
    QCOMPARE(opened_.size(), 1);
}

void TestFileManager::sessionBusOfTheEnvironment_data() {
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<bool>("hasSocket");
    QTest::addColumn<QString>("address"); // %1: the runtime folder
    QTest::newRow("given") << QByteArray("unix:abstract=/x") << true
                           << QStringLiteral("unix:abstract=/x");
    QTest::newRow("socket") << QByteArray() << true << QStringLiteral("unix:path=%1/bus");
    QTest::newRow("none") << QByteArray() << false << QString();
}

void TestFileManager::sessionBusOfTheEnvironment() {
    QFETCH(QByteArray, given);
    QFETCH(bool, hasSocket);
    QFETCH(QString, address);
    const QByteArray oldAddress = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray oldFolder = qgetenv("XDG_RUNTIME_DIR");
    qputenv("DBUS_SESSION_BUS_ADDRESS", given);
    qputenv("XDG_RUNTIME_DIR", folder_->path().toUtf8());
    if (hasSocket) {
        QFile socket(folder_->filePath(QStringLiteral("bus")));
        QVERIFY(socket.open(QIODevice::WriteOnly));
    }
    const QString found = sessionBusAddress();
    qputenv("DBUS_SESSION_BUS_ADDRESS", oldAddress);
    qputenv("XDG_RUNTIME_DIR", oldFolder);
    QCOMPARE(found, address.contains(u"%1") ? address.arg(folder_->path()) : address);
}

REELSHIFT_TEST(test_file_manager, TestFileManager, QGuiApplication)
#include "TestFileManager.moc"
