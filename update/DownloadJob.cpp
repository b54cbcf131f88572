#include "update/DownloadJob.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "update/RunnableFile.h"
#include "update/SafeFileName.h"
#include "widgets/ForeignText.h"

#include <QFileInfo>

#include <stdexcept>
#include <utility>

DownloadJob::DownloadJob(HttpFetch fetch, Listener listener)
    : fetch_(std::move(fetch)), listener_(std::move(listener)) {}

void DownloadJob::setDestination(const QString& path) {
    const std::lock_guard lock(mutex_);
    destination_ = path;
    changed_.notify_all();
}

void DownloadJob::run(const QUrl& url) {
    url_ = url;
    try {
        fetch_.run(url,
                   {[this](const HttpFetch::Response& response) { takeResponse(response); },
                    [this](const QByteArray& piece) { takePiece(piece); }},
                   stop_.get_token());
        complete();
    } catch (const Cancelled&) {
        // Given up: nobody wants to hear of it.
    } catch (const FetchError& error) {
        listener_.failed(error);
    } catch (const PartFile::Error& error) {
        listener_.failed({0, foreignLine(error.description), url_, {}});
    } catch (const std::exception& error) {
        listener_.failed({0, foreignLine(QString::fromUtf8(error.what())), url_, {}});
    }
    // After it was told: this may hang.
    file_.remove();
}

void DownloadJob::takeResponse(const HttpFetch::Response& response) {
    url_ = response.url;
    expected_ = response.expectedLength;
    listener_.responded(suggestedFileName(response.contentDisposition, response.url), expected_);
    path_ = waitForDestination();
    file_.create(QFileInfo(path_).absolutePath());
    listener_.created();
}

void DownloadJob::takePiece(const QByteArray& piece) {
    file_.write(piece);
    if (beginning_.size() < runnableFileBeginning)
        beginning_ += piece.left(runnableFileBeginning - beginning_.size());
    received_ += piece.size();
}

void DownloadJob::complete() {
    if (received_ == 0)
        throw FetchError{
            FetchError::zeroByteResource, QStringLiteral("zero byte resource"), url_, {}};
    if (expected_ > 0 && received_ != expected_)
        throw FetchError{0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"), url_, {}};
    file_.finish();
    if (stop_.stop_requested())
        throw Cancelled();
    const QString path = file_.moveTo(path_);
    listener_.finished(path, isRunnableFile(QFileInfo(path).fileName(), beginning_));
}

QString DownloadJob::waitForDestination() {
    std::unique_lock lock(mutex_);
    if (!changed_.wait(lock, stop_.get_token(), [this] { return !destination_.isEmpty(); }))
        throw Cancelled();
    return destination_;
}
