#pragma once

#include "launcher/Arguments.h"

#include <chrono>
#include <string>

/// All that a program says to these arguments, on both of its streams, in the order in which it
/// comes. It is killed when it is not done by `limit` or after a megabyte; what came until then is
/// the answer. It does not outlive this process.
[[nodiscard]] std::string answerOf(const std::string& program, const Arguments& arguments,
                                   std::chrono::milliseconds limit);
