#include "launcher/EncoderAbilities.h"

namespace {

bool contains(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

/// What stands behind `word` where the line begins with it, apart from blanks.
std::string_view behind(std::string_view line, std::string_view word) {
    const std::size_t start = line.find_first_not_of(' ');
    if (start == std::string_view::npos || line.substr(start, word.size()) != word)
        return {};
    return line.substr(start + word.size());
}

template <typename F> void forEachLine(std::string_view text, F&& f) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        f(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

} // namespace

EncoderAbilities abilitiesFrom(std::string_view answer) {
    EncoderAbilities abilities;
    forEachLine(answer, [&](std::string_view line) {
        for (const std::string_view start : {"configuration:", "program_version.configuration="}) {
            const auto build = behind(line, start);
            if (build.empty())
                continue;
            abilities.knowsItsBuild = true;
            abilities.wasBuiltWithX264 |= contains(build, "--enable-libx264");
            abilities.hasZscale |= contains(build, "--enable-libzimg");
        }
    });
    return abilities;
}

bool describesX264(std::string_view answer) {
    bool found = false;
    forEachLine(answer,
                [&](std::string_view line) { found |= !behind(line, "Encoder libx264 ").empty(); });
    return found;
}
