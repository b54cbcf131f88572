#include "platform/LocalizedStrings.h"
#include "update/KXDownloadController.h"
#include "update/LoopbackServer.h"

#include <QAccessible>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <memory>

#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr qsizetype size = 1000;

QByteArray lengthHead(qsizetype length) {
    return LoopbackServer::head("200 OK", "Content-Length: " + QByteArray::number(length) + "\r\n");
}

/// Starts an answer and leaves the rest to the test.
LoopbackServer::Answer begun(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) { socket.write(bytes); };
}

QStringList everythingIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

} // namespace

Q_DECLARE_METATYPE(LoopbackServer::Answer)

class TestDownloadWindow final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void asksFirst();
    void namesEveryControl();
    void walksWithTheTabKey();
    void showsTheProgress();
    void staysBusyWithoutALength();
    void cancelsTheQuestion_data();
    void cancelsTheQuestion();
    void cancelsTheDownload_data();
    void cancelsTheDownload();
    void pressingReturnTwiceDoesNotCancel();
    void savesUnderTheSuggestedName_data();
    void savesUnderTheSuggestedName();
    void followsARedirect();
    void replacesAnOlderFile();
    void neverWritesThroughALink();
    void createsTheDownloadsFolder();
    void neverMakesAFileExecutable();
    void closesOpensThenAsksToQuit();
    void saysWhereAFileIsThatCannotBeOpened();
    void fails_data();
    void fails();
    void failsForNoBytes();
    void failsForAnAddressThatIsNotFetched_data();
    void failsForAnAddressThatIsNotFetched();
    void failsWithoutAServer();
    void failsWhenTheServerFallsSilent();
    void failsWithoutAPlaceForTheFile_data();
    void failsWithoutAPlaceForTheFile();
    void failsOnAFullDisk();
    void failsWhenTheFileCannotGrow();
    void lastWindowClosedQuits();

private:
    [[nodiscard]] QPushButton& button(const char* name) const;
    [[nodiscard]] QProgressBar& bar() const;
    [[nodiscard]] QMessageBox* alert() const { return window_->findChild<QMessageBox*>(); }
    [[nodiscard]] QString file(const QString& name) const { return downloads_->filePath(name); }
    void open(const QString& path = QStringLiteral("/setup.run"));
    void openAddress(const QString& address);
    void clickOk();
    void send(const QByteArray& bytes) { server_->connection()->write(bytes); }
    void takeScreenshot(const char* name);
    void expectFailure(const QString& message);

    std::unique_ptr<StringTable> texts_;
    std::unique_ptr<LoopbackServer> server_;
    std::unique_ptr<QTemporaryDir> downloads_;
    std::unique_ptr<KXDownloadController> window_;
    UpdateSettings settings_;
    QList<QUrl> opened_;
    bool wasVisibleAtOpening_ = false;
    int asksToQuit_ = 0;
};

void TestDownloadWindow::initTestCase() {
    // A window that is the last one ends no test.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    texts_ = std::make_unique<StringTable>(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c());
    QVERIFY(texts_->isLoaded());
}

