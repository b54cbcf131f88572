#pragma once

#include "launcher/Arguments.h"
#include "launcher/EncoderAbilities.h"
#include "launcher/MovieFacts.h"

#include <string>
#include <vector>

/// The arguments of a job, and what the log is to know of how they came about.
struct CompletedJob final {
    Arguments arguments;
    /// What is lost, a line each, in words of ours alone.
    std::vector<std::string> losses;
};

/// The program's arguments and what this movie needs besides: see the table in JobAdditions.cpp.
/// The program's own stay as they are and in their order; of a filter `scale=W:H` it is the
/// beginning that stays. Without a track that can be converted nothing is added.
[[nodiscard]] CompletedJob completeJob(const Arguments& job, const MovieFacts& movie,
                                       const EncoderAbilities& encoder);
