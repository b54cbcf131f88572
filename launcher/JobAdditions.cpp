#include "launcher/JobAdditions.h"

#include "launcher/ColourAdditions.h"
#include "launcher/PictureAdditions.h"
#include "launcher/SoundAdditions.h"

#include <algorithm>

namespace {

struct Rule final {
    const char* what;
    const char* why;
    void (*apply)(const MovieFacts&, const EncoderAbilities&, Additions&);
};

// What ffmpeg is told besides what the program asks for. The filters come about in this order.
constexpr Rule rules[] = {
    {"upright",
     "The picture is stored as it was, in the size that the output's name says, and the "
     "turn stays beside it for the player. Turned by ffmpeg it would be squeezed into "
     "that size.",
     [](const MovieFacts&, const EncoderAbilities&, Additions& add) {
         add.beforeInput.push_back("-noautorotate");
     }},
    {"the right picture",
     "ffmpeg takes the largest one: of a phone's photo that moves the still, "
     "of a movie with a cover perhaps the cover.",
     addPicture},
    {"all the sound",
     "ffmpeg takes one track. What ordinary players do not play in an MP4 file "
     "becomes AAC; a track that ffmpeg cannot read would end the job.",
     addSound},
    {"subtitles", "Those that are text, as ffmpeg would keep the first by itself.", addSubtitles},
    {"date, place, camera",
     "Without being told so ffmpeg drops the date. What phones and cameras "
     "note has room in a list of keys alone, where players look for no "
     "title; so other movies do without that list.",
     addTags},
    {"limited range",
     "What every player expects of H.264. Later releases would keep the full "
     "range of phones.",
     addLimitedRange},
    {"ordinary colours", "Eight bits of HLG or PQ look washed out everywhere.", addOrdinaryColours},
    {"its shape",
     "A size of another shape than the movie's is stored with pixels that are not "
     "square. ffmpeg does that only where the movie says which shape its own have; "
     "most say nothing and mean square.",
     addShape},
    {"an even pace",
     "Editors want it, and sound and picture stay in step. Later releases would "
     "keep the uneven pace of phones.",
     addPace},
};

bool isDigits(std::string_view text) {
    return !text.empty() && text.size() < 6 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether the filter is the program's, and the size that it makes.
bool readScale(std::string_view filter, Additions& add) {
    constexpr std::string_view start = "scale=";
    if (filter.substr(0, start.size()) != start)
        return false;
    filter.remove_prefix(start.size());
    const std::size_t between = filter.find(':');
    if (between == std::string_view::npos)
        return false;
    const std::string_view width = filter.substr(0, between);
    const std::string_view height = filter.substr(between + 1);
    if (!isDigits(width) || !isDigits(height))
        return false;
    add.width = std::stoi(std::string(width));
    add.height = std::stoi(std::string(height));
    return add.width > 0 && add.height > 0;
}

std::string wholeFilter(const std::string& scale, const Additions& add) {
    std::string whole = scale;
    for (const std::string& option : add.scaleOptions)
        whole.append(":").append(option);
    for (const std::string& filter : add.filters)
        whole.append(",").append(filter);
    return whole;
}

CompletedJob asItIs(const Arguments& job) {
    return {job, {"nothing is known of this movie, so nothing is added"}};
}

} // namespace

CompletedJob completeJob(const Arguments& job, const MovieFacts& movie,
                         const EncoderAbilities& encoder) {
    const TrackFacts* const picture = movie.picture();
    const auto input = std::find(job.begin(), job.end(), "-i");
    if (!picture || job.end() - input < 4)
        return asItIs(job);
    // Behind the movie, which may be called like an option.
    const auto filter = std::find(input + 2, job.end() - 2, "-vf") + 1;
    Additions add;
    add.picture = *picture;
    if (filter >= job.end() - 1 || !readScale(*filter, add))
        return asItIs(job);
    for (const Rule& rule : rules)
        rule.apply(movie, encoder, add);

    CompletedJob completed;
    completed.losses = add.losses;
    Arguments& all = completed.arguments;
    all.assign(job.begin(), input);
    all.insert(all.end(), add.beforeInput.begin(), add.beforeInput.end());
    all.insert(all.end(), input, filter);
    all.push_back(wholeFilter(*filter, add));
    all.insert(all.end(), filter + 1, job.end() - 1);
    all.insert(all.end(), add.beforeOutput.begin(), add.beforeOutput.end());
    all.push_back(job.back());
    return completed;
}
