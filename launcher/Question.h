#pragma once

#include "launcher/Arguments.h"

#include <chrono>
#include <string>

enum class Streams { Both, StandardOutput };

/// What a program says to these arguments, in the order in which it comes. It is killed when it is
/// not done within `limit` or after a megabyte; what came until then is the answer. The time in
/// which this process was stopped does not count. The program does not outlive this process.
[[nodiscard]] std::string answerOf(const std::string& program, const Arguments& arguments,
                                   std::chrono::milliseconds limit,
                                   Streams streams = Streams::Both);
