#include "TestProgram.h"
#include "update/DownloadWindowFixture.h"
#include "update/KXPortavoUpdate.h"

#include <QApplication>
#include <QEventLoop>
#include <QRegularExpression>
#include <QtTest>

#include <exception>
#include <stdexcept>
#include <thread>

#include <sys/socket.h>

/// Servers that prove who they are, and such that cannot.
class TestSecureFetch final : public DownloadWindowFixture {
    Q_OBJECT

private Q_SLOTS:
    void downloadsFromAServerThatProvesItself();
    void refusesAServer_data();
    void refusesAServer();
    void neverGoesFromSecureToOpen();
    void takesAnInstallerFrom_data();
    void takesAnInstallerFrom();
    void refusesABodyThatWasCutOff();
    void refusesABodyWhoseEndCannotBeTold();

private:
    static QString pem(const char* name) {
        return QStringLiteral(REELSHIFT_CERTIFICATES "/") + QLatin1StringView(name) +
               QStringLiteral(".pem");
    }
    void serve(const char* certificate) {
        server_ = std::make_unique<LoopbackServer>(pem(certificate), pem("key"));
        settings_.certificates = pem("authority");
    }
};

void TestSecureFetch::downloadsFromAServerThatProvesItself() {
    serve("server_good");
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(file(QStringLiteral("setup.deb"))), QByteArray("installer"));
}

void TestSecureFetch::refusesAServer_data() {
    QTest::addColumn<QByteArray>("certificate");
    QTest::addColumn<bool>("systemsAuthorities");
    QTest::newRow("expired") << QByteArray("server_expired") << false;
    QTest::newRow("of another name") << QByteArray("server_wrong_name") << false;
    QTest::newRow("self-made") << QByteArray("server_self_made") << false;
    QTest::newRow("of an authority the system does not know") << QByteArray("server_good") << true;
}

void TestSecureFetch::refusesAServer() {
    QFETCH(QByteArray, certificate);
    QFETCH(bool, systemsAuthorities);
    serve(certificate.constData());
    if (systemsAuthorities)
        settings_.certificates.clear();
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("SSL")));
    clickOk();
    expectFailure(QStringLiteral("cannot prove"));
    QVERIFY(server_->requests().isEmpty());
    expectNothingLeft();
}

void TestSecureFetch::neverGoesFromSecureToOpen() {
    LoopbackServer open_;
    open_.setAnswer(LoopbackServer::whole("installer"));
    serve("server_good");
    server_->setAnswer(LoopbackServer::redirect(open_.baseUrl().toUtf8() + "/setup.deb"));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(QStringLiteral("cannot be used"));
    QVERIFY(open_.requests().isEmpty());
}

void TestSecureFetch::takesAnInstallerFrom_data() {
    QTest::addColumn<bool>("documentIsSecure");
    QTest::addColumn<QByteArray>("installer");
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("open, open") << false << QByteArray("http://a/x.deb") << true;
    QTest::newRow("open, secure") << false << QByteArray("https://a/x.deb") << true;
    QTest::newRow("secure, secure") << true << QByteArray("https://a/x.deb") << true;
    QTest::newRow("secure, open") << true << QByteArray("http://a/x.deb") << false;
}

void TestSecureFetch::takesAnInstallerFrom() {
    QFETCH(bool, documentIsSecure);
    QFETCH(QByteArray, installer);
    QFETCH(bool, isOffered);
    if (documentIsSecure)
        serve("server_good");
    server_->setAnswer(LoopbackServer::whole("<r><version>9.9.9.9</version><setupFile><url>" +
                                             installer + "</url></setupFile></r>"));
    settings_.baseUrl = server_->baseUrl();
    settings_.version = QStringLiteral("1.0.0.0");
    if (!isOffered)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not secure")));
    std::optional<QUrl> found;
    QEventLoop loop;
    const std::jthread asking([&] {
        found = KXPortavoUpdate(settings_).newerInstaller();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    QCOMPARE(found.has_value(), isOffered);
}

// Somebody on the way can end a connection, but not as the server does.
void TestSecureFetch::refusesABodyThatWasCutOff() {
    serve("server_good");
    server_->setAnswer(begun(lengthHead(8) + "half"));
    open();
    clickOk();
    QTRY_COMPARE(window_->downloadedSoFar(), 4);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    // Past the secure layer, which would say goodbye.
    ::shutdown(static_cast<int>(server_->connection()->socketDescriptor()), SHUT_RDWR);
    expectFailure(QStringLiteral("too soon"));
    expectNothingLeft();
}

// The library does not tell a goodbye from a cut.
void TestSecureFetch::refusesABodyWhoseEndCannotBeTold() {
    serve("server_good");
    server_->setAnswer(LoopbackServer::raw(LoopbackServer::head("200 OK", {}) + "installer"));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(QStringLiteral("cannot be used"));
    expectNothingLeft();
}

REELSHIFT_TEST(test_secure_fetch, TestSecureFetch, QApplication)
#include "TestSecureFetch.moc"
