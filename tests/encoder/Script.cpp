#include "encoder/Script.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace fake {

namespace {

constexpr std::string_view kFirstLine = "#scripted movie";

Steps parseSteps(const std::vector<std::string>& lines, std::size_t& at) {
    Steps steps;
    while (at < lines.size()) {
        const std::string& line = lines[at++];
        const std::size_t blank = line.find(' ');
        Step step{
            line.substr(0, blank), blank == std::string::npos ? "" : line.substr(blank + 1), {}};
        if (step.command == "end")
            return steps;
        if (step.command == "loop")
            step.body = parseSteps(lines, at);
        steps.push_back(std::move(step));
    }
    return steps;
}

} // namespace

bool Script::read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    readable_ = file.good();
    std::string line;
    if (!readable_ || !std::getline(file, line) || line != kFirstLine)
        return false;
    std::map<std::string, std::vector<std::string>> lines;
    std::string current;
    while (std::getline(file, line)) {
        if (line.empty() || line.front() == '#')
            continue;
        if (line.front() == '[' && line.back() == ']') {
            current = line.substr(1, line.size() - 2);
            lines[current];
            continue;
        }
        lines[current].push_back(line);
    }
    for (const auto& [name, text] : lines) {
        std::size_t at = 0;
        sections_[name] = parseSteps(text, at);
    }
    return true;
}

bool Script::hasSection(const std::string& name) const {
    return sections_.count(name) != 0;
}

bool Script::hasNumberedSections() const {
    const auto next = sections_.upper_bound("encode ");
    return next != sections_.end() && next->first.rfind("encode ", 0) == 0;
}

const Steps& Script::section(const std::string& name) const {
    return sections_.at(name);
}

std::map<std::string, std::string> words(std::string_view text) {
    std::map<std::string, std::string> found;
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == ' ') {
            ++at;
            continue;
        }
        const std::size_t equals = text.find('=', at);
        if (equals == std::string_view::npos)
            break;
        const std::string key(text.substr(at, equals - at));
        const bool quoted = equals + 1 < text.size() && text[equals + 1] == '"';
        const std::size_t begin = equals + (quoted ? 2 : 1);
        std::size_t end = text.find(quoted ? '"' : ' ', begin);
        if (end == std::string_view::npos)
            end = text.size();
        found[key] = unescape(text.substr(begin, end - begin));
        at = end + 1;
    }
    return found;
}

std::string unescape(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const char kind = text[++i];
        if (kind == 'x' && i + 2 < text.size()) {
            const std::string digits(text.substr(i + 1, 2));
            plain += static_cast<char>(std::strtol(digits.c_str(), nullptr, 16));
            i += 2;
            continue;
        }
        plain += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
    }
    return plain;
}

} // namespace fake
