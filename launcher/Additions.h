#pragma once

#include "launcher/Arguments.h"
#include "launcher/MovieFacts.h"

#include <string>
#include <vector>

/// What comes about when the rules of JobAdditions.cpp are applied, one after the other.
struct Additions final {
    TrackFacts picture; ///< the track that is converted
    int width = 0;      ///< of the output, as it is stored
    int height = 0;

    Arguments beforeInput;
    std::vector<std::string> scaleOptions; ///< of the program's own filter
    std::vector<std::string> filters;      ///< behind it
    Arguments beforeOutput;
    std::vector<std::string> losses;

    void output(std::initializer_list<std::string> arguments) {
        beforeOutput.insert(beforeOutput.end(), arguments);
    }
};
