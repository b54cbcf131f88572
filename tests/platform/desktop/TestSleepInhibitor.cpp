#include "TestProgram.h"
#include "platform/desktop/PrivateBus.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/SleepServices.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QString sleepConnection = QStringLiteral("test-sleep-services");
const QString reason = QStringLiteral("because");

} // namespace

/// Keeping the machine awake by the login manager and by the session.
class TestSleepInhibitor final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void lockIsHeldAndReleased();
    void heldAgain();
    void secondHoldAsksNothing();
    void bothAreAsked();
    void portalKnowsWhoAsks();
    void silentRegistry();
    void screenSaverWhereThePortalHasNone_data();
    void screenSaverWhereThePortalHasNone();
    void oneOfTheTwoIsEnough_data();
    void oneOfTheTwoIsEnough();
    void refusedByAll_data();
    void refusedByAll();
    void refusedWithoutABus_data();
    void refusedWithoutABus();
    void silentServicesAreARefusalAfterAWhile();
    void silentBusIsNotFelt();
    void lateLockIsGivenBackAtOnce();
    void latePortalRequestIsGivenBackAtOnce();
    void nothingIsHeldAfterTheEnd();

private:
    struct Inhibitor {
        explicit Inhibitor(const TestSleepInhibitor& test,
                           std::chrono::milliseconds limit = std::chrono::seconds(10))
            : inhibitor(test.bus_->address(), test.bus_->address(), limit) {}

        DesktopSleepInhibitor inhibitor;
        QSignalSpy granted{&inhibitor, &SleepInhibitor::granted};
        QSignalSpy refused{&inhibitor, &SleepInhibitor::refused};
    };

    void offer(const QString& service, const QString& path, QObject* object);

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<LoginManager> login_;
    std::unique_ptr<Portal> portal_;
    std::unique_ptr<ScreenSaver> screenSaver_;
};

void TestSleepInhibitor::initTestCase() {
    if (!PrivateBus::isAvailable())
        QSKIP("dbus-daemon is not installed");
    QCoreApplication::setApplicationName(QStringLiteral("Program"));
}

void TestSleepInhibitor::init() {
    bus_ = std::make_unique<PrivateBus>();
    const QString problem = bus_->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    login_ = std::make_unique<LoginManager>();
    portal_ = std::make_unique<Portal>();
    screenSaver_ = std::make_unique<ScreenSaver>();
    QDBusConnection bus = QDBusConnection::connectToBus(bus_->address(), sleepConnection);
    offer(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
          login_.get());
    offer(QStringLiteral("org.freedesktop.portal.Desktop"),
          QStringLiteral("/org/freedesktop/portal/desktop"), portal_.get());
    offer(QStringLiteral("org.freedesktop.ScreenSaver"),
          QStringLiteral("/org/freedesktop/ScreenSaver"), screenSaver_.get());
    QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop/request/1_1/t"),
                               &portal_->request, QDBusConnection::ExportAllSlots));
}

void TestSleepInhibitor::offer(const QString& service, const QString& path, QObject* object) {
    QDBusConnection bus(sleepConnection);
    QVERIFY(bus.registerObject(path, object,
                               QDBusConnection::ExportAllSlots | QDBusConnection::ExportAdaptors));
    QVERIFY(bus.registerService(service));
}

void TestSleepInhibitor::cleanup() {
    QDBusConnection::disconnectFromBus(sleepConnection);
    screenSaver_.reset();
    portal_.reset();
    login_.reset();
    bus_.reset();
}

void TestSleepInhibitor::lockIsHeldAndReleased() {
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    QTRY_VERIFY(!keeper.granted.isEmpty());
    QTRY_COMPARE(login_->calls, QStringList{QStringLiteral("sleep:idle|Program|because|block")});
    QTRY_COMPARE(login_->heldLocks(), 1);
    QTRY_VERIFY(portal_->request.isOpen);
    keeper.inhibitor.release();
    QTRY_COMPARE(login_->heldLocks(), 0);
    QTRY_VERIFY(!portal_->request.isOpen);
    QVERIFY(keeper.refused.isEmpty());
    QTRY_VERIFY(keeper.inhibitor.children().isEmpty());
}

