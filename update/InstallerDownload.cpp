#include "update/InstallerDownload.h"

#include "widgets/ForeignText.h"

#include <chrono>
#include <system_error>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// No installer is larger: what goes on is no installer.
constexpr qint64 maximumSize = qint64{2} * 1024 * 1024 * 1024;
/// A bar that is drawn more often only costs.
constexpr auto progressInterval = 100ms;

} // namespace

InstallerDownload::InstallerDownload(const UpdateSettings& settings, WorkerThreads& threads,
                                     QObject* parent)
    : QObject(parent),
      threads_(threads),
      mailbox_(Mailbox<InstallerDownload>::make(*this)),
      job_(std::make_shared<DownloadJob>(
          HttpFetch({maximumSize, settings.silenceLimit}, settings.certificates), listener())) {
    progress_.setInterval(progressInterval);
    connect(&progress_, &QTimer::timeout, this, &InstallerDownload::tellProgress);
}

InstallerDownload::~InstallerDownload() {
    stop();
}

void InstallerDownload::start(const QUrl& url) {
    progress_.start();
    try {
        threads_.start([job = job_, url] { job->run(url); });
    } catch (const std::system_error& error) {
        const QString reason = QString::fromLocal8Bit(error.code().message().c_str());
        mailbox_->post([reason, url](InstallerDownload& download) {
            download.end();
            Q_EMIT download.failed({0, foreignLine(reason), url, {}});
        });
    }
}

void InstallerDownload::setDestination(const QString& path) {
    destination_ = path;
    job_->setDestination(path);
}

void InstallerDownload::stop() {
    end();
    job_->stop();
}

DownloadJob::Listener InstallerDownload::listener() const {
    return {[mailbox = mailbox_](const QString& suggested, qint64 length) {
                mailbox->post([suggested, length](InstallerDownload& download) {
                    Q_EMIT download.responseReceived(length);
                    Q_EMIT download.destinationNeeded(suggested);
                });
            },
            [mailbox = mailbox_] {
                mailbox->post([](InstallerDownload& download) {
                    Q_EMIT download.destinationCreated(download.destination_);
                });
            },
            [mailbox = mailbox_](const QString& path, bool isRunnable) {
                mailbox->post([path, isRunnable](InstallerDownload& download) {
                    download.tellProgress();
                    download.end();
                    Q_EMIT download.finished(path, isRunnable);
                });
            },
            [mailbox = mailbox_](const FetchError& error) {
                mailbox->post([error](InstallerDownload& download) {
                    download.end();
                    Q_EMIT download.failed(error);
                });
            }};
}

void InstallerDownload::tellProgress() {
    const qint64 received = job_->received();
    if (received > told_)
        Q_EMIT dataReceived(received - std::exchange(told_, received));
}

void InstallerDownload::end() {
    progress_.stop();
    mailbox_->close();
}
