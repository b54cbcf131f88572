#pragma once

#include <QString>

/// What the program prints on a terminal, in the language of the string table.

[[nodiscard]] QString helpText();
[[nodiscard]] QString versionText(const QString& version);
/// Two lines about an option that nobody knows, or whatever else is wrong.
[[nodiscard]] QString mistakeText(const QString& mistake);
[[nodiscard]] QString noDisplayText();
