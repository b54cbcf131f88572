#pragma once

#include "convert/RunWatch.h"

class LauncherProgress;
class MainWindow;
class Notifications;
class SleepInhibitor;

/// What the desktop learns of a run: the machine is kept awake while there is work, the icon shows
/// how far it is, and the user is told of its end where the window is not in front. Main thread;
/// owned by main().
class RunCompanion final : public QObject {
    Q_OBJECT

public:
    /// What a test brings its own of.
    struct Desktop {
        SleepInhibitor& sleep;
        Notifications& notifications;
        LauncherProgress& launcher;
    };

    RunCompanion(RunWatch& watch, MainWindow& window, Desktop desktop);
    Q_DISABLE_COPY_MOVE(RunCompanion)

private:
    void workBegan();
    void ended(const RunWatch::Outcome& outcome);
    void over();
    void showNotKeptAwake(bool shown);
    /// Whether the main window, or a box over it, is where the user is.
    [[nodiscard]] bool isWindowActive() const;

    MainWindow& window_;
    const Desktop desktop_;
};
