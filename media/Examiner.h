#pragma once

#include "media/Examination.h"

#include <QThread>

#include <functional>
#include <memory>

class WorkerThreads;

/// Examines movies on threads of its own, as many at a time as there are processors. Any thread;
/// owned by main().
class Examiner final {
public:
    enum class Place { First, Last };

    /// `lookIsOver` is called on a thread of the examiner's, which may outlive this object where
    /// the kernel holds it.
    Examiner(WorkerThreads& workers, const ProbeRunner& runner, std::function<void()> lookIsOver,
             int atOnce = QThread::idealThreadCount());
    /// Stops what goes on and waits for it, at most `longestGoodbye`.
    ~Examiner();
    Q_DISABLE_COPY_MOVE(Examiner)

    static constexpr std::chrono::milliseconds longestGoodbye{500};

    /// Takes its turn after, or before, all that have not begun. It is stopped when the caller's
    /// last copy of the pointer goes. Throws std::system_error where no thread can be had for it.
    [[nodiscard]] std::shared_ptr<const Examination> examine(const QString& moviePath, bool twice,
                                                             Place place);
    [[nodiscard]] int atOnce() const { return atOnce_; }

private:
    struct Queue;

    WorkerThreads& workers_;
    const int atOnce_;
    const std::shared_ptr<Queue> queue_;
};
