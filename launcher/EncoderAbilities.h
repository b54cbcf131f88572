#pragma once

#include <string_view>

/// What an ffmpeg can do, by what it or the ffprobe of the same build says of itself.
struct EncoderAbilities final {
    /// Where it says nothing at all about how it was built, this is false, as are the others.
    bool knowsItsBuild = false;
    bool wasBuiltWithX264 = false;
    /// The filter `zscale`, which knows every kind of light and colour.
    bool hasZscale = false;
};

/// From the banner of ffmpeg, or the version section of ffprobe's format "flat".
[[nodiscard]] EncoderAbilities abilitiesFrom(std::string_view answer);

/// From the answer to `-h encoder=libx264`.
[[nodiscard]] bool describesX264(std::string_view answer);
