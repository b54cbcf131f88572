#pragma once

#include <string>
#include <vector>

// What the window asks for, by the arguments without the program's name.

using Arguments = std::vector<std::string>;

/// Whether a movie is to be converted with a report of the picture quality. Anything else, an
/// examination (`-i MOVIE`) above all, is the same for every release of ffmpeg.
[[nodiscard]] bool isJob(const Arguments& arguments);

/// The same job without the report of the quality.
[[nodiscard]] Arguments withoutQualityReport(const Arguments& arguments);

/// The movie; empty without one.
[[nodiscard]] std::string inputOf(const Arguments& arguments);

/// The input and the output, which ffmpeg repeats in what it prints.
[[nodiscard]] std::vector<std::string> namesIn(const Arguments& arguments);
