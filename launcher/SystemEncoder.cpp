#include "launcher/SystemEncoder.h"

#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr char programName[] = "ffmpeg";
constexpr char probeName[] = "ffprobe";
// Whatever is called so in a folder of this name is a launcher of ours.
constexpr char ownFolder[] = "reelshift";

bool isSameFile(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool mayBeRun(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) &&
           ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

bool isLauncher(const std::string& path, const std::string& self) {
    std::error_code failure;
    const fs::path real = fs::canonical(path, failure);
    return isSameFile(path, self) || (!failure && real.parent_path().filename() == ownFolder);
}

template <typename F>
std::optional<std::string> findProgram(std::string_view searchPath, const char* name, F&& isMeant) {
    while (!searchPath.empty()) {
        const std::size_t colon = searchPath.find(':');
        const std::string_view folder = searchPath.substr(0, colon);
        searchPath.remove_prefix(colon == std::string_view::npos ? searchPath.size() : colon + 1);
        if (folder.empty() || folder.front() != '/')
            continue;
        std::string candidate(folder);
        candidate.append("/").append(name);
        if (mayBeRun(candidate) && isMeant(candidate))
            return candidate;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> findSystemEncoder(std::string_view searchPath, const std::string& self) {
    return findProgram(searchPath, programName,
                       [&](const std::string& candidate) { return !isLauncher(candidate, self); });
}

std::optional<MovieProbe> findMovieProbe(const std::string& encoder, std::string_view searchPath) {
    const std::string beside = encoder.substr(0, encoder.rfind('/') + 1) + probeName;
    if (mayBeRun(beside))
        return MovieProbe{beside, true};
    const auto other = findProgram(searchPath, probeName, [](const std::string&) { return true; });
    return other ? std::optional(MovieProbe{*other, false}) : std::nullopt;
}
