#pragma once

#include <QString>

/// A text from outside (what a server says, the name of a file) as one line for a box or the log:
/// line ends and control characters become a space, and what is longer than `maximum` characters
/// lacks its middle. Pure; any thread.
[[nodiscard]] QString foreignLine(const QString& text, qsizetype maximum = 120);
