#include "launcher/SoundAdditions.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

constexpr int slowestMp3 = 16000;   // samples a second; ffmpeg refuses slower ones in MP4
constexpr int fastestSound = 48000; // what players count on
constexpr int mostChannels = 8;     // of AAC as players know it

struct Copied final {
    std::string_view codec;
    std::string_view why;
};

// What is not in this list becomes AAC: PCM, FLAC, Vorbis, Opus, MP2, DTS, the sound of old phones.
// Some of these MP4 can hold, but a television, a browser or a phone stays silent.
constexpr Copied copied[] = {
    {"aac", "the sound of MP4, in all its kinds"},
    {"mp3", "played wherever AAC is"},
    {"ac3", "surround for televisions and receivers, which would get less of it as AAC"},
    {"eac3", "the same"},
    {"alac", "Apple's lossless sound, which the players of all systems know"},
};

int kilobits(int channels) {
    // 128 each for left and right, 64 for each that surrounds them.
    return 128 * std::min(channels, 2) + 64 * std::max(channels - 2, 0);
}

struct Arrangement final {
    std::string_view name;
    std::string_view loudspeakers;
};

// What AAC knows. The last one of a number is what many channels are taken for that do not say
// where they belong, as those of cameras with many microphones.
constexpr Arrangement arrangements[] = {
    {"mono", "FC"},
    {"stereo", "FL+FR"},
    {"3.0", "FL+FR+FC"},
    {"quad", "FL+FR+BL+BR"},
    {"4.0", "FL+FR+FC+BC"},
    {"5.0(side)", "FL+FR+FC+SL+SR"},
    {"5.0", "FL+FR+FC+BL+BR"},
    {"5.1(side)", "FL+FR+FC+LFE+SL+SR"},
    {"5.1", "FL+FR+FC+LFE+BL+BR"},
    {"6.1", "FL+FR+FC+LFE+BC+SL+SR"},
    {"7.1", "FL+FR+FC+LFE+BL+BR+SL+SR"},
};

std::vector<std::string_view> parts(std::string_view names) {
    std::vector<std::string_view> all;
    while (!names.empty()) {
        const std::size_t plus = names.find('+');
        all.push_back(names.substr(0, plus));
        names.remove_prefix(plus == std::string_view::npos ? names.size() : plus + 1);
    }
    return all;
}

/// The arrangement with the same loudspeakers in another order, of "6 channels (FC+FL+...)".
const Arrangement* reordered(std::string_view told) {
    const std::size_t open = told.find('(');
    const std::size_t close = told.find(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return nullptr;
    const auto found = parts(told.substr(open + 1, close - open - 1));
    for (const Arrangement& each : arrangements) {
        const auto own = parts(each.loudspeakers);
        if (std::is_permutation(own.begin(), own.end(), found.begin(), found.end()))
            return &each;
    }
    return nullptr;
}

std::string mapped(std::string_view map, std::string_view arrangement) {
    return std::string("channelmap=map=")
        .append(map)
        .append(":channel_layout=")
        .append(arrangement);
}

std::string byName(const Arrangement& arrangement) {
    std::string map;
    for (const std::string_view each : parts(arrangement.loudspeakers))
        map.append(map.empty() ? "" : "|").append(each).append("-").append(each);
    return mapped(map, arrangement.name);
}

std::string byNumber(int channels) {
    const auto hasThatMany = [channels](const Arrangement& each) {
        return parts(each.loudspeakers).size() == static_cast<std::size_t>(channels);
    };
    const auto found =
        std::find_if(std::rbegin(arrangements), std::rend(arrangements), hasThatMany);
    std::string map = "0";
    for (int i = 1; i < channels; ++i)
        map.append("|").append(std::to_string(i));
    return mapped(map, found->name);
}

/// What makes of the channels an arrangement that AAC and its players know.
std::string arranged(const TrackFacts& sound) {
    const auto isTold = [&](const Arrangement& each) { return each.name == sound.loudspeakers; };
    if (std::any_of(std::begin(arrangements), std::end(arrangements), isTold)) {
        // As players expect six of them.
        return sound.loudspeakers == "5.1(side)" ? "aformat=channel_layouts=5.1" : "";
    }
    if (const Arrangement* const known = reordered(sound.loudspeakers))
        return byName(*known);
    // ffmpeg itself takes one for mono and two for stereo.
    return sound.channels > 2 ? byNumber(std::min(sound.channels, mostChannels)) : "";
}

void convert(const TrackFacts& sound, const std::string& number, Additions& add) {
    const int channels = std::min(sound.channels, mostChannels);
    add.output(
        {"-codec:a:" + number, "aac", "-b:a:" + number, std::to_string(kilobits(channels)) + "k"});
    if (sound.sampleRate > fastestSound)
        add.output({"-ar:a:" + number, std::to_string(fastestSound)});
    if (const std::string filter = arranged(sound); !filter.empty())
        add.output({"-filter:a:" + number, filter});
}

} // namespace

SoundFate fateOf(const TrackFacts& sound) {
    if (sound.codec.empty() || sound.sampleRate <= 0 || sound.channels <= 0)
        return SoundFate::LeftOut;
    const bool isCopied =
        std::any_of(std::begin(copied), std::end(copied),
                    [&](const Copied& each) { return each.codec == sound.codec; }) &&
        !(sound.codec == "mp3" && sound.sampleRate < slowestMp3);
    if (isCopied)
        return SoundFate::Copied;
    return sound.hasDecoder ? SoundFate::Converted : SoundFate::LeftOut;
}

void addSound(const MovieFacts& movie, const EncoderAbilities&, Additions& add) {
    int taken = 0;
    for (const TrackFacts& track : movie.tracks) {
        if (track.kind != TrackKind::Sound)
            continue;
        const SoundFate fate = fateOf(track);
        const std::string index = std::to_string(track.index);
        if (fate == SoundFate::LeftOut) {
            add.losses.push_back("track " + index + " (sound that ffmpeg cannot read) is left out");
            continue;
        }
        add.output({"-map", "0:" + index});
        if (fate == SoundFate::Converted)
            convert(track, std::to_string(taken), add);
        ++taken;
    }
}
