#pragma once

#include "launcher/JobAdditions.h"

#include <string>

/// What the log is to know of a job, lines that begin with `remarkWords`: the command, as a shell
/// takes it with INPUT and OUTPUT in the place of the names, and what is lost. No text of the movie
/// is in it, nor a word that the window looks for.
[[nodiscard]] std::string remarksAbout(const CompletedJob& job);
