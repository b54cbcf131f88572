#pragma once

#include "convert/EncoderRun.h"

#include <functional>
#include <optional>

class ConversionQueue;
class EncoderReader;
struct ConversionContext;

/// What follows the end of an encoder, or of a job that never came to one: the questions, the
/// clean-up, the row's new state and the next job. Each method takes a job to its one outcome and
/// blocks until it has had it: worker threads only, but for the one that says otherwise. Throws
/// Cancelled when the program closes.
/// Owned by the engine.
class EncoderOutcomes final {
public:
    EncoderOutcomes(ConversionContext& context, ConversionQueue& queue)
        : context_(context), queue_(queue) {}
    Q_DISABLE_COPY_MOVE(EncoderOutcomes)

    /// What the end of an encoder that has ended means, carried out.
    void conclude(const EncoderRunPtr& run, EncoderReader& reader);
    /// A stop or a removal that was asked for.
    void endAsAsked(const EncoderRunPtr& run, EncoderReader& reader);
    /// A failed conversion. `reader` is null where no encoder was launched.
    void failed(const EncoderRunPtr& run, EncoderReader* reader);
    /// A failed conversion of a job that no thread could be had for. Main thread.
    void failedWithoutThread(const EncoderRunPtr& run);
    /// The output could not be written.
    void writeFailed(const EncoderRunPtr& run, EncoderReader& reader);

private:
    enum class Answer {
        EndRun,
        TryAgain,
        DropJob,
        NotAsked ///< a stop or a removal came first: it is the outcome
    };

    void converted(const EncoderRunPtr& run);
    static void takeOverTime(const EncoderRun& run);
    static void logFailure(const EncoderRun& run, const EncoderReader* reader);
    void judgeAtItsEnd(const EncoderRunPtr& run);
    [[nodiscard]] Answer askAfterFailure(const EncoderRunPtr& run);
    /// Whether the source is there; nothing when the end was asked for before that was known.
    [[nodiscard]] std::optional<bool> lookForSource(const EncoderRunPtr& run);
    /// Notes the encoder's file and does the work, both of which may hang; false when the end was
    /// asked for before they were done.
    [[nodiscard]] bool doBeforeBox(const EncoderRunPtr& run, const std::function<void()>& work);
    [[nodiscard]] Answer answerAboutFailure(const EncoderRunPtr& run, bool isSourceThere);
    [[nodiscard]] int answerToConversionError(const EncoderRunPtr& run);
    void settleStopped(const EncoderRunPtr& run);
    void settleRemoved(const EncoderRunPtr& run);
    void goOn();
    void settleFailed(const EncoderRunPtr& run, Answer answer);

    ConversionContext& context_;
    ConversionQueue& queue_;
};
