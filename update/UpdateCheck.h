#pragma once

#include "platform/WorkerThreads.h"
#include "update/UpdateSettings.h"
#include "update/VersionCheckThread.h"

#include <QObject>

#include <memory>

class KXDownloadController;

/// The program's offer of a newer version: the check at start, and the window when there is one.
/// Main thread; owned by the application's controller.
class UpdateCheck final : public QObject {
    Q_OBJECT

public:
    explicit UpdateCheck(UpdateSettings settings, QObject* parent = nullptr);
    ~UpdateCheck() override;
    Q_DISABLE_COPY_MOVE(UpdateCheck)

    /// nullptr until a newer version was found, and after `stop`.
    [[nodiscard]] KXDownloadController* window() const { return window_.get(); }
    [[nodiscard]] VersionCheckThread& thread() { return thread_; }

    void start() { thread_.start(); }
    /// Ends the check, the window and its download at once; nothing follows but the end of the
    /// download's thread.
    void stop();
    /// Whether every download has come to its end, in this time at the latest; false when one hangs
    /// in the file system and must be left behind.
    [[nodiscard]] bool waitForDownloads(std::chrono::milliseconds limit) const {
        return downloads_.waitForAll(limit);
    }

Q_SIGNALS:
    /// The installer is open: the program is to clean up and quit.
    void installerOpened();

private:
    void showWindow(const QUrl& installer);

    const UpdateSettings settings_;
    VersionCheckThread thread_;
    WorkerThreads downloads_;
    std::unique_ptr<KXDownloadController> window_;
    bool stopped_ = false;
};