void TestSleepInhibitor::heldAgain() {
    Inhibitor keeper(*this);
    for (int round = 1; round <= 3; ++round) {
        keeper.inhibitor.hold(reason);
        QTRY_COMPARE(keeper.granted.size(), 2 * round);
        QCOMPARE(login_->heldLocks(), 1);
        keeper.inhibitor.release();
        QTRY_COMPARE(login_->heldLocks(), 0);
    }
    QCOMPARE(login_->calls.size(), 3);
}

void TestSleepInhibitor::secondHoldAsksNothing() {
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(keeper.granted.size(), 2);
    QCOMPARE(login_->calls.size(), 1);
    QCOMPARE(portal_->calls.size(), 1);
}

void TestSleepInhibitor::bothAreAsked() {
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(keeper.granted.size(), 2);
    QCOMPARE(portal_->calls, QStringList{QStringLiteral("|13|because")});
    QVERIFY(screenSaver_->calls.isEmpty());
}

// GNOME's session refuses a program without a name, and the portal does not tell that it does.
void TestSleepInhibitor::portalKnowsWhoAsks() {
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(keeper.granted.size(), 2);
    QCOMPARE(portal_->programs, QStringList{QStringLiteral("example.quorvex.reelshift")});
}

void TestSleepInhibitor::silentRegistry() {
    portal_->registry.isSilent = true;
    Inhibitor keeper(*this, 300ms);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(screenSaver_->held.size(), 1);
    QVERIFY(portal_->calls.isEmpty());
}

void TestSleepInhibitor::screenSaverWhereThePortalHasNone_data() {
    QTest::addColumn<Manner>("portal");
    QTest::newRow("refuses") << Manner::Refuses;
    QTest::newRow("silent") << Manner::Silent;
    QTest::newRow("nonsense") << Manner::WrongType;
}

void TestSleepInhibitor::screenSaverWhereThePortalHasNone() {
    QFETCH(Manner, portal);
    portal_->manner = portal;
    Inhibitor keeper(*this, 300ms);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(screenSaver_->calls, QStringList{QStringLiteral("Program|because")});
    QTRY_COMPARE(keeper.granted.size(), 2);
    QCOMPARE(screenSaver_->held.size(), 1);
    keeper.inhibitor.release();
    QTRY_VERIFY(screenSaver_->held.isEmpty());
}

void TestSleepInhibitor::oneOfTheTwoIsEnough_data() {
    QTest::addColumn<Manner>("login");
    QTest::addColumn<Manner>("session");
    QTest::newRow("login manager") << Manner::Grants << Manner::Refuses;
    QTest::newRow("session") << Manner::Refuses << Manner::Grants;
    QTest::newRow("login manager, silent session") << Manner::Grants << Manner::Silent;
}

void TestSleepInhibitor::oneOfTheTwoIsEnough() {
    QFETCH(Manner, login);
    QFETCH(Manner, session);
    login_->manner = login;
    portal_->manner = session;
    screenSaver_->manner = session;
    Inhibitor keeper(*this, 300ms);
    keeper.inhibitor.hold(reason);
    // Nothing is left in question: one holds, the other has deleted itself.
    QTRY_COMPARE(keeper.inhibitor.children().size(), 1);
    QTRY_COMPARE(keeper.granted.size(), 1);
    QVERIFY(keeper.refused.isEmpty());
}

void TestSleepInhibitor::refusedByAll_data() {
    QTest::addColumn<Manner>("manner");
    QTest::newRow("refuse") << Manner::Refuses;
    QTest::newRow("nonsense") << Manner::WrongType;
}

void TestSleepInhibitor::refusedByAll() {
    QFETCH(Manner, manner);
    login_->manner = portal_->manner = screenSaver_->manner = manner;
    Inhibitor keeper(*this);
    for (int round = 1; round <= 2; ++round) {
        keeper.inhibitor.hold(reason);
        QTRY_COMPARE(keeper.refused.size(), round);
        QVERIFY(keeper.granted.isEmpty());
        keeper.inhibitor.release();
        QTRY_VERIFY(keeper.inhibitor.children().isEmpty());
    }
}

