#include "widgets/ActionGate.h"

#include "platform/MainThread.h"
#include "widgets/WidgetsLog.h"

#include <QApplication>

#include <utility>

bool runGuarded(const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const Cancelled&) {
        qCDebug(lcWidgets, "an action was cut short: the program closes");
    } catch (const std::exception& failure) {
        qCWarning(lcWidgets, "an action ended early: %s", failure.what());
    } catch (...) {
        qCWarning(lcWidgets, "an action ended early");
    }
    return false;
}

ActionGate::ActionGate(MainThread& mainThread, QObject* parent)
    : QObject(parent), mainThread_(mainThread) {
    // Queued: the action that waited comes to its own end first.
    connect(&mainThread_, &MainThread::waitOver, this, &ActionGate::runPutOff,
            Qt::QueuedConnection);
}

bool ActionGate::isOpen() const {
    return !mainThread_.isClosing() && !mainThread_.isWaiting() &&
           !QApplication::activeModalWidget();
}

void ActionGate::pass(std::function<void()> action, std::function<bool()> enabled) {
    if (mainThread_.isClosing() || QApplication::activeModalWidget())
        return;
    if (mainThread_.isWaiting()) {
        putOff_.push_back({std::move(action), std::move(enabled)});
        return;
    }
    if (enabled && !enabled())
        return;
    Q_EMIT actionBegins();
    runGuarded(action);
}

void ActionGate::runPutOff() {
    while (!putOff_.empty() && !mainThread_.isWaiting()) {
        const Action next = std::move(putOff_.front());
        putOff_.erase(putOff_.begin());
        pass(next.run, next.enabled);
    }
}
