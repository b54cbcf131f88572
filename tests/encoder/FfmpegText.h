#pragma once

#include <map>
#include <string>
#include <vector>

namespace fake {

/// What the report says about a movie. Every value is printed as it stands.
struct Movie {
    std::string path;
    std::string video = "hevc";
    std::string size = "640x480";
    std::string duration = "00:00:10.00";
    std::string audio = "aac";
    std::string bitrate = "775";
    std::string title;

    /// Takes video=, size=, duration=, audio=, bitrate= and title=; "none" leaves a stream out.
    void set(const std::map<std::string, std::string>& values);
};

/// The texts that ffmpeg 5.1.9 prints, in the pieces in which it prints them.
[[nodiscard]] std::vector<std::string> banner();
[[nodiscard]] std::vector<std::string> inputReport(const Movie& movie);
[[nodiscard]] std::vector<std::string> outputReport(const Movie& movie, const std::string& output);
[[nodiscard]] std::string usage();
[[nodiscard]] std::string progressLine(const std::string& position);
[[nodiscard]] std::string summaryLine(const std::string& position);
[[nodiscard]] std::string totals();
/// What the video encoder says of itself at its end.
[[nodiscard]] std::vector<std::string> encoderStatistics(bool quality);

} // namespace fake
