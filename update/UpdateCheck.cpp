#include "update/UpdateCheck.h"

#include "update/KXDownloadController.h"

#include <QApplication>
#include <QTimer>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto betweenTries = 200ms;

} // namespace

UpdateCheck::UpdateCheck(UpdateSettings settings, QObject* parent)
    : QObject(parent), settings_(std::move(settings)), thread_(settings_) {
    connect(&thread_, &VersionCheckThread::newerVersionFound, this, &UpdateCheck::showWindow,
            Qt::QueuedConnection);
}

UpdateCheck::~UpdateCheck() {
    stop();
}

void UpdateCheck::stop() {
    stopped_ = true;
    thread_.stop();
    window_.reset();
}

void UpdateCheck::showWindow(const QUrl& installer) {
    if (stopped_)
        return;
    // One after the other: a window that comes under an open box cannot be used.
    if (QApplication::activeModalWidget()) {
        QTimer::singleShot(betweenTries, this, [this, installer] { showWindow(installer); });
        return;
    }
    window_ = std::make_unique<KXDownloadController>(settings_, downloads_);
    // Queued: whoever quits now may destroy the window.
    connect(window_.get(), &KXDownloadController::installerOpened, this,
            &UpdateCheck::installerOpened, Qt::QueuedConnection);
    window_->setDownloadURL(installer.toString(QUrl::FullyEncoded));
    window_->showWindow();
}
