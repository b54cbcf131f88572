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
    [[nodiscard]] std::string usage() const;

    /// Status of one whose input cannot be opened or read, whose output is there already, or whose
    /// index does not fit on the disk.
    [[nodiscard]] int noSourceStatus() const { return number_ < 61 ? 1 : 254; }
    [[nodiscard]] int invalidSourceStatus() const { return number_ < 61 ? 1 : 183; }
    [[nodiscard]] int existingOutputStatus() const { return number_ < 61 ? 1 : 0; }
    [[nodiscard]] int indexFailureStatus() const { return number_ < 61 ? 0 : 228; }

    /// What is said of an input that cannot be used, for that reason, and of an output that exists.
    [[nodiscard]] std::vector<std::string> unusableSource(const std::string& path,
                                                          const std::string& reason) const;
    [[nodiscard]] std::vector<std::string> existingOutput(const std::string& path) const;

    /// From 7.0 on the first report comes late, and has often no position yet.
    [[nodiscard]] std::string firstReport() const;
    [[nodiscard]] std::string progressLine(const std::string& position) const;
    /// The last report and the totals, in the release's order, and what follows them.
    [[nodiscard]] std::vector<std::string> ending(const std::string& position, bool quality) const;
    /// The decoder's complaints about pictures that it cannot read.
    [[nodiscard]] std::vector<std::string> damage() const;
    /// What is said when a packet cannot be written, and at the end about the index.
    [[nodiscard]] std::vector<std::string> writeFailure(const std::string& output,
                                                        const std::string& reason) const;
    /// The same where the packets fitted, and the index did not.
    [[nodiscard]] std::vector<std::string> indexFailure(const std::string& output,
                                                        const std::string& reason) const;
    /// And after the last report.
    [[nodiscard]] std::string lastWordOnIndex(const std::string& output,
                                              const std::string& reason) const;

private:
    [[nodiscard]] std::string summaryLine(const std::string& position, bool quality) const;
    [[nodiscard]] std::string inItsWords(std::string line) const;

    std::string name_ = "5.1.9-0+deb12u1";
    int number_ = 51; ///< 6.1 is 61
    bool hasX264_ = true;
};

} // namespace fake
