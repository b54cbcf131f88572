#include "platform/MainThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>

namespace {

const auto wakeEvent = static_cast<QEvent::Type>(QEvent::User + 1);

} // namespace

// Outlives the MainThread object for a worker that hangs in the kernel and returns late.
struct MainThread::Waker {
    std::mutex mutex;
    QObject* target = nullptr;

    void wake() {
        const std::lock_guard lock(mutex);
        if (target)
            QCoreApplication::postEvent(target, new QEvent(wakeEvent));
    }
};

MainThread::MainThread(QObject* parent)
    : QObject(parent), waker_(std::make_shared<Waker>()), calls_(waker()) {
    waker_->target = this;
}

MainThread::~MainThread() {
    close();
    const std::lock_guard lock(waker_->mutex);
    waker_->target = nullptr;
}

std::function<void()> MainThread::waker() const {
    return [waker = waker_] { waker->wake(); };
}

void MainThread::wake() {
    waker_->wake();
}

void MainThread::waitUntil(const std::function<bool()>& done, std::chrono::milliseconds atLeast) {
    Q_ASSERT(calls_.isMainThread());
    QEventLoop loop;
    bool timeOver = atLeast.count() <= 0;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, &loop, [&] {
        timeOver = true;
        loop.quit();
    });
    if (!timeOver)
        timer.start(atLeast);

    ++waits_;
    QEventLoop* const outer = std::exchange(innermost_, &loop);
    // Not left to the loop (ExcludeUserInputEvents): that takes the wish to close the window for
    // input, too, and a wait may last.
    const int outerInput = input_.holdAt(QThread::currentThread()->loopLevel() + 1);
    const auto leave = qScopeGuard([&] {
        innermost_ = outer;
        (void)input_.holdAt(outerInput);
        // A wake that came for the outer wait may have ended this one.
        if (outer)
            outer->quit();
        if (--waits_ == 0)
            Q_EMIT waitOver();
    });
    while (!calls_.isClosing() && !(timeOver && done())) {
        // Refuses to run once the application's own loop was told to end.
        if (loop.exec() < 0)
            throw Cancelled();
    }
    if (calls_.isClosing())
        throw Cancelled();
}

void MainThread::waitFor(std::chrono::milliseconds time) {
    waitUntil([] { return true; }, time);
}

void MainThread::close() {
    calls_.close();
    input_.forget();
    if (innermost_)
        innermost_->quit();
}

bool MainThread::event(QEvent* event) {
    if (event->type() != wakeEvent)
        return QObject::event(event);
    calls_.runPending();
    if (innermost_)
        innermost_->quit();
    return true;
}