void TestDownloadWindow::init() {
    server_ = std::make_unique<LoopbackServer>();
    downloads_ = std::make_unique<QTemporaryDir>();
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

void TestDownloadWindow::cleanup() {
    window_.reset();
}

QPushButton& TestDownloadWindow::button(const char* name) const {
    auto* const found = window_->findChild<QPushButton*>(QLatin1String(name));
    Q_ASSERT(found);
    return *found;
}

QProgressBar& TestDownloadWindow::bar() const {
    auto* const found = window_->findChild<QProgressBar*>(QStringLiteral("downloadProgressbar"));
    Q_ASSERT(found);
    return *found;
}

void TestDownloadWindow::open(const QString& path) {
    openAddress(server_->baseUrl() + path);
}

void TestDownloadWindow::openAddress(const QString& address) {
    window_ = std::make_unique<KXDownloadController>(settings_);
    connect(window_.get(), &KXDownloadController::installerOpened, this, [this] { ++asksToQuit_; });
    window_->setDownloadURL(address);
    window_->showWindow();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
}

void TestDownloadWindow::clickOk() {
    QTest::mouseClick(&button("okBtn"), Qt::LeftButton);
}

void TestDownloadWindow::takeScreenshot(const char* name) {
    const QString folder = QStringLiteral(REELSHIFT_SCREENSHOTS);
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(window_->grab().save(folder + QLatin1Char('/') + QLatin1String(name) +
                                 QStringLiteral(".png")));
}

/// The box as it must be; then it is closed, and the window with it.
void TestDownloadWindow::expectFailure(const QString& message) {
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
    QTest::mouseClick(alert()->buttons()[0], Qt::LeftButton);
    QTRY_VERIFY(!window_->isVisible());
    QVERIFY(opened_.isEmpty());
    QCOMPARE(asksToQuit_, 0);
}

void TestDownloadWindow::asksFirst() {
    open();
    QCOMPARE(window_->findChild<QLabel*>(QStringLiteral("downloadQuest"))->text(),
             getLocalString("IDS_TXT_NEWVERSION"));
    QVERIFY(window_->findChild<QWidget*>(QStringLiteral("checkView"))->isVisible());
    QVERIFY(!window_->findChild<QWidget*>(QStringLiteral("downloadView"))->isVisible());
    QCOMPARE(button("okBtn").text(), getLocalString("IDS_BTN_POPUP_OK"));
    QCOMPARE(button("cancelBtn").text(), getLocalString("IDS_BTN_POPUP_CANCEL"));
    QVERIFY(button("okBtn").isDefault());
    QVERIFY(!window_->downloading());
    QCOMPARE(window_->filePath(), QString());
    QVERIFY(server_->requests().isEmpty());
    takeScreenshot("update-question");
}

void TestDownloadWindow::namesEveryControl() {
    open();
    const auto checkNames = [this] {
        for (QWidget* const control : window_->findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus && !qobject_cast<QProgressBar*>(control))
                continue;
            QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(control);
            QVERIFY(face);
            QVERIFY2(!face->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
        }
    };
    checkNames();
    QCOMPARE(QAccessible::queryAccessibleInterface(&bar())->role(), QAccessible::ProgressBar);
    for (const QLabel* const label : window_->findChildren<QLabel*>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
}

void TestDownloadWindow::walksWithTheTabKey() {
    open();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QCOMPARE(window_->focusWidget(), &button("okBtn"));
    QTest::keyClick(window_.get(), Qt::Key_Tab);
    QCOMPARE(window_->focusWidget(), &button("cancelBtn"));
    QTest::keyClick(window_.get(), Qt::Key_Tab);
    QCOMPARE(window_->focusWidget(), &button("okBtn"));
}

void TestDownloadWindow::showsTheProgress() {
    server_->setAnswer(LoopbackServer::silence());
    open();
    clickOk();
    QVERIFY(window_->downloading());
    QVERIFY(window_->downloadIsIndeterminate());
    QCOMPARE(window_->downloadProgress(), 0.0F);
    QVERIFY(!window_->findChild<QWidget*>(QStringLiteral("checkView"))->isVisible());
    QVERIFY(bar().isVisible());
    QVERIFY(!button("okBtn").isVisible());
    QCOMPARE(bar().minimum(), bar().maximum());

    QTRY_COMPARE(server_->requests().size(), 1);
    send(lengthHead(size));
    QTRY_VERIFY(!window_->downloadIsIndeterminate());
    QCOMPARE(window_->expectedContentLength(), size);
    QCOMPARE(bar().text(), QStringLiteral("0%"));
    takeScreenshot("update-0-percent");

    send(QByteArray(size / 4, 'x'));
    QTRY_COMPARE(window_->downloadedSoFar(), size / 4);
    QCOMPARE(window_->downloadProgress(), 0.25F);
    send(QByteArray(size / 4, 'x'));
    QTRY_COMPARE(window_->downloadProgress(), 0.5F);
    QCOMPARE(bar().text(), QStringLiteral("50%"));
    QCOMPARE(window_->filePath(), file(QStringLiteral("setup.run")));
    QCOMPARE(window_->fileURL(), QUrl::fromLocalFile(file(QStringLiteral("setup.run"))));
    // Nothing stands under the final name before the last byte is there.
    QVERIFY(!QFile::exists(file(QStringLiteral("setup.run"))));
    takeScreenshot("update-half-way");

    send(QByteArray(size / 2, 'y'));
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(window_->downloadProgress(), 1.0F);
    QCOMPARE(contents(file(QStringLiteral("setup.run"))),
             QByteArray(size / 2, 'x') + QByteArray(size / 2, 'y'));
}

void TestDownloadWindow::staysBusyWithoutALength() {
    server_->setAnswer(begun(LoopbackServer::head("200 OK", {}) + QByteArray(size, 'x')));
    open();
    clickOk();
    QTRY_COMPARE(window_->downloadedSoFar(), size);
    QVERIFY(window_->downloadIsIndeterminate());
    QCOMPARE(window_->downloadProgress(), 0.0F);
    QCOMPARE(bar().minimum(), bar().maximum());
    takeScreenshot("update-unknown-size");
    server_->connection()->disconnectFromHost();
    QTRY_COMPARE(asksToQuit_, 1);
    QVERIFY(window_->downloadIsIndeterminate());
    QCOMPARE(contents(file(QStringLiteral("setup.run"))), QByteArray(size, 'x'));
}

void TestDownloadWindow::cancelsTheQuestion_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("Cancel") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("close button") << 2;
}

void TestDownloadWindow::cancelsTheQuestion() {
    QFETCH(int, way);
    open();
    if (way == 0)
        QTest::mouseClick(&button("cancelBtn"), Qt::LeftButton);
    else if (way == 1)
        QTest::keyClick(window_.get(), Qt::Key_Escape);
    else
        window_->windowHandle()->close();
    QTRY_VERIFY(!window_->isVisible());
    QCoreApplication::processEvents();
    QVERIFY(server_->requests().isEmpty());
    QCOMPARE(asksToQuit_, 0);
}

void TestDownloadWindow::cancelsTheDownload_data() {
    cancelsTheQuestion_data();
}

void TestDownloadWindow::cancelsTheDownload() {
    QFETCH(int, way);
    server_->setAnswer(begun(lengthHead(size) + "half"));
    open();
    clickOk();
    QTRY_COMPARE(window_->downloadedSoFar(), 4);
    QCOMPARE(everythingIn(downloads_->path()).size(), 1);
    if (way == 0)
        QTest::mouseClick(&button("cancelBtn"), Qt::LeftButton);
    else if (way == 1)
        QTest::keyClick(window_.get(), Qt::Key_Escape);
    else
        window_->windowHandle()->close();
    QTRY_VERIFY(!window_->isVisible());
    QVERIFY(!window_->downloading());
    // The download has ended, not just gone out of sight.
    QTRY_VERIFY(!server_->connection());
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
    QVERIFY(!alert());
    QVERIFY(opened_.isEmpty());
    QCOMPARE(asksToQuit_, 0);
}

void TestDownloadWindow::pressingReturnTwiceDoesNotCancel() {
    server_->setAnswer(begun(lengthHead(size) + "half"));
    open();
    QTest::keyClick(window_.get(), Qt::Key_Return);
    QVERIFY(window_->downloading());
    QTest::keyClick(window_.get(), Qt::Key_Return);
    QTRY_COMPARE(window_->downloadedSoFar(), 4);
    QVERIFY(window_->downloading());
    QCOMPARE(server_->requests().size(), 1);
}

void TestDownloadWindow::savesUnderTheSuggestedName_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("name");

    QTest::newRow("address") << "/a/b/setup-9.run?x=y" << QByteArray() << "setup-9.run";
    QTest::newRow("header") << "/a" << QByteArray("attachment; filename=\"s t.run\"") << "s t.run";
    QTest::newRow("way up") << "/a" << QByteArray("attachment; filename=\"../../up.run\"")
                            << "up.run";
    QTest::newRow("escaped way up") << "/..%2f..%2fup.run" << QByteArray() << "up.run";
    QTest::newRow("absolute") << "/a" << QByteArray("attachment; filename=/etc/x.run") << "x.run";
    QTest::newRow("hidden") << "/.bashrc" << QByteArray() << "bashrc";
    QTest::newRow("nothing") << "/" << QByteArray() << "reelshift-update";
    QTest::newRow("control characters") << "/a%0Ab%1Bc" << QByteArray() << "abc";
    QTest::newRow("as long as a name can be")
        << QString(QStringLiteral("/") % QString(400, u'n') % QStringLiteral(".run"))
        << QByteArray() << QString(QString(251, u'n') % QStringLiteral(".run"));
}

