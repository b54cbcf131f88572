// Stands in the resource folder under the name of ffmpeg, and becomes the system's ffmpeg: the
// window counts on the last report and the texts of the releases up to 6.0, see EncoderAbilities.h.
#include "launcher/Arguments.h"
#include "launcher/EncoderAbilities.h"
#include "launcher/ErrorStreamFilter.h"
#include "launcher/Process.h"
#include "launcher/Question.h"
#include "launcher/SystemEncoder.h"
#include "launcher/Words.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char whereProgramsUsuallyAre[] = "/usr/local/bin:/usr/bin:/bin";
constexpr std::chrono::seconds patience{10};

[[noreturn]] void leave(const std::string& line, int status) {
    const std::string whole = line + '\n';
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, whole.data(), whole.size());
    std::_Exit(status);
}

[[noreturn]] void becomeEncoder(const std::string& encoder, const Arguments& arguments) {
    becomeProgram(encoder, arguments);
    leave(missingEncoderWords + encoder + ": " + std::strerror(errno), missingEncoderStatus);
}

/// An ffmpeg that does not say how it was built, or says it in another way, is asked for the
/// encoder itself; one that does not answer at all is left to say what is wrong with it.
bool hasX264(const std::string& encoder, const EncoderAbilities& abilities) {
    if (abilities.wasBuiltWithX264)
        return true;
    const std::string answer =
        answerOf(encoder, {"-hide_banner", "-h", "encoder=libx264"}, patience);
    return answer.empty() || describesX264(answer);
}

[[noreturn]] void becomeEncoderForJob(const std::string& encoder, const Arguments& arguments) {
    const EncoderAbilities abilities = abilitiesFrom(answerOf(encoder, {"-h", "long"}, patience));
    if (!hasX264(encoder, abilities))
        leave(unsuitableEncoderWords + encoder, unsuitableEncoderStatus);
    if (!abilities.reportsQuality && startErrorStreamFilter(ReportRewriter(namesIn(arguments))))
        becomeEncoder(encoder, withoutQualityReport(arguments));
    becomeEncoder(encoder, arguments);
}

} // namespace

int main(int count, char** texts) {
    const char* const path = std::getenv("PATH");
    const auto encoder = findSystemEncoder(path ? path : whereProgramsUsuallyAre, "/proc/self/exe");
    if (!encoder)
        leave(std::string(missingEncoderWords) + "none of that name is in PATH",
              missingEncoderStatus);
    const Arguments arguments(texts + (count > 0 ? 1 : 0), texts + count);
    if (isJob(arguments))
        becomeEncoderForJob(*encoder, arguments);
    becomeEncoder(*encoder, arguments);
}
