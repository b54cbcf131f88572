#pragma once

#include <string>
#include <string_view>

// Files that are no movie but name others: ffmpeg would open its neighbours, by their content and
// under any name. A movie is one file.

/// How much of a file's beginning is looked at; ffmpeg itself decides by no more.
inline constexpr std::size_t decidingLength = 1 << 20;

/// Whether ffmpeg takes a file that begins so for a list of the kinds concat, HLS, DASH or IMF.
[[nodiscard]] bool isListOfFiles(std::string_view beginning);

/// The same of a file. False where it cannot be read, or is no ordinary file.
[[nodiscard]] bool namesOtherFiles(const std::string& path);