void TestDownloadWindow::savesUnderTheSuggestedName() {
    QFETCH(QString, path);
    QFETCH(QByteArray, header);
    QFETCH(QString, name);
    server_->setAnswer(LoopbackServer::whole(
        "installer", header.isEmpty() ? header : "Content-Disposition: " + header + "\r\n"));
    open(path);
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(everythingIn(downloads_->path()), {name});
    QCOMPARE(contents(file(name)), QByteArray("installer"));
    QCOMPARE(opened_, {QUrl::fromLocalFile(file(name))});
}

void TestDownloadWindow::followsARedirect() {
    server_->setAnswer([this](QTcpSocket& socket) {
        if (server_->requests().size() == 1)
            LoopbackServer::redirect("/files/real.run")(socket);
        else
            LoopbackServer::whole("installer")(socket);
    });
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(everythingIn(downloads_->path()), {QStringLiteral("real.run")});
}

void TestDownloadWindow::replacesAnOlderFile() {
    QFile old(file(QStringLiteral("setup.run")));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    server_->setAnswer(begun(lengthHead(8) + "new"));
    open();
    clickOk();
    QTRY_COMPARE(window_->downloadedSoFar(), 3);
    QCOMPARE(contents(old.fileName()), QByteArray("old"));
    send("er one");
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(old.fileName()), QByteArray("newer on"));
    QCOMPARE(everythingIn(downloads_->path()).size(), 1);
}

