#pragma once

#include <QString>

/// As it is in the title of the window and over every message box; the same in every language.
inline const QString appName = QStringLiteral("Quorvex Reelshift");
