#pragma once

#include "update/UpdateSettings.h"

#include <QDialog>
#include <QString>
#include <QUrl>

#include <memory>

class InstallerDownload;
class WorkerThreads;
struct FetchError;

namespace Ui {
class KXDownload;
}

/// The window that offers a newer version, downloads its installer and opens it, or shows the
/// folder of one that is a program itself. Main thread; owned by the update check. Closing it in
/// any way ends its download for good.
class KXDownloadController final : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QString downloadURL READ downloadURL WRITE setDownloadURL)
    Q_PROPERTY(bool downloading READ downloading)
    Q_PROPERTY(float downloadProgress READ downloadProgress)
    Q_PROPERTY(bool downloadIsIndeterminate READ downloadIsIndeterminate)

public:
    /// The download runs on one of the threads, and may stay there beyond this window's life.
    KXDownloadController(UpdateSettings settings, WorkerThreads& threads,
                         QWidget* parent = nullptr);
    ~KXDownloadController() override;
    Q_DISABLE_COPY_MOVE(KXDownloadController)

    [[nodiscard]] QString downloadURL() const { return downloadURL_; }
    [[nodiscard]] bool downloading() const { return downloading_; }
    /// 0.0 to 1.0.
    [[nodiscard]] float downloadProgress() const { return downloadProgress_; }
    [[nodiscard]] bool downloadIsIndeterminate() const { return downloadIsIndeterminate_; }
    [[nodiscard]] qint64 expectedContentLength() const { return expectedContentLength_; }
    [[nodiscard]] qint64 downloadedSoFar() const { return downloadedSoFar_; }
    [[nodiscard]] QString filePath() const { return filePath_; }
    [[nodiscard]] QUrl fileURL() const { return fileURL_; }

    void setDownloadURL(const QString& url) { downloadURL_ = url; }
    void showWindow();
    void clickOkBtn();
    void clickCancelBtn();
    /// Cancel, Escape and the close button all come here.
    void reject() override;

Q_SIGNALS:
    /// The installer, or its folder, was handed to the system: the program is to clean up and quit.
    void installerOpened();

private:
    void awakeFromNib();
    void startDownload();
    void decideDestinationWithSuggestedFilename(const QString& suggested);
    void didCreateDestination(const QString& path);
    void didReceiveResponse(qint64 expectedLength);
    void didReceiveDataOfLength(qint64 length);
    void downloadDidFinish(const QString& path, bool isRunnable);
    void didFailWithError(const FetchError& error);
    void endDownload();
    void showIndeterminate(bool indeterminate);
    void showBytes();
    /// One button; `then` runs when the box is closed.
    void showAlert(const QString& message, const QString& information,
                   const std::function<void()>& then);

    const UpdateSettings settings_;
    WorkerThreads& threads_;
    const std::unique_ptr<Ui::KXDownload> ui_;
    InstallerDownload* download_ = nullptr; ///< child; nullptr when there is none
    QString downloadURL_;
    QString filePath_;
    QUrl fileURL_;
    qint64 expectedContentLength_ = 0;
    qint64 downloadedSoFar_ = 0;
    float downloadProgress_ = 0.0F;
    bool downloading_ = false;
    bool downloadIsIndeterminate_ = false;
};
