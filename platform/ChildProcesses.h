#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class ChildProcess;

/// The thread that owns every process: it alone starts, signals and reaps them, so that a reaped
/// process is never signalled, and it never waits for the main thread. It lives as long as the
/// program because the kernel ends the children (SIGKILL) with the thread that started them.
/// Every ChildProcess must be let go of before this is destroyed. Any thread; owned by the
/// controller.
class ChildProcesses final {
public:
    ChildProcesses();
    /// Kills what still lives and waits for it, at most `longestGoodbye`.
    ~ChildProcesses();
    Q_DISABLE_COPY_MOVE(ChildProcesses)

    static constexpr std::chrono::milliseconds longestGoodbye{2000};

    /// Starts `program` with standard input from the null device, standard error in a pipe and
    /// standard output shared. A program that cannot be started gives a process that has ended.
    /// `onEnd` is called once, after the end can be read, on a thread of this class or, for a
    /// failed start, before launch() returns.
    [[nodiscard]] std::shared_ptr<ChildProcess>
    launch(const QString& program, const QStringList& arguments, std::function<void()> onEnd = {});
    [[nodiscard]] int liveCount() const;

private:
    friend class ChildProcess;

    using Command = std::function<void()>;

    void run();
    void post(Command command);
    void postAndWait(const Command& command);
    void runCommands();
    void waitForSomething();
    void start(const std::shared_ptr<ChildProcess>& child, const QString& program,
               const QStringList& arguments);
    void reapEnded();
    bool reapIfEnded(ChildProcess& child);
    bool suspend(ChildProcess& child);
    bool signal(ChildProcess& child, int number);

    mutable std::mutex mutex_;
    std::deque<Command> commands_;
    std::vector<std::shared_ptr<ChildProcess>> live_;
    bool finishing_ = false;
    int wakeFd_ = -1;
    std::thread thread_;
};
