#pragma once

#include <QString>

/// Seconds of a position as the encoder prints it: hours from characters 0 and 1, minutes from 3
/// and 4, seconds from everything after character 6, each read as a decimal number as far as it
/// goes ("N/" is 0). Throws std::out_of_range for a text too short to have these places.
[[nodiscard]] double secondsOfTimecode(const QString& text);

/// The number that `text` begins with, after blanks; 0 where it begins with none.
[[nodiscard]] double leadingDecimal(const QString& text);

/// `length` characters from `position`; throws std::out_of_range where the text has not so many.
[[nodiscard]] QString substring(const QString& text, qint64 position, qint64 length);
