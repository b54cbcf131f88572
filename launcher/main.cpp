// Stands in the resource folder under the name of ffmpeg, and becomes the system's ffmpeg. The
// window asks for what it always asks for, and counts on the last report and the texts of the
// releases up to 6.0: what today's movies and releases need besides is seen to here.
#include "launcher/Arguments.h"
#include "launcher/ErrorStreamFilter.h"
#include "launcher/Exec.h"
#include "launcher/FileList.h"
#include "launcher/JobAdditions.h"
#include "launcher/MovieQuestion.h"
#include "launcher/Remarks.h"
#include "launcher/SystemEncoder.h"
#include "system/LauncherWords.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace {

constexpr char whereProgramsUsuallyAre[] = "/usr/local/bin:/usr/bin:/bin";

[[noreturn]] void leave(const std::string& line, int status) {
    const std::string whole = line + '\n';
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, whole.data(), whole.size());
    std::_Exit(status);
}

[[noreturn]] void becomeEncoder(const std::string& encoder, const Arguments& arguments) {
    becomeProgram(encoder, arguments);
    leave(missingEncoderWords + encoder + ": " + std::strerror(errno), missingEncoderStatus);
}

void say(const std::string& lines) {
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, lines.data(), lines.size());
}

[[noreturn]] void becomeEncoderForJob(const std::string& encoder, const Arguments& arguments,
                                      std::string_view searchPath) {
    const Findings findings = askAbout(inputOf(arguments), encoder, searchPath);
    if (!findings.hasX264)
        leave(unsuitableEncoderWords + encoder, unsuitableEncoderStatus);
    CompletedJob job = completeJob(arguments, findings.movie, findings.encoder);
    // `-psnr` is an option up to 6.1 and printed up to 6.0: without it all releases end alike.
    if (startErrorStreamFilter(ReportRewriter(namesIn(arguments))))
        job.arguments = withoutQualityReport(job.arguments);
    say(remarksAbout(job));
    becomeEncoder(encoder, job.arguments);
}

} // namespace

int main(int count, char** texts) {
    const char* const path = std::getenv("PATH");
    const std::string searchPath = path ? path : whereProgramsUsuallyAre;
    const auto encoder = findSystemEncoder(searchPath, "/proc/self/exe");
    if (!encoder)
        leave(std::string(missingEncoderWords) + "none of that name is in PATH",
              missingEncoderStatus);
    const Arguments arguments(texts + (count > 0 ? 1 : 0), texts + count);
    if (namesOtherFiles(inputOf(arguments)))
        leave(listOfFilesWords, listOfFilesStatus);
    if (isJob(arguments))
        becomeEncoderForJob(*encoder, arguments, searchPath);
    becomeEncoder(*encoder, arguments);
}
