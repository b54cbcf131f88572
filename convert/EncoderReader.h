#pragma once

#include "convert/Job.h"
#include "convert/LastWords.h"
#include "convert/LauncherRemarks.h"
#include "convert/PieceCutter.h"

#include <chrono>
#include <functional>
#include <optional>

class MainThread;
struct ConversionContext;

/// Reads one encoder's standard error, piece by piece, up to its end. The job's thread, which owns
/// it.
class EncoderReader final {
public:
    struct Event {
        enum class Kind {
            Piece,
            EndAsked, ///< a stop or a removal was asked for a while ago and nothing was said since
            Ended
        };

        Kind kind = Kind::Ended;
        EncoderPiece piece = {};
    };

    EncoderReader(const ConversionContext& context, const JobPtr& job);
    Q_DISABLE_COPY_MOVE(EncoderReader)

    /// What it said last, line by line.
    [[nodiscard]] QStringList lastWords() const { return lastWords_.lines(); }

    /// What the launcher made of its command, and what it said of it.
    [[nodiscard]] const QStringList& remarks() const { return heard_; }

    /// Blocks, also while the encoder is suspended. Throws Cancelled when the program closes.
    [[nodiscard]] Event next();
    /// Reads on for at most `limit`, only to see whether the encoder comes to its end in good
    /// order; false when it still lives.
    bool awaitEnd(std::chrono::milliseconds limit);
    /// The same for an encoder that has nothing more to do: a stop or a removal waits for it no
    /// longer than a second.
    bool awaitOwnEnd(std::chrono::milliseconds limit);
    /// Tells the encoder to end; false when it has ended by itself.
    bool tellToEnd();
    /// Waits for the end of an encoder that was told to, and kills it when it does not obey in
    /// time.
    void awaitObedience();
    void endEncoder() {
        tellToEnd();
        awaitObedience();
    }
    /// The program closes: reads on for at most `limit` without a word to the main thread, only to
    /// know whether the encoder's file is whole.
    void readLastWords(std::chrono::milliseconds limit);

private:
    using Deadline = std::function<JobNews::Clock::time_point()>;

    void take(const QByteArray& bytes);
    bool readToEnd(const Deadline& deadline);
    [[nodiscard]] std::optional<std::chrono::milliseconds> limitOfRead() const;
    /// Notes since when an unfinished line waits for its end: not for long, whatever comes.
    [[nodiscard]] bool isRestDue();
    [[nodiscard]] std::optional<EncoderPiece> cut(bool flush);
    [[nodiscard]] std::optional<EncoderPiece> cutAtEnd();
    std::optional<EncoderPiece> noted(std::optional<EncoderPiece> piece);
    void noteEnd();

    MainThread& mainThread_;
    const JobPtr job_;
    /// How long a silent encoder that was asked to end is waited for.
    const std::chrono::milliseconds second_;
    const std::chrono::milliseconds obedience_;
    PieceCutter cutter_;
    std::optional<JobNews::Clock::time_point> restSince_;
    LastWords lastWords_;
    LauncherRemarks remarks_;
    QStringList heard_;
};
