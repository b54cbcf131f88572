#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <deque>
#include <memory>

/// Keeps what the user does to the windows while the main thread waits, and gives it to them
/// afterwards, in its order. What a window is asked for is not kept: a wait hears at once that it
/// is to be closed. Nor are keys that press a button from anywhere; the button sees to itself.
/// Main thread; owned by MainThread.
class HeldInput final : public QObject {
    Q_OBJECT

public:
    HeldInput();
    ~HeldInput() override;
    Q_DISABLE_COPY_MOVE(HeldInput)

    /// Input is kept as long as the event loop of this level is the innermost one: under a box that
    /// opens meanwhile the user goes on. 0 ends it. Answers the level of before.
    int holdAt(int loopLevel);
    void forget() { held_.clear(); }

private:
    struct Held {
        QPointer<QObject> window;
        std::unique_ptr<QEvent> event;
    };

    bool eventFilter(QObject* receiver, QEvent* event) override;
    [[nodiscard]] bool isHolding() const;
    void hold(QObject* window, const QEvent& event);
    void giveNext();

    std::deque<Held> held_;
    int level_ = 0;
    /// The loop in which what was kept is given back.
    int levelAfterwards_ = 0;
    bool isGiving_ = false;
};
