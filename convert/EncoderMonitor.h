#pragma once

#include "convert/EncoderRun.h"

class ConversionQueue;
class EncoderOutcomes;
class EncoderReader;
struct ConversionContext;
struct EncoderPiece;

/// Follows a running encoder: a thread of its own reads what the encoder says, a second a piece,
/// and the main thread takes each piece into the row, carries out a pause and sees how the job
/// goes on. Owned by the engine.
class EncoderMonitor final {
public:
    EncoderMonitor(ConversionContext& context, ConversionQueue& queue, EncoderOutcomes& outcomes);
    Q_DISABLE_COPY_MOVE(EncoderMonitor)

    /// Starts the reader thread of a run that was just launched. Main thread. Throws
    /// std::system_error where no thread can be had.
    void watch(const EncoderRunPtr& run);
    /// Reads on the caller's thread what a launch says that is no job.
    void discard(const EncoderRunPtr& run);

private:
    enum class Step {
        Go,          ///< nothing to do for this piece
        WaitASecond, ///< progress: the rest of the handling follows a second later
        EndAsAsked,
        Failed,
        WriteFailed,
        AwaitEnd ///< the summary was seen, or it was interrupted
    };

    // Reader thread.
    void follow(const EncoderRunPtr& run);
    void followToEnd(const EncoderRunPtr& run, EncoderReader& reader);
    [[nodiscard]] Step handle(const EncoderRunPtr& run, const EncoderPiece& piece);
    void carryOut(Step step, const EncoderRunPtr& run, EncoderReader& reader);

    // Main thread.
    [[nodiscard]] Step takePiece(const EncoderRunPtr& run, const EncoderPiece& piece);
    [[nodiscard]] Step takePosition(const EncoderRunPtr& run, const QString& text);
    [[nodiscard]] Step afterASecond(const EncoderRunPtr& run, const EncoderPiece& piece);
    void pause(const EncoderRunPtr& run);

    ConversionContext& context_;
    ConversionQueue& queue_;
    EncoderOutcomes& outcomes_;
};
