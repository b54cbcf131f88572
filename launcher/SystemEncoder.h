#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The system's ffmpeg: the first one in `searchPath` (as PATH has it) that may be run and is not
/// this launcher, nor one of another installation, which would look for one in its turn. `self` is
/// the program that runs now. Only folders with a whole path count.
[[nodiscard]] std::optional<std::string> findSystemEncoder(std::string_view searchPath,
                                                           const std::string& self);

/// The program that says what a movie is.
struct MovieProbe final {
    std::string path;
    /// Whether it lies beside the encoder, and so is of the same build.
    bool isOfEncoder = false;
};

/// The ffprobe beside the encoder, or else the first one in `searchPath`.
[[nodiscard]] std::optional<MovieProbe> findMovieProbe(const std::string& encoder,
                                                       std::string_view searchPath);
