#pragma once

#include "platform/desktop/MessageBus.h"
#include "platform/desktop/ProgramId.h"

#include <QStringList>

#include <chrono>

/// What the program is called on the session's message bus.
namespace busname {
inline const QString& service = programId;
inline const QString path = QStringLiteral("/example/quorvex/reelshift");
inline const QString interface = QStringLiteral("org.freedesktop.Application");
inline const QString quitAction = QStringLiteral("quit");
/// In the data that come with a request, besides what every program knows.
inline const QString display = QStringLiteral("quorvex-display");
inline const QString validUntil = QStringLiteral("quorvex-valid-until");
} // namespace busname

/// How a start met the program that runs already.
enum class HandOver {
    Taken,      ///< it has the movies, and its window comes to the front
    NotRunning, ///< nobody has the program's name
    NotTaken,   ///< it hangs, is about to end, or shows its window on another display
    NoBus,      ///< there is none, or it says nothing
};

/// How long the bus and the program are waited for.
struct HandOverLimits {
    std::chrono::milliseconds bus{1000};
    std::chrono::milliseconds program{2000};
};

/// Hands the movies, which may be none, to the program that runs already. Nothing is started for
/// it. Blocks, no longer than the limits say; any thread.
[[nodiscard]] HandOver handOver(MessageBus& bus, const QStringList& addresses,
                                const HandOverLimits& limits = {});

/// Milliseconds of a clock that all programs have in common.
[[nodiscard]] qint64 commonClock();
