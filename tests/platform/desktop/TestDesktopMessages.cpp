#include "TestProgram.h"
#include "platform/desktop/LauncherProgress.h"
#include "platform/desktop/Notifications.h"
#include "platform/desktop/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QString messagesConnection = QStringLiteral("test-desktop-messages");

} // namespace

/// A notification service that notes what it is asked to show.
class NotificationService final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Note {
        QStringList texts; ///< program, icon, summary, body
        uint replaces = 0;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };

    QList<Note> notes;
    QStringList senders;
    bool refuses = false;

public Q_SLOTS:
    uint Notify(const QString& program, uint replaces, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints,
                int timeout) {
        notes += Note{{program, icon, summary, body}, replaces, actions, hints, timeout};
        senders += message().service();
        if (refuses)
            sendErrorReply(QDBusError::Failed, QStringLiteral("not today"));
        return static_cast<uint>(notes.size());
    }
};

/// Notifications and the bar on the program's icon, as the session bus has them.
class TestDesktopMessages final : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void update(const QString& application, const QVariantMap& properties) {
        applications_ += application;
        updates_ += properties;
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void notificationIsShown();
    void senderStaysOnTheBus();
    void bodyIsNoMarkup();
    void refusedNotificationIsForgotten();
    void notificationWithoutABus_data();
    void notificationWithoutABus();
    void barIsShownAndHidden();
    void barIsNotMovedTooOften();
    void barHiddenWhileItRests();
    void barWithoutABus_data();
    void barWithoutABus();
    void silentBusIsNotFelt();

private:
    [[nodiscard]] QList<double> shares() const;

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<NotificationService> service_;
    QStringList applications_;
    QList<QVariantMap> updates_;
};

void TestDesktopMessages::initTestCase() {
    if (!PrivateBus::isAvailable())
        QSKIP("dbus-daemon is not installed");
    QCoreApplication::setApplicationName(QStringLiteral("Program"));
}

void TestDesktopMessages::init() {
    applications_.clear();
    updates_.clear();
    bus_ = std::make_unique<PrivateBus>();
    const QString problem = bus_->start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    service_ = std::make_unique<NotificationService>();
    QDBusConnection bus = QDBusConnection::connectToBus(bus_->address(), messagesConnection);
    QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), service_.get(),
                               QDBusConnection::ExportAllSlots));
    QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
    QVERIFY(bus.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                        QStringLiteral("Update"), this, SLOT(update(QString, QVariantMap))));
}

void TestDesktopMessages::cleanup() {
    QDBusConnection::disconnectFromBus(messagesConnection);
    service_.reset();
    bus_.reset();
}

QList<double> TestDesktopMessages::shares() const {
    QList<double> result;
    for (const QVariantMap& each : updates_)
        result += each.value(QStringLiteral("progress")).toDouble();
    return result;
}

void TestDesktopMessages::notificationIsShown() {
    DesktopNotifications notifications(bus_->address());
    notifications.notify(QStringLiteral("Done"), QStringLiteral("Converted: 3\nNot converted: 1"));
    QTRY_COMPARE(service_->notes.size(), 1);
    const NotificationService::Note& note = service_->notes.constFirst();
    QCOMPARE(note.texts, (QStringList{QStringLiteral("Program"), QStringLiteral("reelshift"),
                                      QStringLiteral("Done"),
                                      QStringLiteral("Converted: 3\nNot converted: 1")}));
    QCOMPARE(note.replaces, 0U);
    QVERIFY(note.actions.isEmpty());
    QCOMPARE(note.timeout, -1);
    QCOMPARE(note.hints, (QVariantMap{{QStringLiteral("desktop-entry"),
                                       QStringLiteral("example.quorvex.reelshift")}}));
    QTRY_VERIFY(notifications.children().isEmpty());
}

// GNOME takes a program's notifications away with it.
void TestDesktopMessages::senderStaysOnTheBus() {
    const auto isOnTheBus = [](const QString& name) {
        return QDBusConnection(messagesConnection).interface()->isServiceRegistered(name).value();
    };
    {
        DesktopNotifications notifications(bus_->address());
        for (const int number : {1, 2}) {
            notifications.notify(QString::number(number), QString());
            QTRY_VERIFY(service_->notes.size() == number && notifications.children().isEmpty());
        }
        QCOMPARE(service_->senders[0], service_->senders[1]);
        QVERIFY(isOnTheBus(service_->senders[0]));
    }
    QTRY_VERIFY(!isOnTheBus(service_->senders[0]));
}

