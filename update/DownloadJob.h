#pragma once

#include "update/HttpFetch.h"
#include "update/PartFile.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

/// One download on the thread that run() is called on: the network and the files. What it tells its
/// listener it tells on that thread. Shared by that thread and whoever started it; the thread may
/// hang in the file system for ever.
class DownloadJob final {
public:
    struct Listener {
        /// The file's name and length as the server has them; -1 when it says no length. The job
        /// waits for its destination then.
        std::function<void(const QString& suggestedFileName, qint64 expectedLength)> responded;
        std::function<void()> created;
        /// Where the file is; whether the system might run it.
        std::function<void(const QString& path, bool isRunnable)> finished;
        std::function<void(const FetchError& error)> failed;
    };

    DownloadJob(HttpFetch fetch, Listener listener);
    Q_DISABLE_COPY_MOVE(DownloadJob)

    /// Returns when all is over and nothing partial is left. Nothing is told after a stop. Nothing
    /// is thrown.
    void run(const QUrl& url);

    /// Any thread.
    void setDestination(const QString& path);
    /// Any thread; run() returns as soon as the file system lets it.
    void stop() { stop_.request_stop(); }
    /// Bytes that are in the file. Any thread.
    [[nodiscard]] qint64 received() const { return received_; }

private:
    void takeResponse(const HttpFetch::Response& response);
    void takePiece(const QByteArray& piece);
    void complete();
    [[nodiscard]] QString waitForDestination();

    const HttpFetch fetch_;
    const Listener listener_;
    std::stop_source stop_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    QString destination_; ///< guarded by the mutex
    std::atomic<qint64> received_ = 0;

    // Of the thread that runs.
    QUrl url_;
    PartFile file_;
    QString path_;
    QByteArray beginning_;
    qint64 expected_ = -1;
};
