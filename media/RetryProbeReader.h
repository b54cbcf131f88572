#pragma once

#include "media/ProbeValues.h"
#include "media/ReportBlanking.h"

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include <optional>

/// What one chunk of a second probe's report tells about the movie and asks of its reader.
struct RetryFindings final {
    struct Size {
        QString width;
        QString height;
    };

    std::optional<QString> duration;
    std::optional<QString> bitrate;
    std::optional<QString> audioCodec;
    std::optional<QString> videoCodec;
    std::optional<Size> size;
    bool isAac = false;
    bool isHevc = false;
    bool interrupt = false; ///< the child process is to be interrupted
    bool closePipe = false; ///< nothing more is to be read
    QString log;            ///< what went wrong, a line each; empty when nothing did

    /// Leaves what the chunk does not hold as it is.
    void putInto(ProbeValues& values) const;
};

/// Reads a movie's properties out of a second probe's report, each chunk for itself as it arrives.
/// Used by one thread at a time; owned by the probe that runs.
class RetryProbeReader final {
public:
    explicit RetryProbeReader(const QStringList& paths);

    /// Finds nothing any more once it asked for the pipe to be closed.
    [[nodiscard]] RetryFindings read(const QByteArray& chunk);

private:
    QStringDecoder decoder_{QStringConverter::Utf8};
    ReportBlanker blanker_;
    bool isClosed_ = false;
};
