#pragma once

#include "convert/TimeLeft.h"

#include <QString>

/// "2 h 5 min", "12 min", "40 s"; empty for a time beyond all reason.
[[nodiscard]] QString durationText(double seconds);

/// The time left of all movies; empty where it is not known.
[[nodiscard]] QString timeLeftOfRunText(const TimeLeft& time, std::optional<double> waitingLength);

/// What is known of the time left, a line for the movie and one for the run.
[[nodiscard]] QString timeLeftText(const TimeLeft& time, std::optional<double> waitingLength);
