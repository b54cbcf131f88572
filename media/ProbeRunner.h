#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

class ChildProcess;
class ChildProcesses;

/// Runs ffmpeg on a movie with nothing but an input. Any thread; owned by main().
class ProbeRunner final {
public:
    enum class Result {
        Ended,         ///< with whatever status: ffmpeg always misses an output
        FailedToStart, ///< the program is missing or cannot be executed, or says so of ffmpeg
        Silent,        ///< killed after `patience` without a word, or after twice that in all
        Stopped        ///< killed because nobody wants to know any more
    };

    enum class Answer { ReadOn, Interrupt };
    using ChunkHandler = std::function<Answer(const QByteArray& chunk)>;

    /// Stops the probes that are run with it, at once and for good. Any thread.
    class Stop final {
    public:
        Stop() = default;
        Q_DISABLE_COPY_MOVE(Stop)

        void ask();
        [[nodiscard]] bool isAsked() const;

    private:
        friend class ProbeRunner;
        class Watch;

        mutable std::mutex mutex_;
        bool asked_ = false;
        std::shared_ptr<ChildProcess> child_;
    };

    ProbeRunner(ChildProcesses& processes, const QString& encoderPath);
    Q_DISABLE_COPY_MOVE(ProbeRunner)

    /// Blocks until ffmpeg has ended; `handler` gets every chunk of its report meanwhile.
    [[nodiscard]] Result run(const QString& moviePath, const ChunkHandler& handler,
                             Stop& stop) const;
    void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }

private:
    ChildProcesses& processes_;
    const QString encoderPath_;
    std::atomic<std::chrono::milliseconds> patience_{std::chrono::milliseconds(30000)};
};
