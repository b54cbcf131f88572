#include "TestProgram.h"
#include "platform/DeadShare.h"
#include "update/DownloadWindowFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTimer>
#include <QtTest>

using namespace std::chrono_literals;

class TestDownloadWindow final : public DownloadWindowFixture {
    Q_OBJECT

private Q_SLOTS:
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
    void neverReplacesAFile();
    void neverReplacesAFileThatComesMeanwhile();
    void neverReplacesAFolder();
    void neverWritesThroughALink();
    void createsTheDownloadsFolder();
    void neverMakesAFileExecutable();
    void showsTheFolderOfAProgram_data();
    void showsTheFolderOfAProgram();
    void closesOpensThenAsksToQuit();
    void saysWhereAFileIsThatCannotBeOpened();
    void staysAliveWithADeadFolder_data();
    void staysAliveWithADeadFolder();
    void lastWindowClosedQuits();
};

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
    QCOMPARE(window_->filePath(), file(QStringLiteral("setup.deb")));
    QCOMPARE(window_->fileURL(), QUrl::fromLocalFile(file(QStringLiteral("setup.deb"))));
    // Nothing stands under the final name before the last byte is there.
    QVERIFY(!QFile::exists(file(QStringLiteral("setup.deb"))));
    takeScreenshot("update-half-way");

    send(QByteArray(size / 2, 'y'));
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(window_->downloadProgress(), 1.0F);
    QCOMPARE(contents(file(QStringLiteral("setup.deb"))),
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
    QCOMPARE(contents(file(QStringLiteral("setup.deb"))), QByteArray(size, 'x'));
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
    expectNothingLeft();
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

    QTest::newRow("address") << "/a/b/setup-9.deb?x=y" << QByteArray() << "setup-9.deb";
    QTest::newRow("header") << "/a" << QByteArray("attachment; filename=\"s t.deb\"") << "s t.deb";
    QTest::newRow("way up") << "/a" << QByteArray("attachment; filename=\"../../up.deb\"")
                            << "up.deb";
    QTest::newRow("escaped way up") << "/..%2f..%2fup.deb" << QByteArray() << "up.deb";
    QTest::newRow("absolute") << "/a" << QByteArray("attachment; filename=/etc/x.deb") << "x.deb";
    QTest::newRow("hidden") << "/.bashrc" << QByteArray() << "bashrc";
    QTest::newRow("nothing") << "/" << QByteArray() << "reelshift-update";
    QTest::newRow("control characters") << "/a%0Ab%1Bc" << QByteArray() << "abc";
    QTest::newRow("as long as a name can be")
        << QString(QStringLiteral("/") % QString(400, u'n') % QStringLiteral(".deb"))
        << QByteArray() << QString(QString(251, u'n') % QStringLiteral(".deb"));
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
            LoopbackServer::redirect("/files/real.deb")(socket);
        else
            LoopbackServer::whole("installer")(socket);
    });
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(everythingIn(downloads_->path()), {QStringLiteral("real.deb")});
}

void TestDownloadWindow::neverReplacesAFile() {
    makeFile(QStringLiteral("setup.deb"), "old");
    makeFile(QStringLiteral("setup (1).deb"), "not so old");
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    const QString made = file(QStringLiteral("setup (2).deb"));
    QCOMPARE(contents(file(QStringLiteral("setup.deb"))), QByteArray("old"));
    QCOMPARE(contents(file(QStringLiteral("setup (1).deb"))), QByteArray("not so old"));
    QCOMPARE(contents(made), QByteArray("installer"));
    QCOMPARE(everythingIn(downloads_->path()).size(), 3);
    QCOMPARE(opened_, {QUrl::fromLocalFile(made)});
    QCOMPARE(window_->filePath(), made);
    QCOMPARE(window_->fileURL(), QUrl::fromLocalFile(made));
}

void TestDownloadWindow::neverReplacesAFileThatComesMeanwhile() {
    server_->setAnswer(begun(lengthHead(8) + "new"));
    open();
    clickOk();
    QTRY_COMPARE(window_->downloadedSoFar(), 3);
    makeFile(QStringLiteral("setup.deb"), "another's");
    send("er one");
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(file(QStringLiteral("setup.deb"))), QByteArray("another's"));
    QCOMPARE(contents(file(QStringLiteral("setup (1).deb"))), QByteArray("newer on"));
    QCOMPARE(everythingIn(downloads_->path()).size(), 2);
}

