#include "platform/MainThread.h"

#include <QEventLoop>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>

MainThread::MainThread(QObject* parent)
    : QObject(parent), mailbox_(Mailbox<MainThread>::make(*this)), calls_(waker()) {}

MainThread::~MainThread() {
    close();
    mailbox_->close();
}

std::function<void()> MainThread::waker() const {
    return [mailbox = mailbox_] { mailbox->post([](MainThread& self) { self.wokenUp(); }); };
}

void MainThread::wake() {
    waker()();
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

void MainThread::wokenUp() {
    calls_.runPending();
    if (innermost_)
        innermost_->quit();
}
