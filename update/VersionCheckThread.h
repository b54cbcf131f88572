#pragma once

#include "update/KXPortavoUpdate.h"
#include "update/UpdateSettings.h"

#include <QObject>
#include <QUrl>

#include <atomic>
#include <memory>
#include <stop_token>

class QThread;

/// Runs the version check beside the program, once. Lives on the main thread, which starts and
/// stops it; its signals come from the thread it runs and reach receivers of the main thread
/// queued.
class VersionCheckThread final : public QObject {
    Q_OBJECT

public:
    enum class Phase { NotStarted, Checking, Lingering, Ended };

    explicit VersionCheckThread(UpdateSettings settings, QObject* parent = nullptr);
    ~VersionCheckThread() override;
    Q_DISABLE_COPY_MOVE(VersionCheckThread)

    [[nodiscard]] Phase phase() const { return phase_; }

    void start();
    /// Ends the check or the wait after it at once and returns when the thread has ended.
    void stop();

    /// Body of the thread. Nothing is thrown out of it.
    void checkPortavoVersionThread();
    /// One check, on the calling thread. Throws std::out_of_range for a version that is too short.
    void checkPortavoVersion();

Q_SIGNALS:
    void newerVersionFound(const QUrl& installer);

private:
    void linger();

    const UpdateSettings settings_;
    const KXPortavoUpdate update_;
    std::stop_source stop_;
    std::atomic<Phase> phase_ = Phase::NotStarted;
    std::unique_ptr<QThread> thread_;
};