void TestDesktopMessages::bodyIsNoMarkup() {
    DesktopNotifications notifications(bus_->address());
    notifications.notify(QStringLiteral("a<b>"), QStringLiteral("<i>&amp;"));
    QTRY_COMPARE(service_->notes.size(), 1);
    QCOMPARE(service_->notes.constFirst().texts.mid(2),
             (QStringList{QStringLiteral("a<b>"), QStringLiteral("&lt;i&gt;&amp;amp;")}));
}

void TestDesktopMessages::refusedNotificationIsForgotten() {
    service_->refuses = true;
    DesktopNotifications notifications(bus_->address());
    notifications.notify(QStringLiteral("Done"), QString());
    QTRY_COMPARE(service_->notes.size(), 1);
    QTRY_VERIFY(notifications.children().isEmpty());
    QCOMPARE(service_->notes.size(), 1);
}

void TestDesktopMessages::notificationWithoutABus_data() {
    QTest::addColumn<QString>("address");
    QTest::newRow("no address") << QString();
    QTest::newRow("nobody listens") << QStringLiteral("unix:path=/nonexistent/bus");
}

void TestDesktopMessages::notificationWithoutABus() {
    QFETCH(QString, address);
    DesktopNotifications notifications(address);
    notifications.notify(QStringLiteral("Done"), QString());
    QVERIFY(notifications.children().isEmpty());
}

void TestDesktopMessages::barIsShownAndHidden() {
    DesktopLauncherProgress launcher(bus_->address());
    launcher.hide(); // nothing to hide, nothing is said
    launcher.show(0.25);
    QTRY_COMPARE(updates_.size(), 1);
    QCOMPARE(applications_.constFirst(),
             QStringLiteral("application://example.quorvex.reelshift.desktop"));
    QCOMPARE(updates_.constFirst(), (QVariantMap{{QStringLiteral("progress"), 0.25},
                                                 {QStringLiteral("progress-visible"), true}}));
    launcher.hide();
    QTRY_COMPARE(updates_.size(), 2);
    QCOMPARE(updates_.constLast().value(QStringLiteral("progress-visible")), QVariant(false));
}

void TestDesktopMessages::barIsNotMovedTooOften() {
    DesktopLauncherProgress launcher(bus_->address(), 200ms);
    for (int percent = 0; percent <= 100; ++percent)
        launcher.show(percent / 100.0);
    // The first at once, then the last that was known.
    QTRY_COMPARE(shares(), (QList<double>{0, 1}));
    launcher.show(7);
    QTRY_COMPARE(shares(), (QList<double>{0, 1, 1}));
}

void TestDesktopMessages::barHiddenWhileItRests() {
    DesktopLauncherProgress launcher(bus_->address(), 100ms);
    launcher.show(0.1);
    launcher.show(0.2);
    launcher.hide();
    QTRY_COMPARE(updates_.size(), 2);
    // Another that rests as long: by then the first would have gone on.
    DesktopLauncherProgress other(bus_->address(), 100ms);
    other.show(0.3);
    other.show(0.4);
    QTRY_COMPARE(shares(), (QList<double>{0.1, 0, 0.3, 0.4}));
}

void TestDesktopMessages::barWithoutABus_data() {
    notificationWithoutABus_data();
}

void TestDesktopMessages::barWithoutABus() {
    QFETCH(QString, address);
    DesktopLauncherProgress launcher(address);
    launcher.show(0.5);
    launcher.hide();
    QVERIFY(updates_.isEmpty());
}

void TestDesktopMessages::silentBusIsNotFelt() {
    bus_->freeze();
    QElapsedTimer clock;
    clock.start();
    {
        DesktopNotifications notifications(bus_->address(), 200ms);
        notifications.notify(QStringLiteral("Done"), QString());
        DesktopLauncherProgress launcher(bus_->address());
        launcher.show(0.5);
        launcher.hide();
        QVERIFY2(clock.elapsed() < 500, qPrintable(QString::number(clock.elapsed())));
        QTRY_VERIFY(notifications.children().isEmpty());
        clock.restart();
    }
    QVERIFY2(clock.elapsed() < 500, qPrintable(QString::number(clock.elapsed())));
}

REELSHIFT_TEST(test_desktop_messages, TestDesktopMessages, QGuiApplication)
#include "TestDesktopMessages.moc"
