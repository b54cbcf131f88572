#include "launcher/MovieQuestion.h"

#include "launcher/Question.h"
#include "launcher/SystemEncoder.h"

namespace {

constexpr std::chrono::seconds patience{10};

std::string probed(const MovieProbe& probe, Arguments arguments, const Arguments& questions,
                   const std::string& movie) {
    arguments.insert(arguments.end(), questions.begin(), questions.end());
    arguments.insert(arguments.end(), {"-i", movie});
    return answerOf(probe.path, arguments, patience, Streams::StandardOutput);
}

} // namespace

Findings askAbout(const std::string& movie, const std::string& encoder,
                  std::string_view searchPath) {
    Findings findings;
    if (const auto probe = findMovieProbe(encoder, searchPath)) {
        const std::string answer =
            probed(*probe, {"-v", "quiet", "-show_program_version"}, questionsAboutMovie(), movie);
        findings.movie = movieFactsFrom(answer);
        if (const TrackFacts* picture = findings.movie.picture(); picture && mayBeHlg(*picture))
            takeFirstPicture(findings.movie, probed(*probe, {"-v", "quiet"},
                                                    questionsAboutFirstPicture(*picture), movie));
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
