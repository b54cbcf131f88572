#pragma once

#include "convert/Job.h"

#include <QStringList>

class EncoderMonitor;
class EncoderOutcomes;
struct ConversionContext;

/// The thread of a job, from its order to its outcome: looks for the source, settles the output's
/// name with the user, launches the encoder and follows it. It is a thread of its own because the
/// file system, the user and the encoder may take their time. Owned by the engine.
class JobThread final {
public:
    JobThread(const ConversionContext& context, EncoderMonitor& monitor, EncoderOutcomes& outcomes);
    Q_DISABLE_COPY_MOVE(JobThread)

    /// Main thread.
    void start(const JobPtr& job);

private:
    /// What was settled for the output.
    struct Output {
        QString path;
        bool overwrite = false;
    };

    // The job's thread.
    void work(const JobPtr& job);
    void bgConvertWork(const JobPtr& job);
    [[nodiscard]] bool dropWithoutDuration(const JobPtr& job);
    [[nodiscard]] bool sourceIsThere(const JobPtr& job);
    /// Nothing when the job does not come to an encoder of its own.
    [[nodiscard]] std::optional<Output> settleOutput(const JobPtr& job);
    [[nodiscard]] std::optional<Output> settleConflict(const JobPtr& job, const QString& base,
                                                       const QString& candidate);
    [[nodiscard]] bool isSourceOfARow(const JobPtr& job, const QString& path);
    void launch(const JobPtr& job, const QStringList& arguments);
    void skipConflict(const JobPtr& job, const QString& candidate);
    void launchForNothing(const JobPtr& job, const QString& candidate);

    // Main thread.
    [[nodiscard]] int answerToConflict(const QString& candidate, bool isSource);
    void settleAndGoOn(const JobPtr& job);

    /// Runs `f` on the main thread unless the job has had its outcome meanwhile: then the job's
    /// thread has nothing to do any more.
    template <typename F> auto inJob(const JobPtr& job, F&& f);

    const ConversionContext& context_;
    EncoderMonitor& monitor_;
    EncoderOutcomes& outcomes_;
};
