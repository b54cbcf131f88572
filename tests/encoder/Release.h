#pragma once

#include <string>
#include <vector>

namespace fake {

/// How a release of ffmpeg differs from the others, as far as a job can tell.
class Release final {
public:
    /// By a text like "7.1" or "6.0 without-x264"; an empty one is 5.1.
    explicit Release(const std::string& text = {});

    [[nodiscard]] bool hasX264() const { return hasX264_; }
    /// Whether `-psnr` is an option at all.
    [[nodiscard]] bool knowsQualityReport() const { return number_ < 70; }
    /// Whether the last report has the quality, where it was asked for.
    [[nodiscard]] bool printsQualityReport() const { return number_ < 61; }

    [[nodiscard]] std::vector<std::string> banner() const;
    /// The part of `-h long` that tells the releases apart.
    [[nodiscard]] std::string longHelp() const;
    /// The answer to `-h encoder=libx264`.
    [[nodiscard]] std::string encoderHelp() const;
    [[nodiscard]] std::string progressLine(const std::string& position) const;
    [[nodiscard]] std::string summaryLine(const std::string& position, bool quality) const;
    /// What is said when a packet cannot be written, and at the end about the index.
    [[nodiscard]] std::vector<std::string> writeFailure(const std::string& reason) const;

private:
    [[nodiscard]] std::string inItsWords(std::string line) const;

    std::string name_ = "5.1.9-0+deb12u1";
    int number_ = 51; ///< 6.1 is 61
    bool hasX264_ = true;
};

} // namespace fake