void TestSleepInhibitor::refusedWithoutABus_data() {
    QTest::addColumn<QString>("address");
    QTest::newRow("no address") << QString();
    QTest::newRow("nobody listens") << QStringLiteral("unix:path=/nonexistent/bus");
    QTest::newRow("nonsense") << QStringLiteral("nonsense");
}

void TestSleepInhibitor::refusedWithoutABus() {
    QFETCH(QString, address);
    DesktopSleepInhibitor inhibitor(address, address);
    QSignalSpy refused(&inhibitor, &SleepInhibitor::refused);
    inhibitor.hold(reason);
    QTRY_COMPARE(refused.size(), 1);
    inhibitor.release();
    inhibitor.hold(reason);
    QTRY_COMPARE(refused.size(), 2);
}

void TestSleepInhibitor::silentServicesAreARefusalAfterAWhile() {
    login_->manner = portal_->manner = screenSaver_->manner = Manner::Silent;
    Inhibitor keeper(*this, 300ms);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(keeper.refused.size(), 1);
    // A lock that comes even later finds nobody.
    login_->grantLate();
    QTRY_COMPARE(login_->heldLocks(), 0);
    QVERIFY(keeper.granted.isEmpty());
}

void TestSleepInhibitor::silentBusIsNotFelt() {
    bus_->freeze();
    QElapsedTimer clock;
    clock.start();
    {
        Inhibitor keeper(*this, 2s);
        keeper.inhibitor.hold(reason);
        keeper.inhibitor.release();
        keeper.inhibitor.hold(reason);
        QVERIFY2(clock.elapsed() < 500, qPrintable(QString::number(clock.elapsed())));
        QTRY_COMPARE(keeper.refused.size(), 1);
        keeper.inhibitor.release();
        keeper.inhibitor.hold(reason);
        clock.restart();
    }
    QVERIFY2(clock.elapsed() < 500, qPrintable(QString::number(clock.elapsed())));
    bus_->thaw();
    QTRY_COMPARE(login_->heldLocks(), 0);
}

void TestSleepInhibitor::lateLockIsGivenBackAtOnce() {
    login_->manner = Manner::Silent;
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(login_->calls.size(), 1);
    keeper.inhibitor.release();
    login_->grantLate();
    QCOMPARE(login_->heldLocks(), 1);
    QTRY_COMPARE(login_->heldLocks(), 0);
    QVERIFY(keeper.inhibitor.children().isEmpty());
}

void TestSleepInhibitor::latePortalRequestIsGivenBackAtOnce() {
    login_->manner = Manner::Refuses;
    portal_->manner = Manner::Silent;
    Inhibitor keeper(*this);
    keeper.inhibitor.hold(reason);
    QTRY_COMPARE(portal_->calls.size(), 1);
    keeper.inhibitor.release();
    portal_->grantLate();
    QVERIFY(portal_->request.isOpen);
    QTRY_VERIFY(!portal_->request.isOpen);
    QTRY_VERIFY(keeper.inhibitor.children().isEmpty());
    QVERIFY(keeper.granted.isEmpty());
    QVERIFY(screenSaver_->calls.isEmpty());
}

void TestSleepInhibitor::nothingIsHeldAfterTheEnd() {
    portal_->manner = Manner::Refuses;
    {
        Inhibitor keeper(*this);
        keeper.inhibitor.hold(reason);
        QTRY_COMPARE(keeper.granted.size(), 2);
        QCOMPARE(login_->heldLocks(), 1);
        QCOMPARE(screenSaver_->held.size(), 1);
    }
    QTRY_COMPARE(login_->heldLocks(), 0);
    QTRY_VERIFY(screenSaver_->held.isEmpty());
}

REELSHIFT_TEST(test_sleep_inhibitor, TestSleepInhibitor, QGuiApplication)
#include "TestSleepInhibitor.moc"
