#include "TestProgram.h"
#include "platform/LocalizedStrings.h"
#include "update/KXDownloadController.h"
#include "update/LoopbackServer.h"
#include "update/UpdateCheck.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using Phase = VersionCheckThread::Phase;

namespace {

QByteArray shortDocument(const QByteArray& version, const QByteArray& url) {
    return "<r><version>" + version + "</version><setupFile><url>" + url + "</url></setupFile></r>";
}

/// Quitting is not to be felt; the limit is wide because the machine may be busy.
constexpr qint64 atOnce = 10000;

} // namespace

class TestUpdateCheck final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void checksBesideTheMainThread();
    void offersTheNewerVersion();
    void waitsForAnOpenBox();
    void showsNothing_data();
    void showsNothing();
    void logsWhatEndsTheCheck();
    void lingersOnSystemsOfTheTenthLine_data();
    void lingersOnSystemsOfTheTenthLine();
    void stopsAtOnce_data();
    void stopsAtOnce();
    void stopsBeforeTheWindowIsShown();
    void stopsWithTheWindowOpen();
    void stopsInTheMiddleOfADownload();
    void downloadsOpensAndAsksToQuit();

private:
    void waitForWindow(UpdateCheck& check);

    std::unique_ptr<StringTable> texts_;
    std::unique_ptr<LoopbackServer> server_;
    std::unique_ptr<QTemporaryDir> downloads_;
    QList<QUrl> opened_;
    UpdateSettings settings_;
};

void TestUpdateCheck::init() {
    texts_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c());
    QVERIFY(texts_->isLoaded());
    server_ = std::make_unique<LoopbackServer>();
    downloads_ = std::make_unique<QTemporaryDir>();
    opened_.clear();
    settings_ = UpdateSettings();
    settings_.baseUrl = server_->baseUrl();
    settings_.version = QStringLiteral("1.0.0.0");
    settings_.downloadsFolder = downloads_->path();
    settings_.openFile = [this](const QUrl& file) {
        opened_ << file;
        return true;
    };
    settings_.systemVersion = [] { return std::optional<SystemVersion>(); };
}

void TestUpdateCheck::waitForWindow(UpdateCheck& check) {
    server_->setAnswer(LoopbackServer::whole(
        shortDocument("9.9.9.9", server_->baseUrl().toUtf8() + "/setup.deb")));
    check.start();
    QTRY_VERIFY(check.window() && check.window()->isVisible());
}

void TestUpdateCheck::checksBesideTheMainThread() {
    server_->setAnswer(LoopbackServer::silence());
    UpdateCheck check(settings_);
    QCOMPARE(check.thread().phase(), Phase::NotStarted);
    QElapsedTimer elapsed;
    elapsed.start();
    check.start();
    QVERIFY(elapsed.elapsed() < atOnce);
    QTRY_COMPARE(server_->requests().size(), 1);
    QCOMPARE(check.thread().phase(), Phase::Checking);
    QVERIFY(!check.window());
}

void TestUpdateCheck::offersTheNewerVersion() {
    UpdateCheck check(settings_);
    waitForWindow(check);
    QCOMPARE(check.window()->thread(), QThread::currentThread());
    QCOMPARE(check.window()->downloadURL(), server_->baseUrl() + QStringLiteral("/setup.deb"));
    QTRY_COMPARE(check.thread().phase(), Phase::Ended);
    QCOMPARE(server_->requests().size(), 1);
}

void TestUpdateCheck::waitsForAnOpenBox() {
    server_->setAnswer(
        LoopbackServer::whole(document("9.9.9.9", server_->baseUrl().toUtf8() + "/setup.deb")));
    UpdateCheck check(settings_);
    QDialog box;
    box.setModal(true);
    box.show();
    check.start();
    QTRY_COMPARE(check.thread().phase(), Phase::Ended);
    QCoreApplication::processEvents(); // what the thread has sent arrives
    QVERIFY(!check.window());
    box.hide();
    QTRY_VERIFY(check.window() && check.window()->isVisible());
}

void TestUpdateCheck::showsNothing_data() {
    QTest::addColumn<QByteArray>("answer");
    const auto ok = [](const QByteArray& body) {
        return QByteArray(LoopbackServer::head("200 OK", {}) + body);
    };
    QTest::newRow("equal") << ok(shortDocument("1.0.0.0", "http://127.0.0.1/x"));
    QTest::newRow("older") << ok(shortDocument("0.9.0.0", "http://127.0.0.1/x"));
    QTest::newRow("no url") << ok("<r><version>9.9.9.9</version></r>");
    QTest::newRow("url that is not fetched") << ok(shortDocument("9.9.9.9", "file:///etc/passwd"));
    QTest::newRow("three parts") << ok(shortDocument("9.9.9", "http://127.0.0.1/x"));
    QTest::newRow("rubbish") << ok("rubbish");
    QTest::newRow("404") << QByteArray(LoopbackServer::head("404 Not Found", {}));
    QTest::newRow("nothing") << QByteArray();
}

void TestUpdateCheck::showsNothing() {
    QFETCH(QByteArray, answer);
    server_->setAnswer(LoopbackServer::raw(answer));
    UpdateCheck check(settings_);
    QSignalSpy found(&check.thread(), &VersionCheckThread::newerVersionFound);
    check.start();
    QTRY_COMPARE(check.thread().phase(), Phase::Ended);
    QCoreApplication::processEvents();
    QVERIFY(!check.window());
    QVERIFY(found.isEmpty());
    QVERIFY(!server_->requests().isEmpty());
}

