#include "launcher/SoundAdditions.h"

#include <algorithm>
#include <array>

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

/// The arrangements of loudspeakers that players know, by their number.
std::string loudspeakers(int channels) {
    if (channels == 6)
        return "aformat=channel_layouts=5.1";
    if (channels == mostChannels)
        return "aformat=channel_layouts=7.1";
    // Cameras with many microphones do not say where they stand.
    if (channels > mostChannels)
        return "pan=7.1|c0=c0|c1=c1|c2=c2|c3=c3|c4=c4|c5=c5|c6=c6|c7=c7";
    return {};
}

void convert(const TrackFacts& sound, const std::string& number, Additions& add) {
    const int channels = std::min(sound.channels, mostChannels);
    add.output(
        {"-codec:a:" + number, "aac", "-b:a:" + number, std::to_string(kilobits(channels)) + "k"});
    if (sound.sampleRate > fastestSound)
        add.output({"-ar:a:" + number, std::to_string(fastestSound)});
    if (const std::string filter = loudspeakers(sound.channels); !filter.empty())
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
