#include "launcher/ReportRewriter.h"

#include <algorithm>

namespace {

// More than any line with such words; the rest of a longer one is not looked at.
constexpr std::size_t longestLine = 4096;

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

bool beginsLike(std::string_view text, std::string_view start) {
    const std::size_t length = std::min(text.size(), start.size());
    return text.substr(0, length) == start.substr(0, length);
}

/// Length of the longest end of `text` with which `words` may begin.
std::size_t unfinishedLength(std::string_view text, std::string_view words) {
    std::size_t length = std::min(text.size(), words.size() - 1);
    while (length > 0 && text.substr(text.size() - length) != words.substr(0, length))
        --length;
    return length;
}

} // namespace

struct ReportRewriter::Rule {
    std::string_view lineStart;
    std::string_view words;
    std::string_view replacement;
};

// A line of the report begins with the number of frames, one about an output or one of its streams
// with its name in brackets; what a movie says about itself is always indented.
const std::vector<ReportRewriter::Rule>& ReportRewriter::rules() {
    static const std::vector<Rule> all{
        {"frame=", " Lsize=", " LPSNR=Y:nan U:nan V:nan *:nan size="},
        // What the earlier releases called it. The reason follows in both.
        {"[", "] Error submitting a packet to the muxer: ", "] av_interleaved_write_frame(): "},
        {"Error submitting",
         "Error submitting a packet to the muxer: ", "av_interleaved_write_frame(): "},
        {"[out#", "] Error writing trailer: ", "] Error writing trailer of the output: "},
        // The output's own task ends, again with the reason. The earlier releases had no such line,
        // and the word would make a full disk look like a movie that cannot be converted.
        {"[out#", "] Task finished with error code", "] Task finished with code"},
    };
    return all;
}

ReportRewriter::ReportRewriter(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        auto at = std::find_if(name.begin(), name.end(), isLineEnd);
        while (at != name.end()) {
            const auto start = at + 1;
            at = std::find_if(start, name.end(), isLineEnd);
            linesOfNames_.emplace_back(start, at);
        }
    }
}

std::string ReportRewriter::add(std::string_view bytes) {
    std::string ready;
    while (!bytes.empty()) {
        const auto end = std::find_if(bytes.begin(), bytes.end(), isLineEnd);
        const bool isComplete = end != bytes.end();
        const auto length = static_cast<std::size_t>(end - bytes.begin()) + (isComplete ? 1 : 0);
        line_.append(bytes.substr(0, length));
        bytes.remove_prefix(length);
        ready += takeReady(isComplete);
        if (isComplete)
            beginLine();
    }
    return ready;
}

std::string ReportRewriter::finish() {
    std::string rest = takeReady(true);
    beginLine();
    return rest;
}

void ReportRewriter::beginLine() {
    line_.clear();
    passed_ = 0;
    isSettled_ = false;
}

std::string ReportRewriter::takeReady(bool lineIsComplete) {
    std::string ready;
    std::size_t keptBack = 0;
    for (const Rule& rule : rules()) {
        if (isSettled_ || !beginsLike(line_, rule.lineStart))
            continue;
        const std::size_t found = line_.find(rule.words, passed_);
        if (found == std::string::npos) {
            const std::string_view waiting = std::string_view(line_).substr(passed_);
            keptBack = std::max(keptBack, unfinishedLength(waiting, rule.words));
            continue;
        }
        isSettled_ = true;
        if (isInName(found + rule.words.size()))
            break;
        ready = line_.substr(passed_, found - passed_).append(rule.replacement);
        passed_ = found + rule.words.size();
    }
    if (isSettled_ || lineIsComplete)
        keptBack = 0;
    const std::size_t end = line_.size() - keptBack;
    ready.append(line_, passed_, end - passed_);
    passed_ = end;
    isSettled_ |= line_.size() > longestLine;
    if (isSettled_) {
        line_.clear();
        passed_ = 0;
    }
    return ready;
}

bool ReportRewriter::isInName(std::size_t length) const {
    return std::any_of(linesOfNames_.begin(), linesOfNames_.end(), [&](const auto& each) {
        return each.size() >= length && line_.compare(0, length, each, 0, length) == 0;
    });
}
