#pragma once

#include <QString>

/// What desktops know the program by: its desktop entry's name without the ending, and its name on
/// the session's message bus.
inline const QString programId = QStringLiteral("example.quorvex.reelshift");
