#pragma once

#include <QObject>

class AppDelegate;
class MainThread;
class MainWindow;
class QSessionManager;
struct SharedState;

/// What the program does when the session is about to end: it writes its folders down, and during
/// a run has the session wait until the user has said whether it may. For desktops with a session
/// manager of X11; others are told of a run by `SessionInhibition`. Main thread; owned by main().
class SessionEnd final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        AppDelegate& controller;
        MainThread& mainThread;
        SharedState& state;
        MainWindow& window;
    };

    explicit SessionEnd(Parts parts, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(SessionEnd)

private:
    void commit(QSessionManager& manager);
    [[nodiscard]] bool isWorkLost() const;
    /// Asks the user. Throws Cancelled when there is nothing to ask about any more.
    [[nodiscard]] bool mayEnd(QSessionManager& manager) const;

    const Parts parts_;
};
