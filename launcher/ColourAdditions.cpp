#include "launcher/ColourAdditions.h"

#include <algorithm>
#include <array>

namespace {

// HLG and PQ are brought to BT.709 in three steps:
//
// 1. zscale: as light on a screen of BT.709's colours. 254 nits are 1, so white paper (203 nits,
//    HLG 75 %) is 0.8, which is 216 of 16 to 235, and 18 % grey comes to 101.
// 2. tonemap: light up to 0.8 is taken as it is. What is brighter shares the room above, along a
//    hyperbola that goes on smoothly and ends in 1 at the brightest light there is. Red, green and
//    blue are made smaller alike. (A curve for each of them would take half the time, but skies
//    turn cyan and orange turns yellow.)
// 3. zscale: with BT.709's curve, as Y, U and V, limited range.
constexpr char toLight[] = "t=linear:npl=254:p=bt709";
constexpr char toRoom[] = "tonemap=mobius:param=0.8:desat=0:peak=";
constexpr char brightestOfHlg[] = "3.937"; // 1000 nits
constexpr char brightestOfPq[] = "39.37";  // 10,000
constexpr char toPicture[] = "zscale=t=bt709:m=bt709:r=limited";

constexpr char hlg[] = "arib-std-b67";
constexpr char pq[] = "smpte2084";

// Facts about the other picture, which players would obey: the screen that it was made on, its
// brightest light, the three kinds of hints for each scene, the light in the room. The last ones
// go by number (of AVFrameSideDataType): their names are unknown to releases before 7.
constexpr std::array sideData{"MASTERING_DISPLAY_METADATA",
                              "CONTENT_LIGHT_LEVEL",
                              "DYNAMIC_HDR_PLUS",
                              "23",
                              "24",
                              "25",
                              "26"};

// A profile without a picture that ordinary decoders understand.
constexpr int unreadableDolbyVision = 5;

template <std::size_t size>
std::string known(const std::array<std::string_view, size>& words, const std::string& word) {
    const auto found = std::find(words.begin(), words.end(), word);
    return std::string(found == words.end() ? words.front() : *found);
}

/// For zscale, in its words; what is not said is what goes with such movies.
std::string colours(const TrackFacts& picture) {
    constexpr std::array<std::string_view, 5> matrices{"bt2020nc", "bt2020c", "bt709", "ictcp",
                                                       "gbr"};
    constexpr std::array<std::string_view, 4> primaries{"bt2020", "bt709", "smpte432", "smpte431"};
    return "tin=" + picture.transfer + ":min=" + known(matrices, picture.matrix) +
           ":pin=" + known(primaries, picture.primaries) + ":rin=limited:";
}

/// Recordings of screens may hold red, green and blue: by itself ffmpeg makes of them the Y, U and
/// V of old television and does not say so.
void addOrdinaryMatrix(Additions& add) {
    add.scaleOptions.push_back("out_color_matrix=bt709");
    add.filters.push_back("setparams=colorspace=bt709");
}

} // namespace

void addLimitedRange(const MovieFacts&, const EncoderAbilities&, Additions& add) {
    add.scaleOptions.push_back("out_range=tv");
}

void addOrdinaryColours(const MovieFacts&, const EncoderAbilities& encoder, Additions& add) {
    const TrackFacts& picture = add.picture;
    if (picture.dolbyVisionProfile == unreadableDolbyVision) {
        add.losses.push_back("the colours of this kind of Dolby Vision cannot be converted");
        return;
    }
    if (picture.transfer != hlg && picture.transfer != pq) {
        if (picture.matrix == "gbr")
            addOrdinaryMatrix(add);
        return;
    }
    if (!encoder.hasZscale) {
        add.losses.push_back("the colours stay as they are, for ffmpeg has no filter zscale");
        return;
    }
    add.filters.push_back("zscale=" + colours(picture) + toLight);
    add.filters.push_back("format=gbrpf32le");
    add.filters.push_back(toRoom +
                          std::string(picture.transfer == hlg ? brightestOfHlg : brightestOfPq));
    add.filters.push_back(toPicture);
    add.filters.push_back("format=yuv420p");
    for (const char* const each : sideData)
        add.filters.push_back(std::string("sidedata=delete:") + each);
}
