#pragma once

#include "convert/EncoderRun.h"

#include <QStringList>

class ConversionQueue;
class EncoderMonitor;
class EncoderOutcomes;
class PauseAndStop;
struct ConversionContext;

/// Turns a queued job into a running encoder: looks for the source, settles the output's name with
/// the user and launches the encoder. Runs on a thread of its own because the file system and the
/// user may take their time. Owned by the engine.
class ConversionJob final {
public:
    ConversionJob(ConversionContext& context, ConversionQueue& queue, EncoderMonitor& monitor,
                  EncoderOutcomes& outcomes, PauseAndStop& pauseAndStop);
    Q_DISABLE_COPY_MOVE(ConversionJob)

    /// Starts the job's thread. Main thread.
    void start(const EncoderRunPtr& run);

private:
    /// What the main thread's lists say of a job when it begins.
    struct Order {
        QString duration;
        QString source;
        QString profile;
        QString resolution;
        QString outputFolder;
        QString bitrate;
    };
    /// What was settled for the output.
    struct Output {
        QString path;
        bool overwrite = false;
    };

    // The job's thread.
    void work(const EncoderRunPtr& run, int jobId);
    void bgConvertWork(const EncoderRunPtr& run);
    void failBeforeReading(const EncoderRunPtr& run);
    [[nodiscard]] bool dropWithoutDuration(const EncoderRunPtr& run, const Order& order);
    [[nodiscard]] bool sourceIsThere(const EncoderRunPtr& run);
    /// Nothing when the job does not come to an encoder of its own.
    [[nodiscard]] std::optional<Output> settleOutput(const EncoderRunPtr& run, const Order& order);
    [[nodiscard]] std::optional<Output> settleConflict(const EncoderRunPtr& run, const Order& order,
                                                       const QString& base,
                                                       const QString& candidate);
    [[nodiscard]] bool isSourceOfARow(const EncoderRunPtr& run, const QString& path);
    void launch(const EncoderRunPtr& run, const QStringList& arguments);
    void skipConflict(const EncoderRunPtr& run, const QString& candidate);

    // Main thread.
    [[nodiscard]] Order orderOf(const JobRecord& record) const;
    [[nodiscard]] int answerToConflict(const QString& candidate, bool isSource);
    void startEncoder(const EncoderRunPtr& run, const QStringList& arguments);

    /// Runs `f` on the main thread unless the job has had its outcome meanwhile: then the job's
    /// thread has nothing to do any more.
    template <typename F> auto inJob(const EncoderRunPtr& run, F&& f);

    ConversionContext& context_;
    ConversionQueue& queue_;
    EncoderMonitor& monitor_;
    EncoderOutcomes& outcomes_;
    PauseAndStop& pauseAndStop_;
};