void TestDownloadWindow::neverWritesThroughALink() {
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("precious"));
    QFile precious(target);
    QVERIFY(precious.open(QIODevice::WriteOnly));
    precious.write("precious");
    precious.close();
    QVERIFY(QFile::link(target, file(QStringLiteral("setup.run"))));
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(target), QByteArray("precious"));
    QCOMPARE(contents(file(QStringLiteral("setup.run"))), QByteArray("installer"));
}

void TestDownloadWindow::createsTheDownloadsFolder() {
    settings_.downloadsFolder = file(QStringLiteral("not/there"));
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(file(QStringLiteral("not/there/setup.run"))), QByteArray("installer"));
}

void TestDownloadWindow::neverMakesAFileExecutable() {
    // Not even where an older file of the name was.
    QFile old(file(QStringLiteral("setup.run")));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.close();
    QVERIFY(old.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                               QFile::ExeGroup | QFile::ExeOther));
    server_->setAnswer(LoopbackServer::whole("#!/bin/sh\n"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QVERIFY(!(QFile::permissions(old.fileName()) &
              (QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther)));
    QVERIFY(QFile::permissions(old.fileName()) & QFile::ReadOwner);
}

void TestDownloadWindow::closesOpensThenAsksToQuit() {
    server_->setAnswer(LoopbackServer::whole("installer"));
    bool wasOpenedBefore = false;
    open();
    connect(window_.get(), &KXDownloadController::installerOpened, this,
            [&] { wasOpenedBefore = opened_.size() == 1; });
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QVERIFY(wasOpenedBefore);
    QVERIFY(!wasVisibleAtOpening_);
    QVERIFY(!window_->isVisible());
    QVERIFY(!window_->downloading());
    QVERIFY(!alert());
}

void TestDownloadWindow::saysWhereAFileIsThatCannotBeOpened() {
    settings_.openFile = [](const QUrl&) { return false; };
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_VERIFY(alert() && alert()->isVisible());
    QVERIFY(alert()->text().endsWith(file(QStringLiteral("setup.run"))));
    QCOMPARE(asksToQuit_, 0);
    alert()->buttons()[0]->click();
    QTRY_COMPARE(asksToQuit_, 1);
}

void TestDownloadWindow::fails_data() {
    QTest::addColumn<LoopbackServer::Answer>("answer");
    QTest::addColumn<QString>("message");

    const QString unusable = QStringLiteral("cannot be used");
    QTest::newRow("404") << LoopbackServer::whole("no", {}, "404 Not Found") << "Not Found";
    QTest::newRow("500") << LoopbackServer::whole("no", {}, "500 Oh <b>No</b>") << "<b>No</b>";
    QTest::newRow("304") << LoopbackServer::whole({}, {}, "304 Not Modified") << unusable;
    QTest::newRow("closes at once") << LoopbackServer::raw({}) << "closed";
    QTest::newRow("closes half way") << LoopbackServer::raw(lengthHead(size) + "half") << "closed";
    QTest::newRow("closes in the middle of a chunk")
        << LoopbackServer::raw(LoopbackServer::head("200 OK", "Transfer-Encoding: chunked\r\n") +
                               "1000\r\nhalf")
        << "closed";
    QTest::newRow("not HTTP") << LoopbackServer::raw("220 mail ready\r\n") << ".";
    QTest::newRow("redirect to a file")
        << LoopbackServer::redirect("file:///etc/passwd") << unusable;
    QTest::newRow("redirect to nothing") << LoopbackServer::redirect("") << unusable;
    QTest::newRow("redirects for ever") << LoopbackServer::redirect("/again") << unusable;
}

void TestDownloadWindow::fails() {
    QFETCH(LoopbackServer::Answer, answer);
    QFETCH(QString, message);
    QFile old(file(QStringLiteral("setup.run")));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    server_->setAnswer(answer);
    open();
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^Download failed! Error - .+ .+$")));
    clickOk();
    expectFailure(message);
    // An older file stays as it was, and nothing half done beside it.
    QCOMPARE(contents(old.fileName()), QByteArray("old"));
    QCOMPARE(everythingIn(downloads_->path()).size(), 1);
}

void TestDownloadWindow::failsForNoBytes() {
    server_->setAnswer(LoopbackServer::whole({}));
    open();
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("Download failed! Error - zero byte resource ") +
                                    server_->baseUrl() + QStringLiteral("/setup.run")));
    clickOk();
    QTRY_VERIFY(alert() && alert()->isVisible());
    QCOMPARE(alert()->text(), getLocalString("IDS_TXT_STATUS"));
    QCOMPARE(alert()->informativeText(), getLocalString("IDS_TXT_STATUS"));
    expectFailure(QRegularExpression::escape(getLocalString("IDS_TXT_STATUS")));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
}

