#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include <sys/types.h>

class ChildProcesses;

/// How a child process came to its end.
struct ProcessEnd final {
    enum class How {
        FailedToStart, ///< `code` is an errno value
        Exited,        ///< `code` is the exit status
        Killed         ///< `code` is the signal's number
    };

    How how = How::Exited;
    int code = 0;

    [[nodiscard]] bool succeeded() const { return how == How::Exited && code == 0; }
};

/// One program that runs beside this one: its standard error is read by one reader thread, its
/// life-cycle belongs to the ChildProcesses that launched it. Any thread unless said otherwise.
class ChildProcess final {
public:
    enum class Read {
        Data,    ///< something was appended
        Ended,   ///< the process has ended and all that it said has been read
        Woken,   ///< wakeReader() was called
        TimedOut ///< nothing came within the limit
    };

    ~ChildProcess();
    Q_DISABLE_COPY_MOVE(ChildProcess)

    [[nodiscard]] pid_t processIdentifier() const { return pid_; }
    [[nodiscard]] int readEnd() const { return readEnd_; }
    /// Nothing while it lives.
    [[nodiscard]] std::optional<ProcessEnd> end() const;
    /// Blocks; nothing when it still lives after `limit`.
    [[nodiscard]] std::optional<ProcessEnd> waitForEnd(std::chrono::milliseconds limit) const;

    /// Appends what standard error holds now, at most `largestRead` bytes; blocks while there is
    /// nothing, up to `limit` where one is given. The end is the process's own. What it said may
    /// still be on its way then, through a filter of its own: the end of the stream is waited for,
    /// but no longer than `lastWords`, because a grandchild may hold the pipe. One reader thread.
    [[nodiscard]] Read read(QByteArray& buffer,
                            std::optional<std::chrono::milliseconds> limit = std::nullopt);
    static constexpr int largestRead = 1 << 20;
    static constexpr std::chrono::milliseconds lastWords{2000};
    /// Ends a read() that is under way, or the next one.
    void wakeReader();

    /// False when it has ended already, which is the only way in which it can fail.
    bool suspend();
    /// After the end these do nothing and answer false.
    void resume();
    bool terminate();
    bool interrupt();
    bool kill();

private:
    friend class ChildProcesses;

    ChildProcess(ChildProcesses& owner, std::function<void()> onEnd);
    void setEnd(ProcessEnd end);
    [[nodiscard]] Read readLastWords(QByteArray& buffer);
    void drainWakeups() const;

    ChildProcesses& owner_;
    const std::function<void()> onEnd_;
    pid_t pid_ = 0;
    int pidFd_ = -1;
    int readEnd_ = -1;
    int wakeFd_ = -1;
    bool endOfStream_ = false;
    /// Where the end has been seen: the moment up to which the stream is read.
    std::optional<std::chrono::steady_clock::time_point> lastWordsUntil_;

    mutable std::mutex mutex_;
    mutable std::condition_variable ended_;
    std::optional<ProcessEnd> end_;
};
