#pragma once

#include <QString>

/// Words of a job record, compared by exact equality; never shown to the user as they are.
namespace status {
inline const QString STATWT = QStringLiteral("Waiting");
inline const QString STATPS = QStringLiteral("Paused");
inline const QString STATPR = QStringLiteral("Processing");
inline const QString STATCO = QStringLiteral("Converted");
inline const QString STATPW = QStringLiteral("PausedWait");
inline const QString STATFL = QStringLiteral("Failed");
/// Passed to a row's ProgressObject only: it turns the bar on.
inline const QString STATCR = QStringLiteral("Converting");

inline const QString CONCOMPLETE = QStringLiteral("Complete");
inline const QString CONRUNNING = QStringLiteral("Running");
inline const QString CONSTOPPED = QStringLiteral("Stopped");
} // namespace status

/// Image names of a row's button.
namespace rowimage {
inline const QString remove = QStringLiteral("table_close2.png");
inline const QString pause = QStringLiteral("table_pause2.png");
inline const QString resume = QStringLiteral("table_play2.png");
} // namespace rowimage
