#pragma once

#include <QString>

/// What the probes and the encoder's output leave behind for the whole process: each text is that
/// of the last movie that set it, nothing is cleared between movies. Main thread; owned by
/// main(), so that a test starts with a fresh one.
struct ProbeValues final {
    QString durationMain; ///< hours:minutes:seconds.hundredths of the last probed movie
    QString bitrate;      ///< five characters, often with a blank and the "k" of the unit
    QString audioCodec;
    QString videoCodec;
    QString strWidth;
    QString strHeight;
    int commonWidth = 0;
    int commonHeight = 0;
    QString duration; ///< last position read from the encoder; no probe sets it
};
