#include "update/VersionCheckThread.h"

#include "update/UpdateLog.h"
#include "widgets/ForeignText.h"

#include <QThread>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace {

/// Kept: on system releases 10.10 and later of the tenth line the thread stays for this long.
constexpr std::chrono::seconds lingerTime{10000};

} // namespace

VersionCheckThread::VersionCheckThread(UpdateSettings settings, QObject* parent)
    : QObject(parent), settings_(std::move(settings)), update_(settings_) {}

VersionCheckThread::~VersionCheckThread() {
    stop();
}

void VersionCheckThread::start() {
    if (thread_)
        return;
    phase_ = Phase::Checking;
    thread_.reset(QThread::create([this] { checkPortavoVersionThread(); }));
    thread_->setObjectName(QStringLiteral("version check"));
    thread_->start();
}

void VersionCheckThread::stop() {
    stop_.request_stop();
    if (thread_)
        thread_->wait();
}

void VersionCheckThread::checkPortavoVersionThread() {
    try {
        checkPortavoVersion();
    } catch (const std::exception& error) {
        qCWarning(lcUpdate, "The version check ended: %s",
                  qUtf8Printable(foreignLine(QString::fromUtf8(error.what()))));
    } catch (...) {
        qCWarning(lcUpdate, "The version check ended for an unknown reason");
    }
    linger();
    phase_ = Phase::Ended;
}

void VersionCheckThread::checkPortavoVersion() {
    const auto installer = update_.newerInstaller(stop_.get_token());
    if (installer)
        Q_EMIT newerVersionFound(*installer);
}

void VersionCheckThread::linger() {
    const auto system = settings_.systemVersion();
    if (!system || system->major != 10 || system->minor < 10)
        return;
    phase_ = Phase::Lingering;
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, stop_.get_token(), lingerTime, [] { return false; });
}
