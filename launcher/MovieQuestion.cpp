#include "launcher/MovieQuestion.h"

#include "launcher/Question.h"
#include "launcher/SystemEncoder.h"

namespace {

constexpr std::chrono::seconds patience{10};

Arguments probeArguments(const std::string& movie) {
    Arguments arguments{"-v", "quiet", "-show_program_version"};
    const auto& questions = questionsAboutMovie();
    arguments.insert(arguments.end(), questions.begin(), questions.end());
    arguments.insert(arguments.end(), {"-i", movie});
    return arguments;
}

} // namespace

Findings askAbout(const std::string& movie, const std::string& encoder,
                  std::string_view searchPath) {
    Findings findings;
    if (const auto probe = findMovieProbe(encoder, searchPath)) {
        const std::string answer =
            answerOf(probe->path, probeArguments(movie), patience, Streams::StandardOutput);
        findings.movie = movieFactsFrom(answer);
        if (probe->isOfEncoder)
            findings.encoder = abilitiesFrom(answer);
    }
    if (!findings.encoder.wasBuiltWithX264) {
        const std::string answer = answerOf(encoder, {"-h", "encoder=libx264"}, patience);
        findings.encoder = abilitiesFrom(answer);
        findings.hasX264 =
            findings.encoder.wasBuiltWithX264 || answer.empty() || describesX264(answer);
    }
    return findings;
}
