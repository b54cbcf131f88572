#pragma once

#include "convert/Job.h"

class EncoderOutcomes;
class EncoderReader;
struct ConversionContext;
struct EncoderPiece;

/// Follows a running encoder on its job's thread, which reads what the encoder says, a second a
/// piece; the main thread takes each piece into the row, carries out a pause and sees how the job
/// goes on. Owned by the engine.
class EncoderMonitor final {
public:
    EncoderMonitor(const ConversionContext& context, EncoderOutcomes& outcomes)
        : context_(context), outcomes_(outcomes) {}
    Q_DISABLE_COPY_MOVE(EncoderMonitor)

    /// Returns when the job has had its outcome. Throws Cancelled when the program closes.
    void follow(const JobPtr& job);
    /// Ends the encoder of a job that went wrong: nobody reads it any more.
    void giveUp(const JobPtr& job);

private:
    enum class Step {
        Go,          ///< nothing to do for this piece
        WaitASecond, ///< progress: the rest of the handling follows a second later
        EndAsAsked,
        Failed,
        WriteFailed,
        AwaitEnd ///< the summary was seen, or it was interrupted
    };

    // The job's thread.
    void followToEnd(const JobPtr& job, EncoderReader& reader);
    [[nodiscard]] Step handle(const JobPtr& job, const EncoderPiece& piece);
    void carryOut(Step step, const JobPtr& job, EncoderReader& reader);

    // Main thread.
    [[nodiscard]] Step takePiece(const JobPtr& job, const EncoderPiece& piece);
    [[nodiscard]] Step takePosition(const JobPtr& job, const QString& text);
    [[nodiscard]] Step afterASecond(const JobPtr& job, const EncoderPiece& piece);
    void pause(const JobPtr& job);

    const ConversionContext& context_;
    EncoderOutcomes& outcomes_;
};
