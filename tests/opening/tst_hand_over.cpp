#include "TestProgram.h"
#include "opening/BusApplication.h"
#include "opening/HandOver.h"
#include "platform/desktop/PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>

#include <future>

using namespace std::chrono_literals;

/// A second start and a first one, on a bus of their own.
class TestHandOver final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nobodyRuns();
    void moviesAreTaken();
    void noMoviesAreTaken();
    void tokensComeAlong();
    void oneThatIsAboutToEnd();
    void oneOnAnotherDisplay();
    void oneThatHangs();
    void whatComesTooLateIsNotTaken();
    void theNameGoesOn();
    void aSilentBus();
    void noBus();

private:
    [[nodiscard]] HandOver ask(const QStringList& addresses) const;
    /// From another thread, while this one's events are handled.
    [[nodiscard]] HandOver askMeanwhile(const QStringList& addresses) const;

    std::unique_ptr<PrivateBus> daemon_;
    static inline const QStringList movies{QStringLiteral("file:///a.mp4"),
                                           QStringLiteral("file:///%FF.mp4")};
};

void TestHandOver::init() {
    if (!PrivateBus::isAvailable())
        QSKIP("there is no dbus-daemon");
    qputenv("DISPLAY", ":1");
    for (const char* name : {"WAYLAND_DISPLAY", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        qunsetenv(name);
    daemon_ = std::make_unique<PrivateBus>();
    QCOMPARE(daemon_->start(), QString());
}

HandOver TestHandOver::ask(const QStringList& addresses) const {
    MessageBus bus(daemon_->address());
    return handOver(bus, addresses, {500ms, 600ms});
}

HandOver TestHandOver::askMeanwhile(const QStringList& addresses) const {
    auto asked = std::async(std::launch::async, [&] { return ask(addresses); });
    const bool answered =
        QTest::qWaitFor([&] { return asked.wait_for(0s) == std::future_status::ready; }, 20000);
    return answered ? asked.get() : HandOver::NoBus;
}

void TestHandOver::nobodyRuns() {
    QCOMPARE(ask(movies), HandOver::NotRunning);
}

void TestHandOver::moviesAreTaken() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QSignalSpy opened(&first, &BusApplication::opened);
    QSignalSpy activated(&first, &BusApplication::activated);
    QCOMPARE(askMeanwhile(movies), HandOver::Taken);
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened[0][0].toStringList(), movies);
    QCOMPARE(activated.size(), 0);
}

void TestHandOver::noMoviesAreTaken() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QSignalSpy activated(&first, &BusApplication::activated);
    QCOMPARE(askMeanwhile({}), HandOver::Taken);
    QCOMPARE(activated.size(), 1);
}

void TestHandOver::tokensComeAlong() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    StartupTokens tokens;
    connect(&first, &BusApplication::activated, this,
            [&](const StartupTokens& given) { tokens = given; });
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    qputenv("DESKTOP_STARTUP_ID", "id_TIME7");
    QCOMPARE(askMeanwhile({}), HandOver::Taken);
    QCOMPARE(tokens.activationToken, QStringLiteral("token"));
    QCOMPARE(tokens.startupId, QStringLiteral("id_TIME7"));
}

void TestHandOver::oneThatIsAboutToEnd() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QSignalSpy opened(&first, &BusApplication::opened);
    first.setReadiness([] { return false; });
    QCOMPARE(askMeanwhile(movies), HandOver::NotTaken);
    first.release();
    QTRY_COMPARE(askMeanwhile(movies), HandOver::NotRunning);
    QCOMPARE(opened.size(), 0);
}

void TestHandOver::oneOnAnotherDisplay() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QSignalSpy opened(&first, &BusApplication::opened);
    qputenv("DISPLAY", ":2");
    QCOMPARE(askMeanwhile(movies), HandOver::NotTaken);
    QCOMPARE(opened.size(), 0);
}

void TestHandOver::oneThatHangs() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ask(movies), HandOver::NotTaken); // on the thread that would have to answer
    QVERIFY(timer.elapsed() >= 570); // the toolkit counts 600 ms with an error of a twentieth
    QVERIFY(timer.elapsed() < 5000);
}

void TestHandOver::whatComesTooLateIsNotTaken() {
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(), BusApplication::Claim::Ours);
    QSignalSpy opened(&first, &BusApplication::opened);
    QCOMPARE(ask(movies), HandOver::NotTaken);
    QCOMPARE(askMeanwhile({movies[0]}), HandOver::Taken); // comes after the other
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened[0][0].toStringList(), QStringList(movies[0]));
}

void TestHandOver::theNameGoesOn() {
    auto first = std::make_unique<BusApplication>(daemon_->address());
    QCOMPARE(first->claim(), BusApplication::Claim::Ours);
    BusApplication next(daemon_->address());
    QCOMPARE(next.claim(), BusApplication::Claim::Anothers);
    first.reset();
    QSignalSpy opened(&next, &BusApplication::opened);
    QTRY_COMPARE(askMeanwhile(movies), HandOver::Taken);
    QCOMPARE(opened.last()[0].toStringList(), movies);
}

void TestHandOver::aSilentBus() {
    daemon_->freeze();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ask(movies), HandOver::NoBus);
    QVERIFY(timer.elapsed() < 5000);
    BusApplication first(daemon_->address());
    QCOMPARE(first.claim(100ms), BusApplication::Claim::NoBus);
    daemon_->thaw();
}

void TestHandOver::noBus() {
    const QString nowhere = QStringLiteral("unix:path=/nobody");
    MessageBus bus(nowhere);
    QCOMPARE(handOver(bus, movies), HandOver::NoBus);
    BusApplication first(nowhere);
    QCOMPARE(first.claim(), BusApplication::Claim::NoBus);
    first.release();
}

REELSHIFT_TEST(tst_hand_over, TestHandOver, QCoreApplication)
#include "tst_hand_over.moc"
