#pragma once

#include <QObject>

#include <functional>
#include <vector>

class MainThread;

/// The one way in for whatever the user does to the main window, by hand or through the
/// accessibility tree: inside a wait of the main thread an action is put off until the wait is
/// over and then looked at afresh, and under an open box it does nothing. Nothing that an action
/// throws gets out: it is logged. Main thread; owned by main().
class ActionGate final : public QObject {
    Q_OBJECT

public:
    explicit ActionGate(MainThread& mainThread, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(ActionGate)

    /// Whether an action would begin at once.
    [[nodiscard]] bool isOpen() const;

    /// Runs `action`, now or after the wait, if `enabled` (may be empty) says so then.
    void pass(std::function<void()> action, std::function<bool()> enabled = {});

Q_SIGNALS:
    /// The next action is about to run: what was said of the one before is not news any more.
    void actionBegins();

private:
    struct Action {
        std::function<void()> run;
        std::function<bool()> enabled;
    };

    void runPutOff();

    MainThread& mainThread_;
    std::vector<Action> putOff_;
};

/// Runs `action` and logs what it throws; true when it threw nothing.
bool runGuarded(const std::function<void()>& action);
