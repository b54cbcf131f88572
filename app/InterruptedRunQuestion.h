#pragma once

#include "convert/InterruptedRun.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class ActionGate;
class MainThread;
class QWidget;
class WorkerThreads;

/// Tells after a start that the program died in the middle of a run, and offers to move the half
/// movie that it has left to the trash. Looks for it on a thread that may be left behind, and asks
/// when the window is up and nothing else is open. Main thread; owned by main().
class InterruptedRunQuestion final : public QObject {
    Q_OBJECT

public:
    InterruptedRunQuestion(MainThread& mainThread, WorkerThreads& workers, const ActionGate& gate,
                           QWidget& window, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(InterruptedRunQuestion)

    /// Begins to look.
    void start(const QString& stateFolder);

private:
    [[nodiscard]] bool mayAsk() const;
    void askNext();
    void carryOut(const std::shared_ptr<InterruptedRun>& run, bool moves);

    MainThread& mainThread_;
    WorkerThreads& workers_;
    const ActionGate& gate_;
    QWidget& window_;
    InterruptedRun::Found found_;
    QStringList notMoved_;
    QTimer timer_;
};
