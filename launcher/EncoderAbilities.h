#pragma once

#include <string_view>

/// What an ffmpeg can do, by what it says of itself.
struct EncoderAbilities final {
    /// Whether its last report has the picture quality (`LPSNR=`) where that was asked for.
    bool reportsQuality = false;
    /// Whether it says that it was built with libx264. Where it says nothing at all about how it
    /// was built, `knowsItsBuild` is false.
    bool wasBuiltWithX264 = false;
    bool knowsItsBuild = false;
};

/// From the answer to `-h long`, banner and all.
///
/// The releases differ in three ways. Up to 5.1 `-psnr` is "calculate PSNR of compressed frames"
/// and is printed in the last report. 6.0 and 6.1 call the same option deprecated; 6.0 still prints
/// it, 6.1 takes the option and prints nothing. From 7.0 on it is no option any more. So an option
/// that is described and not called deprecated is one to rely on, and everything else, an answer
/// that cannot be understood as well, is no such option. To be wrong in that direction costs
/// nothing: without `-psnr` every release ends in the same way (`Lsize=`), 6.0 and the older ones
/// too.
[[nodiscard]] EncoderAbilities abilitiesFrom(std::string_view answer);

/// From the answer to `-h encoder=libx264`.
[[nodiscard]] bool describesX264(std::string_view answer);
