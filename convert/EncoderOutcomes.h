#pragma once

#include "convert/Job.h"

#include <functional>
#include <optional>

class EncoderReader;
struct ConversionContext;

/// What follows the end of an encoder, or of a job that never came to one: the questions, the
/// clean-up, the row's new state and the next job. Each method takes a job to its one outcome and
/// blocks until it has had it: the job's thread only, but for the one that says otherwise. Throws
/// Cancelled when the program closes. Owned by the engine.
class EncoderOutcomes final {
public:
    explicit EncoderOutcomes(const ConversionContext& context) : context_(context) {}
    Q_DISABLE_COPY_MOVE(EncoderOutcomes)

    /// What the end of an encoder that has ended means, carried out.
    void conclude(const JobPtr& job, EncoderReader& reader);
    /// A stop or a removal that was asked for.
    void endAsAsked(const JobPtr& job, EncoderReader& reader);
    /// A failed conversion. `reader` is null where no encoder was launched.
    void failed(const JobPtr& job, EncoderReader* reader);
    /// A failed conversion of a job that no thread could be had for. Main thread.
    void failedWithoutThread(const JobPtr& job);
    /// The output could not be written.
    void writeFailed(const JobPtr& job, EncoderReader& reader);

private:
    enum class Answer {
        EndRun,
        TryAgain,
        DropJob,
        NotAsked ///< a stop or a removal came first: it is the outcome
    };

    void converted(const JobPtr& job);
    static void takeOverTime(const Job& job);
    void noteFailure(const Job& job, const EncoderReader* reader);
    void judgeAtItsEnd(const JobPtr& job);
    [[nodiscard]] Answer askAfterFailure(const JobPtr& job);
    /// Whether the source is there; nothing when the end was asked for before that was known.
    [[nodiscard]] std::optional<bool> lookForSource(const JobPtr& job);
    /// Notes the encoder's file and does the work, both of which may hang; false when the end was
    /// asked for before they were done.
    [[nodiscard]] bool doBeforeBox(const JobPtr& job, const std::function<void()>& work);
    [[nodiscard]] Answer answerAboutFailure(const JobPtr& job, bool isSourceThere);
    [[nodiscard]] int answerToConversionError(const JobPtr& job);
    void settleStopped(const JobPtr& job);
    void settleRemoved(const JobPtr& job);
    void goOn();
    void settleFailed(const JobPtr& job, Answer answer);

    const ConversionContext& context_;
};
