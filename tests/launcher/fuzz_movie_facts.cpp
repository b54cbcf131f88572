// Whatever ffprobe says of a movie: the program's own arguments stay, and what is added is in words
// of ours alone, none of which the window takes for something else.
#include "launcher/FileList.h"
#include "launcher/JobAdditions.h"
#include "launcher/Remarks.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

const Arguments job{"-psnr",         "-i",   "/in.mp4", "-codec:v", "libx264", "-vf",
                    "scale=640:360", "-crf", "15",      "-acodec",  "copy",    "/out.mp4"};

void demand(bool holds) {
    if (!holds)
        std::abort();
}

bool isOurs(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("-_=:./,|()*;\\").find(c) != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view said(reinterpret_cast<const char*>(data), size);
    (void)isListOfFiles(said);
    const CompletedJob whole = completeJob(job, movieFactsFrom(said), abilitiesFrom(said));
    auto next = whole.arguments.begin();
    for (const std::string& own : job) {
        // A filter is longer; everything else is found again, in this order.
        const auto isIt = [&own](const std::string& each) {
            return each.compare(0, own.size(), own) == 0 &&
                   (each.size() == own.size() || own.compare(0, 6, "scale=") == 0);
        };
        next = std::find_if(next, whole.arguments.end(), isIt);
        demand(next != whole.arguments.end());
        ++next;
    }
    demand(next == whole.arguments.end());
    demand(whole.arguments.size() < 3000);
    for (const std::string& each : whole.arguments)
        demand(std::all_of(each.begin(), each.end(), isOurs));
    const std::string remarks = remarksAbout(whole);
    for (const char* marker : {"time=", "error", "Invalid", "LPSNR", "frame=", "No space", "\r"})
        demand(remarks.find(marker) == std::string::npos);
    return 0;
}
