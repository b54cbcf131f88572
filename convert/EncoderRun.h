#pragma once

#include "convert/EncoderLife.h"
#include "convert/JobNote.h"
#include "convert/PartialOutput.h"
#include "filelist/JobRecord.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include <time.h>

class ProgressObject;

/// What the reader thread of an encoder must know while it waits. Any thread.
class ReaderSignals final {
public:
    using Clock = std::chrono::steady_clock;

    /// When the encoder was asked to end, if it was.
    [[nodiscard]] std::optional<Clock::time_point> endAskedAt() const;
    /// Blocks while the encoder is suspended and not asked to end; false when the program closes.
    [[nodiscard]] bool waitWhileSuspended() const;

    /// Blocks until `done` answers true, which wake() has it asked for, or until the end is asked
    /// for or the program closes.
    void waitUntil(const std::function<bool()>& done) const;

    void wake();
    void setSuspended(bool suspended);
    void askForEnd();
    void close();

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::optional<Clock::time_point> endAskedAt_;
    bool suspended_ = false;
    bool closing_ = false;
};

/// What an encoder has said about its file, noted as it is read: the main thread hears of it later,
/// or, where the program closes, never. Any thread.
class EncoderWords final {
public:
    /// Whether its file is whole, for all that was read of an encoder that ended with status 0.
    [[nodiscard]] bool allowWholeFile() const;
    /// False when there was no last word within `limit`.
    bool waitForLastWord(std::chrono::milliseconds limit) const;

    void note(const EncoderPiece& piece);
    void noteLastWord();

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    bool summary_ = false;
    bool failure_ = false; ///< the file is no converted movie, whatever else is said
    bool isLastRead_ = false;
};

/// One job on its way: what was settled for it, its encoder and the encoder's life. Shared by the
/// threads that wait for it. Everything is the main thread's, except what is marked otherwise:
/// the fixed things are written once, before a second thread sees them.
struct EncoderRun final {
    enum class Kind {
        Job,
        WithoutArguments ///< the launch that follows a skipped conflict: no job, asks nothing
    };

    Kind kind = Kind::Job;
    int jobId = 0;
    JobRecordPtr record;
    std::shared_ptr<ProgressObject> progress;
    EncoderLife life;
    /// Percent read from the piece that is being handled.
    int percent = 0;
    /// The last try to delete its output has not come back: it lies where nothing answers.
    bool outputIsOutOfReach = false;

    // Fixed before the reader starts; any thread.
    double total = 0.0; ///< seconds
    QString source;
    /// When the movie was last changed; the finished file gets the same time.
    std::optional<timespec> sourceTime;
    PartialOutput output;
    std::shared_ptr<ChildProcess> task;
    ReaderSignals reader;
    EncoderWords words;
    JobNote note;

    /// Asks for the end: the reader carries it out at the next piece, or a second later.
    void ask(EncoderLife::Request request);
    void suspended();
    void resumed();
};

using EncoderRunPtr = std::shared_ptr<EncoderRun>;
