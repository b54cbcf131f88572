#include "launcher/ColourAdditions.h"

#include <algorithm>
#include <array>

namespace {

// HLG and PQ are brought to BT.709 in three steps, half as dear as the filter `tonemap`:
//
// 1. zscale: as light on a screen of 1000 nits, with BT.709's colours and its curve (a power of
//    2.4), 1000 nits being the largest value. Brighter things than that are as good as white.
// 2. lutrgb: a table of 4096 values for red, green and blue alike, so grey stays grey. Light up to
//    white paper (203 nits, HLG 75 %) is taken as it is: 254 nits are full, paper comes to 216 and
//    18 % grey to 101 of 16 to 235. What is brighter, up to 1000 nits, has the room above the
//    paper: a hyperbola that goes on smoothly and ends at full.
// 3. zscale: as Y, U and V of BT.709, limited range.
constexpr char toCurve[] = "t=bt709:p=bt709:r=full:npl=1000";
constexpr char throughTable[] = "st(0\\,3.937*pow(val/maxval\\,2.4))\\;"
                                "maxval*pow(if(lte(ld(0)\\,0.8)\\,ld(0)\\,"
                                "1.01362*(ld(0)-0.6314)/(ld(0)-0.58638))\\,1/2.4)";
constexpr char toPicture[] = "zscale=m=bt709:r=limited";

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
    if (picture.transfer != "arib-std-b67" && picture.transfer != "smpte2084")
        return;
    if (!encoder.hasZscale) {
        add.losses.push_back("the colours stay as they are, for ffmpeg has no filter zscale");
        return;
    }
    const std::string table(throughTable);
    add.filters.push_back("zscale=" + colours(picture) + toCurve);
    add.filters.push_back("format=gbrp12");
    add.filters.push_back("lutrgb=r=" + table + ":g=" + table + ":b=" + table);
    add.filters.push_back(toPicture);
    add.filters.push_back("format=yuv420p");
    for (const char* const each : sideData)
        add.filters.push_back(std::string("sidedata=delete:") + each);
}
