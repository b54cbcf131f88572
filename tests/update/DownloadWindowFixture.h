#pragma once

#include "platform/LocalizedStrings.h"
#include "platform/WorkerThreads.h"
#include "update/KXDownloadController.h"
#include "update/LoopbackServer.h"

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

/// The update window before every test: a server of its own, an empty Downloads folder, and notes
/// of what was opened. Base of the tests of the window.
class DownloadWindowFixture : public QObject {
    Q_OBJECT

protected:
    static constexpr qsizetype size = 1000;

    [[nodiscard]] static QByteArray lengthHead(qsizetype length);
    /// Starts an answer and leaves the rest to the test.
    [[nodiscard]] static LoopbackServer::Answer begun(const QByteArray& bytes);
    [[nodiscard]] static QStringList everythingIn(const QString& folder);
    [[nodiscard]] static QByteArray contents(const QString& path);

    [[nodiscard]] QPushButton& button(const char* name) const;
    [[nodiscard]] QProgressBar& bar() const;
    [[nodiscard]] QMessageBox* alert() const { return window_->findChild<QMessageBox*>(); }
    [[nodiscard]] QString file(const QString& name) const { return downloads_->filePath(name); }
    /// A file of this name and contents in the Downloads folder.
    void makeFile(const QString& name, const QByteArray& text) const;
    void open(const QString& path = QStringLiteral("/setup.deb"));
    void openAddress(const QString& address);
    void clickOk();
    /// Whether nothing of a download is left in the folder, now or soon.
    void expectNothingLeft();
    void send(const QByteArray& bytes) { server_->connection()->write(bytes); }
    void takeScreenshot(const char* name);
    /// The failure box as it must be; then it is closed, and the window with it.
    void expectFailure(const QString& message);

    std::unique_ptr<StringTable> texts_;
    std::unique_ptr<LoopbackServer> server_;
    std::unique_ptr<QTemporaryDir> downloads_;
    std::unique_ptr<WorkerThreads> threads_;
    std::unique_ptr<KXDownloadController> window_;
    UpdateSettings settings_;
    QList<QUrl> opened_;
    bool wasVisibleAtOpening_ = false;
    int asksToQuit_ = 0;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};
