#pragma once

#include "launcher/EncoderAbilities.h"
#include "launcher/MovieFacts.h"

#include <string>
#include <string_view>

/// What is known of a job before it begins.
struct Findings final {
    MovieFacts movie;
    EncoderAbilities encoder;
    /// False where the encoder says of itself that it lacks libx264. One that says nothing may have
    /// it: it is left to say what is wrong with it.
    bool hasX264 = true;
};

/// Asks ffprobe about the movie and, as it is of the same build, about ffmpeg; one process, some
/// 50 ms. Only where that leaves something open ffprobe is asked again, or ffmpeg too. Ten seconds
/// at most each.
[[nodiscard]] Findings askAbout(const std::string& movie, const std::string& encoder,
                                std::string_view searchPath);
