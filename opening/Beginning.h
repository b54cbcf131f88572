#pragma once

#include "opening/CommandLine.h"

#include <optional>

/// What happens before the program looks for a display: the command line is read, and where the
/// program runs already, it gets the movies.
struct Beginning {
    std::optional<int> status; ///< that the program ends with, at once
    CommandLine line;
    QString noDisplay; ///< what to say where there is none
    /// One that runs does not take them: it is not to be waited for again.
    bool isRefused = false;

    /// Main thread; no application object lives yet, and none does afterwards. Prints what was
    /// asked for. A message bus that does not answer is out of this process's sight afterwards: the
    /// toolkit would wait for it for ever.
    [[nodiscard]] static Beginning of(int argc, char** argv, const QString& version);
};
