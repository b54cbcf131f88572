#include "launcher/Arguments.h"

#include <algorithm>

namespace {

// What stands behind `-i` may be a movie that is called like an option.
Arguments::const_iterator input(const Arguments& arguments) {
    return std::find(arguments.begin(), arguments.end(), "-i");
}

Arguments::const_iterator qualityReport(const Arguments& arguments) {
    const auto end = input(arguments);
    const auto found = std::find(arguments.begin(), end, "-psnr");
    return found == end ? arguments.end() : found;
}

} // namespace

bool isJob(const Arguments& arguments) {
    return qualityReport(arguments) != arguments.end();
}

Arguments withoutQualityReport(const Arguments& arguments) {
    Arguments result = arguments;
    const auto found = qualityReport(arguments);
    if (found != arguments.end())
        result.erase(result.begin() + (found - arguments.begin()));
    return result;
}

std::string inputOf(const Arguments& arguments) {
    const auto found = input(arguments);
    return arguments.end() - found > 1 ? *(found + 1) : std::string();
}

std::vector<std::string> namesIn(const Arguments& arguments) {
    std::vector<std::string> names;
    const auto found = input(arguments);
    if (arguments.end() - found > 1) {
        names.push_back(*(found + 1));
        names.push_back(arguments.back());
    }
    return names;
}
