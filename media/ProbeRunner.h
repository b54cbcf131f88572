#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

class ChildProcesses;
class MainThread;

/// Runs ffmpeg on a movie with nothing but an input, and waits for its end with a turning main
/// loop. Main thread; owned by the controller.
class ProbeRunner final {
public:
    enum class Result {
        Ended,         ///< with whatever status: ffmpeg always misses an output
        FailedToStart, ///< the program is missing or cannot be executed, or says so of ffmpeg
        Silent         ///< killed after `patience` without a word, or after twice that in all
    };

    enum class Answer { ReadOn, Interrupt };
    /// Called on a thread of its own for every chunk of the report. It may outlive the call when
    /// the program closes, so it must own all that it touches.
    using ChunkHandler = std::function<Answer(const QByteArray& chunk)>;

    ProbeRunner(MainThread& mainThread, ChildProcesses& processes, const QString& encoderPath);
    Q_DISABLE_COPY_MOVE(ProbeRunner)

    /// Throws Cancelled when the program closes meanwhile.
    Result run(const QString& moviePath, ChunkHandler handler);
    void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }

private:
    MainThread& mainThread_;
    ChildProcesses& processes_;
    const QString encoderPath_;
    std::chrono::milliseconds patience_{30000};
};