void TestDownloadWindow::failsForAnAddressThatIsNotFetched_data() {
    QTest::addColumn<QString>("address");
    QTest::newRow("file") << "file:///etc/passwd";
    QTest::newRow("data") << "data:text/plain,x";
    QTest::newRow("ftp") << "ftp://127.0.0.1/x";
    QTest::newRow("none") << "";
    QTest::newRow("rubbish") << "http://a b";
}

void TestDownloadWindow::failsForAnAddressThatIsNotFetched() {
    QFETCH(QString, address);
    openAddress(address);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(QStringLiteral("cannot be used"));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
}

void TestDownloadWindow::failsWithoutAServer() {
    open();
    server_->close();
    const QString line =
        QStringLiteral("Download failed! Error - Connection refused ") % window_->downloadURL();
    QTest::ignoreMessage(QtWarningMsg, qPrintable(line));
    clickOk();
    expectFailure(QStringLiteral("^Connection refused$"));
}

void TestDownloadWindow::failsWhenTheServerFallsSilent() {
    settings_.silenceLimit = 200ms;
    server_->setAnswer(begun(lengthHead(size) + "half"));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(getLocalString("IDS_TXT_UPDATE_TIMEOUT"));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
}

void TestDownloadWindow::failsWithoutAPlaceForTheFile_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("message");
    QTest::newRow("a file where the folder should be") << "file/downloads"
                                                       << "cannot be created";
    QTest::newRow("a folder where the file should be") << "folder"
                                                       << "directory";
}

void TestDownloadWindow::failsWithoutAPlaceForTheFile() {
    QFETCH(QString, folder);
    QFETCH(QString, message);
    QFile blocking(file(QStringLiteral("file")));
    QVERIFY(blocking.open(QIODevice::WriteOnly));
    QVERIFY(QDir(downloads_->path()).mkpath(QStringLiteral("folder/setup.run")));
    settings_.downloadsFolder = file(folder);
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(message);
    QCOMPARE(everythingIn(file(QStringLiteral("folder"))), {QStringLiteral("setup.run")});
}

void TestDownloadWindow::failsOnAFullDisk() {
    const QByteArray path = QFile::encodeName(downloads_->path());
    if (::mount("tmpfs", path.constData(), "tmpfs", 0, "size=64k") != 0)
        QSKIP("A small file system cannot be mounted here");
    const auto unmount = qScopeGuard([&path] { ::umount2(path.constData(), MNT_DETACH); });
    server_->setAnswer(LoopbackServer::whole(QByteArray(1024 * 1024, 'x')));
    open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No space left")));
    clickOk();
    expectFailure(QStringLiteral("No space left on device"));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
}

void TestDownloadWindow::failsWhenTheFileCannotGrow() {
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const auto restore = qScopeGuard([&] {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    });
    server_->setAnswer(LoopbackServer::whole(QByteArray(1024 * 1024, 'x')));
    open();
    const rlimit small{64 * 1024, before.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Download failed!")));
    clickOk();
    expectFailure(QStringLiteral("File too large"));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
}

void TestDownloadWindow::lastWindowClosedQuits() {
    QGuiApplication::setQuitOnLastWindowClosed(true);
    const auto restore = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(false); });
    QWidget other;
    other.show();
    open();
    bool wasOpenAlone = false;
    QTimer::singleShot(0, this, [this, &other, &wasOpenAlone] {
        other.close();
        // Behind whatever closing that window has posted.
        QTimer::singleShot(0, this, [this, &wasOpenAlone] {
            wasOpenAlone = window_->isVisible();
            button("cancelBtn").click();
        });
    });
    QTimer::singleShot(10s, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(wasOpenAlone);
}

QTEST_MAIN(TestDownloadWindow)
#include "TestDownloadWindow.moc"
