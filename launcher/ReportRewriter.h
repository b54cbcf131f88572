#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Turns what the later releases of ffmpeg say into what the earlier ones said, as far as the
/// window reads it: the last report, and that the output could not be written. Everything else goes
/// through as it is and at once; of an unfinished line only what may be the start of such words is
/// kept back.
///
///     frame=  240 fps= 67 q=-1.0 Lsize=   12267KiB time=...
///     frame=  240 fps= 67 q=-1.0 LPSNR=Y:nan U:nan V:nan *:nan size=   12267KiB time=...
class ReportRewriter final {
public:
    /// `names` are the ones that ffmpeg repeats; they may hold line ends, and lines that look like
    /// a report.
    explicit ReportRewriter(const std::vector<std::string>& names);

    /// What is to be passed on now.
    [[nodiscard]] std::string add(std::string_view bytes);
    /// What was kept back, when no more comes.
    [[nodiscard]] std::string finish();

private:
    struct Rule;
    static const std::vector<Rule>& rules();

    [[nodiscard]] std::string takeReady(bool lineIsComplete);
    /// Whether the line's first `length` characters are those of a line of a name.
    [[nodiscard]] bool isInName(std::size_t length) const;
    void beginLine();

    std::vector<std::string> linesOfNames_;
    std::string line_;       ///< the unfinished line, as it came
    std::size_t passed_ = 0; ///< how much of it has been passed on
    bool isSettled_ = false; ///< nothing in the rest of the line is looked for
};