void TestDownloadWindow::neverReplacesAFolder() {
    QVERIFY(QDir(downloads_->path()).mkdir(QStringLiteral("setup.deb")));
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QVERIFY(QFileInfo(file(QStringLiteral("setup.deb"))).isDir());
    QCOMPARE(contents(file(QStringLiteral("setup (1).deb"))), QByteArray("installer"));
}

void TestDownloadWindow::neverWritesThroughALink() {
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("precious"));
    QVERIFY(QFile::link(target, file(QStringLiteral("setup.deb"))));
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QVERIFY(!QFile::exists(target));
    QCOMPARE(contents(file(QStringLiteral("setup (1).deb"))), QByteArray("installer"));
}

void TestDownloadWindow::createsTheDownloadsFolder() {
    settings_.downloadsFolder = file(QStringLiteral("not/there"));
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(contents(file(QStringLiteral("not/there/setup.deb"))), QByteArray("installer"));
}

void TestDownloadWindow::neverMakesAFileExecutable() {
    server_->setAnswer(LoopbackServer::whole("installer"));
    open();
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    const auto permissions = QFile::permissions(file(QStringLiteral("setup.deb")));
    QVERIFY(
        !(permissions & (QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther)));
    QVERIFY(permissions & QFile::ReadOwner);
}

void TestDownloadWindow::showsTheFolderOfAProgram_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("by its name") << "setup.run" << QByteArray("anything");
    QTest::newRow("script") << "setup.deb" << QByteArray("#!/bin/sh\nrm -rf ~\n");
    QTest::newRow("desktop entry")
        << "setup.txt" << QByteArray("# hello\n[Desktop Entry]\nExec=sh\n");
}

void TestDownloadWindow::showsTheFolderOfAProgram() {
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    server_->setAnswer(LoopbackServer::whole(content));
    open(QString(u'/' + name));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is a program")));
    clickOk();
    QTRY_COMPARE(asksToQuit_, 1);
    QCOMPARE(opened_, {QUrl::fromLocalFile(downloads_->path())});
    QVERIFY(!wasVisibleAtOpening_);
    QCOMPARE(contents(file(name)), content);
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
    QVERIFY(alert()->text().endsWith(file(QStringLiteral("setup.deb"))));
    QCOMPARE(asksToQuit_, 0);
    alert()->buttons()[0]->click();
    QTRY_COMPARE(asksToQuit_, 1);
}

void TestDownloadWindow::staysAliveWithADeadFolder_data() {
    QTest::addColumn<bool>("diesInTheMiddle");
    QTest::newRow("dead from the start") << false;
    QTest::newRow("dies in the middle") << true;
}

// Cancelled at once although the file system never answers; when it does, nothing is left.
void TestDownloadWindow::staysAliveWithADeadFolder() {
    QFETCH(bool, diesInTheMiddle);
    auto dead = diesInTheMiddle ? nullptr : std::make_unique<DeadShare>(downloads_->path());
    server_->setAnswer(begun(lengthHead(size) + "half"));
    open();
    clickOk();
    if (diesInTheMiddle) {
        QTRY_COMPARE(window_->downloadedSoFar(), 4);
        dead = std::make_unique<DeadShare>(downloads_->path());
    } else {
        QTRY_VERIFY(DeadShare::hangingCalls() > 0);
    }
    QVERIFY(window_->downloading());
    QTest::mouseClick(&button("cancelBtn"), Qt::LeftButton);
    QTRY_VERIFY(!window_->isVisible());
    QTRY_VERIFY(DeadShare::hangingCalls() > 0);
    QCOMPARE(threads_->runningCount(), 1);
    window_.reset();
    dead.reset();
    QVERIFY(threads_->waitForAll(20s));
    QVERIFY(everythingIn(downloads_->path()).isEmpty());
    QVERIFY(opened_.isEmpty());
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

REELSHIFT_TEST(test_download_window, TestDownloadWindow, QApplication)
#include "TestDownloadWindow.moc"