void TestUpdateCheck::logsWhatEndsTheCheck() {
    server_->setAnswer(LoopbackServer::whole(shortDocument("9.9.9", "http://127.0.0.1/x")));
    QTest::ignoreMessage(
        QtWarningMsg, "The version check ended: the version \"9.9.9\" has fewer than four parts");
    UpdateCheck check(settings_);
    check.start();
    QTRY_COMPARE(check.thread().phase(), Phase::Ended);

    // Nobody listens at all.
    server_->close();
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(QStringLiteral("The update server's document was not read: .*connect")));
    QTest::ignoreMessage(QtWarningMsg,
                         "The version check ended: the version \"\" has fewer than four parts");
    UpdateCheck unanswered(settings_);
    unanswered.start();
    QTRY_COMPARE(unanswered.thread().phase(), Phase::Ended);
    QVERIFY(!unanswered.window());
}

void TestUpdateCheck::lingersOnSystemsOfTheTenthLine_data() {
    QTest::addColumn<QString>("release");
    QTest::addColumn<bool>("lingers");

    QTest::newRow("10.10") << "10.10" << true;
    QTest::newRow("10.15.7") << "10.15.7" << true;
    QTest::newRow("10.9") << "10.9" << false;
    QTest::newRow("11.10") << "11.10" << false;
    QTest::newRow("9.10") << "9.10" << false;
    QTest::newRow("12") << "12" << false;
    QTest::newRow("unknown") << "" << false;
}

void TestUpdateCheck::lingersOnSystemsOfTheTenthLine() {
    QFETCH(QString, release);
    QFETCH(bool, lingers);
    server_->setAnswer(LoopbackServer::whole(shortDocument("1.0.0.0", "http://127.0.0.1/x")));
    settings_.systemVersion = [release] { return parseSystemVersion(release); };
    UpdateCheck check(settings_);
    check.start();
    QTRY_COMPARE(check.thread().phase(), lingers ? Phase::Lingering : Phase::Ended);
    QElapsedTimer elapsed;
    elapsed.start();
    check.stop();
    QVERIFY2(elapsed.elapsed() < atOnce, qPrintable(QString::number(elapsed.elapsed())));
    QCOMPARE(check.thread().phase(), Phase::Ended);
}

void TestUpdateCheck::stopsAtOnce_data() {
    QTest::addColumn<QByteArray>("sent");

    QTest::newRow("server that never answers") << QByteArray();
    QTest::newRow("server that stops in the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
    QTest::newRow("server that stops in the body")
        << QByteArray(LoopbackServer::head("200 OK", "Content-Length: 1000\r\n") + "<r>");
}

void TestUpdateCheck::stopsAtOnce() {
    QFETCH(QByteArray, sent);
    server_->setAnswer([sent](QTcpSocket& socket) { socket.write(sent); });
    UpdateCheck check(settings_);
    check.start();
    QTRY_COMPARE(server_->requests().size(), 1);
    QElapsedTimer elapsed;
    elapsed.start();
    check.stop();
    QVERIFY2(elapsed.elapsed() < atOnce, qPrintable(QString::number(elapsed.elapsed())));
    QCOMPARE(check.thread().phase(), Phase::Ended);
    check.stop();
}

void TestUpdateCheck::stopsBeforeTheWindowIsShown() {
    UpdateCheck check(settings_);
    // The thread has found a version and the main thread has not heard of it yet.
    Q_EMIT check.thread().newerVersionFound(QUrl(QStringLiteral("http://127.0.0.1/x")));
    check.stop();
    QCoreApplication::processEvents();
    QVERIFY(!check.window());
}

void TestUpdateCheck::stopsWithTheWindowOpen() {
    UpdateCheck check(settings_);
    waitForWindow(check);
    check.stop();
    QVERIFY(!check.window());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void TestUpdateCheck::stopsInTheMiddleOfADownload() {
    UpdateCheck check(settings_);
    waitForWindow(check);
    QSignalSpy opened(&check, &UpdateCheck::installerOpened);
    server_->setAnswer([](QTcpSocket& socket) {
        socket.write(LoopbackServer::head("200 OK", "Content-Length: 1000\r\n") + "half");
    });
    check.window()->clickOkBtn();
    QTRY_COMPARE(check.window()->downloadedSoFar(), 4);
    check.stop();
    QTRY_VERIFY(!server_->connection());
    QVERIFY(opened.isEmpty());
    QVERIFY(check.waitForDownloads(std::chrono::seconds(20)));
    QVERIFY(QDir(downloads_->path())
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                .isEmpty());
}

void TestUpdateCheck::downloadsOpensAndAsksToQuit() {
    UpdateCheck check(settings_);
    waitForWindow(check);
    server_->setAnswer(LoopbackServer::whole("installer"));
    // Whoever hears of it may end everything on the spot.
    int heard = 0;
    connect(&check, &UpdateCheck::installerOpened, this, [&check, &heard] {
        ++heard;
        check.stop();
    });
    check.window()->findChild<QPushButton*>(QStringLiteral("okBtn"))->click();
    QTRY_COMPARE(heard, 1);
    QCOMPARE(opened_, {QUrl::fromLocalFile(downloads_->filePath(QStringLiteral("setup.deb")))});
    QVERIFY(!check.window());
}

REELSHIFT_TEST(test_update_check, TestUpdateCheck, QApplication)
#include "TestUpdateCheck.moc"
