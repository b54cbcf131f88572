#pragma once

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
    /// Ends the check, the window and its download at once; nothing follows.
    void stop();

Q_SIGNALS:
    /// The installer is open: the program is to clean up and quit.
    void installerOpened();

private:
    void showWindow(const QUrl& installer);

    const UpdateSettings settings_;
    VersionCheckThread thread_;
    std::unique_ptr<KXDownloadController> window_;
    bool stopped_ = false;
};
