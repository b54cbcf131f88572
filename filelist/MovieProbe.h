#pragma once

#include "media/Examination.h"

#include <QString>

#include <memory>
#include <utility>

class FileList;
class MainThread;
struct SharedState;

/// Reads what the examination of the movie that is being added has found into its row. Main thread;
/// owned by main().
class MovieProbe final {
public:
    MovieProbe(MainThread& mainThread, FileList& files, SharedState& state)
        : mainThread_(mainThread), files_(files), state_(state) {}
    Q_DISABLE_COPY_MOVE(MovieProbe)

    /// Whether the last probe found no program to run.
    [[nodiscard]] bool isEncoderMissing() const { return encoderMissing_; }
    /// Whether the last whole report says that ffmpeg cannot encode H.264.
    [[nodiscard]] bool isEncoderUnsuitable() const { return encoderUnsuitable_; }
    /// Whether the last probe was killed because it would not end.
    [[nodiscard]] bool gaveUp() const { return gaveUp_; }

    /// Of the movie of the next two calls; it may have been going on for a while.
    void setExamination(std::shared_ptr<const Examination> examination) {
        examination_ = std::move(examination);
    }
    /// Whether nobody waits any more for an examination that is not over.
    void setLeft(bool isLeft);
    [[nodiscard]] bool isLeft() const { return isLeft_; }
    /// Whether the last look was left before it was over; nothing is known from it.
    [[nodiscard]] bool wasLeft() const { return wasLeft_; }
    /// The whole report on a movie, without what the movie says about itself. `rowNumber` is the
    /// number of rows with the new one. Both wait with a turning main loop.
    [[nodiscard]] QString getVideoInfo2(const QString& moviePath, int rowNumber);
    /// The second look, chunk by chunk: writes what it found into the record at `rowNumber` - 1.
    void getVideoInfo(const QString& moviePath, int rowNumber);

private:
    [[nodiscard]] bool waitFor(bool (Examination::*isOver)() const);
    void take(ProbeRunner::Result result, const QString& moviePath);

    MainThread& mainThread_;
    FileList& files_;
    SharedState& state_;
    std::shared_ptr<const Examination> examination_;
    bool isLeft_ = false;
    bool wasLeft_ = false;
    bool encoderMissing_ = false;
    bool encoderUnsuitable_ = false;
    bool gaveUp_ = false;
};
