#pragma once

#include "convert/RunNote.h"

#include <chrono>
#include <vector>

/// How often a job that is under way marks its note as alive.
constexpr std::chrono::seconds aliveInterval(10);

/// What is found at the output's path of a job whose program has died.
enum class Leftover {
    HalfMovie,  ///< what the encoder left
    Nothing,    ///< no file
    OutOfReach, ///< its disk or share is not there
    NoFile,     ///< a link, a folder, a pipe
    Source,
    Older,   ///< what stood there before, which the encoder never touched
    Changed, ///< somebody has been at it since, or put it there
    Whole,   ///< a finished movie
    InUse    ///< a job that is under way writes it
};

/// What else is known at the next start.
struct Circumstances final {
    QByteArray boot;
    /// When the dead program was last known to live, in seconds since 1970.
    qint64 lastAlive = 0;
    /// The notes of jobs that are under way.
    std::vector<RunNote> underWay;
};

/// Looks at the file. May hang on a dead share.
[[nodiscard]] Leftover leftover(const RunNote& note, const Circumstances& now);
/// For the log.
[[nodiscard]] const char* nameOf(Leftover found);
/// The session of this computer that is on; empty where the kernel does not say.
[[nodiscard]] QByteArray bootId();
