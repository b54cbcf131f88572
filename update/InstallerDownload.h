#pragma once

#include "update/HttpFetch.h"

#include <QFile>
#include <QObject>
#include <QString>

#include <chrono>

/// Downloads one file beside its destination and moves it there when it is complete; a download
/// that fails or is given up leaves the destination as it was. Main thread; owned by the controller
/// that is its delegate.
class InstallerDownload final : public QObject {
    Q_OBJECT

public:
    InstallerDownload(HostResolver resolver, std::chrono::milliseconds silenceLimit,
                      QObject* parent = nullptr);
    ~InstallerDownload() override;
    Q_DISABLE_COPY_MOVE(InstallerDownload)

    /// Exactly one of `finished` and `failed` follows, never from inside this call.
    void start(const QUrl& url);
    /// To be called while `destinationNeeded` is emitted; an existing file is replaced at the end.
    void setDestination(const QString& path) { destination_ = path; }
    /// Ends the download for good and removes what has come; no signal follows.
    void abort();

Q_SIGNALS:
    /// -1: the server does not say.
    void responseReceived(qint64 expectedLength);
    void destinationNeeded(const QString& suggestedFileName);
    void destinationCreated(const QString& path);
    void dataReceived(qint64 length);
    void finished();
    void failed(const FetchError& error);

private:
    void createFile();
    void write(const QByteArray& piece);
    void complete();
    [[nodiscard]] bool moveIntoPlace();
    void removeFile();
    void fail(int code, const QString& description);

    HttpFetch fetch_;
    QFile file_; ///< the partial file
    QString destination_;
    qint64 expected_ = -1;
    qint64 received_ = 0;
    bool over_ = false;
};
