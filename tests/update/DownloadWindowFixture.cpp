#include "update/DownloadWindowFixture.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QtTest>

QByteArray DownloadWindowFixture::lengthHead(qsizetype length) {
    return LoopbackServer::head("200 OK", "Content-Length: " + QByteArray::number(length) + "\r\n");
}

LoopbackServer::Answer DownloadWindowFixture::begun(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) { socket.write(bytes); };
}

QStringList DownloadWindowFixture::everythingIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QByteArray DownloadWindowFixture::contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

void DownloadWindowFixture::makeFile(const QString& name, const QByteArray& text) const {
    QFile made(file(name));
    QVERIFY(made.open(QIODevice::WriteOnly));
    QCOMPARE(made.write(text), text.size());
}

void DownloadWindowFixture::initTestCase() {
    // A window that is the last one ends no test.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    texts_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c());
    QVERIFY(texts_->isLoaded());
}

void DownloadWindowFixture::init() {
    server_ = std::make_unique<LoopbackServer>();
    downloads_ = std::make_unique<QTemporaryDir>();
    threads_ = std::make_unique<WorkerThreads>();
    opened_.clear();
    asksToQuit_ = 0;
    settings_ = UpdateSettings();
    settings_.downloadsFolder = downloads_->path();
    settings_.openFile = [this](const QUrl& url) {
        opened_ << url;
        wasVisibleAtOpening_ = window_->isVisible();
        return true;
    };
}

void DownloadWindowFixture::cleanup() {
    window_.reset();
    QVERIFY(threads_->waitForAll(std::chrono::seconds(20)));
}

QPushButton& DownloadWindowFixture::button(const char* name) const {
    auto* const found = window_->findChild<QPushButton*>(QLatin1StringView(name));
    Q_ASSERT(found);
    return *found;
}

QProgressBar& DownloadWindowFixture::bar() const {
    auto* const found = window_->findChild<QProgressBar*>(QStringLiteral("downloadProgressbar"));
    Q_ASSERT(found);
    return *found;
}

void DownloadWindowFixture::open(const QString& path) {
    openAddress(server_->baseUrl() + path);
}

void DownloadWindowFixture::openAddress(const QString& address) {
    window_ = std::make_unique<KXDownloadController>(settings_, *threads_);
    connect(window_.get(), &KXDownloadController::installerOpened, this, [this] { ++asksToQuit_; });
    window_->setDownloadURL(address);
    window_->showWindow();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
}

void DownloadWindowFixture::clickOk() {
    QTest::mouseClick(&button("okBtn"), Qt::LeftButton);
}

void DownloadWindowFixture::expectNothingLeft() {
    QTRY_VERIFY(everythingIn(downloads_->path()).isEmpty());
}

void DownloadWindowFixture::takeScreenshot(const char* name) {
    const QString folder = QStringLiteral(REELSHIFT_SCREENSHOTS);
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(window_->grab().save(folder + QLatin1Char('/') + QLatin1StringView(name) +
                                 QStringLiteral(".png")));
}

void DownloadWindowFixture::expectFailure(const QString& message) {
    QTRY_VERIFY(alert() && alert()->isVisible());
    QVERIFY(!window_->downloading());
    QVERIFY(window_->isVisible());
    QCOMPARE(alert()->windowTitle(), QStringLiteral("Quorvex Tavrin"));
    QCOMPARE(alert()->icon(), QMessageBox::Warning);
    QCOMPARE(alert()->textFormat(), Qt::PlainText);
    QCOMPARE(alert()->buttons().size(), 1);
    QCOMPARE(alert()->buttons()[0]->text(), getLocalString("IDS_BTN_POPUP_OK"));
    const QRegularExpression expected(message);
    QVERIFY2(expected.match(alert()->text()).hasMatch(), qPrintable(alert()->text()));
    QCOMPARE(alert()->accessibleName(), alert()->text());
    QVERIFY2(alert()->height() < 400, qPrintable(QString::number(alert()->height())));
    QTest::mouseClick(alert()->buttons()[0], Qt::LeftButton);
    QTRY_VERIFY(!window_->isVisible());
    QVERIFY(opened_.isEmpty());
    QCOMPARE(asksToQuit_, 0);
}
