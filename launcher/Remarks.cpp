#include "launcher/Remarks.h"

#include "system/LauncherWords.h"

#include <algorithm>

namespace {

/// What the window looks for in an encoder's words, cut in two as a shell puts it together again.
std::string withoutMarker(std::string argument) {
    constexpr std::string_view marker = "time=";
    if (const std::size_t at = argument.find(marker); at != std::string::npos)
        argument.insert(at + marker.size() - 1, "''");
    return argument;
}

/// What stands here holds no quotes of its own.
std::string forShell(const std::string& argument) {
    const bool isPlain = std::all_of(argument.begin(), argument.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               std::string_view("-_=:./,").find(c) != std::string_view::npos;
    });
    return isPlain && !argument.empty() ? withoutMarker(argument) : '\'' + argument + '\'';
}

} // namespace

std::string remarksAbout(const CompletedJob& job) {
    const Arguments& all = job.arguments;
    const auto input = std::find(all.begin(), all.end(), "-i") + 1;
    std::string text = std::string(remarkWords) + "ffmpeg";
    for (auto each = all.begin(); each != all.end(); ++each) {
        if (each == input)
            text += " INPUT";
        else
            text += each + 1 == all.end() ? " OUTPUT" : ' ' + forShell(*each);
    }
    text += '\n';
    for (const std::string& loss : job.losses)
        text.append(remarkWords).append(loss).append("\n");
    return text;
}
