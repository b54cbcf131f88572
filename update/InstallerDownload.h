#pragma once

#include "platform/Mailbox.h"
#include "platform/WorkerThreads.h"
#include "update/DownloadJob.h"
#include "update/UpdateSettings.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

/// Downloads one file beside its destination and moves it there when it is complete; nothing that
/// is there is replaced, and nothing is left of a download that fails or is given up. The network
/// and the files are a thread's, which is left behind where a file system does not answer. Main
/// thread; owned by the controller that is its delegate.
class InstallerDownload final : public QObject {
    Q_OBJECT

public:
    InstallerDownload(const UpdateSettings& settings, WorkerThreads& threads,
                      QObject* parent = nullptr);
    ~InstallerDownload() override;
    Q_DISABLE_COPY_MOVE(InstallerDownload)

    /// Exactly one of `finished` and `failed` follows, never from inside this call.
    void start(const QUrl& url);
    /// The answer to `destinationNeeded`.
    void setDestination(const QString& path);
    /// Ends the download for good; what has come is removed by its thread. No signal follows.
    void stop();

Q_SIGNALS:
    /// -1: the server does not say.
    void responseReceived(qint64 expectedLength);
    void destinationNeeded(const QString& suggestedFileName);
    void destinationCreated(const QString& path);
    void dataReceived(qint64 length);
    /// Where the file is; whether the system might run it.
    void finished(const QString& path, bool isRunnable);
    void failed(const FetchError& error);

private:
    [[nodiscard]] DownloadJob::Listener listener() const;
    void tellProgress();
    void end();

    WorkerThreads& threads_;
    /// Outlives this object for a thread that hangs.
    const std::shared_ptr<Mailbox<InstallerDownload>> mailbox_;
    const std::shared_ptr<DownloadJob> job_;
    QString destination_;
    QTimer progress_;
    qint64 told_ = 0;
};
