#pragma once

#include "media/ProbeRunner.h"

#include <QString>

class FileList;
struct SharedState;

/// Examines the movie of the row that is being added. Main thread; owned by the controller.
class MovieProbe final {
public:
    MovieProbe(ProbeRunner& runner, FileList& files, SharedState& state)
        : runner_(runner), files_(files), state_(state) {}
    Q_DISABLE_COPY_MOVE(MovieProbe)

    /// Whether the last probe found no program to run.
    [[nodiscard]] bool isEncoderMissing() const { return encoderMissing_; }
    /// Whether the last whole report says that ffmpeg cannot encode H.264.
    [[nodiscard]] bool isEncoderUnsuitable() const { return encoderUnsuitable_; }
    /// Whether the last probe was killed because it would not end.
    [[nodiscard]] bool gaveUp() const { return gaveUp_; }

    /// The whole report on a movie, without what the movie says about itself. `rowNumber` is the
    /// number of rows with the new one.
    [[nodiscard]] QString getVideoInfo2(const QString& moviePath, int rowNumber);
    /// The second look, chunk by chunk: writes what it found into the record at `rowNumber` - 1.
    void getVideoInfo(const QString& moviePath, int rowNumber);

private:
    ProbeRunner::Result run(const QString& moviePath, ProbeRunner::ChunkHandler handler);

    ProbeRunner& runner_;
    FileList& files_;
    SharedState& state_;
    bool encoderMissing_ = false;
    bool encoderUnsuitable_ = false;
    bool gaveUp_ = false;
};
