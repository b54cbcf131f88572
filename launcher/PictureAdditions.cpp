#include "launcher/PictureAdditions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace {

// What H.264 has room for.
constexpr std::int64_t largestPart = 65535;
constexpr double asGoodAsSquare = 0.01;
// Some phones say 120 of a movie that has 28: the finest step of its times, not its rate.
constexpr double mostNominalToAverage = 1.5;
constexpr double highestRate = 300;
constexpr std::array standardRates{Ratio{24000, 1001}, Ratio{24, 1},       Ratio{25, 1},
                                   Ratio{30000, 1001}, Ratio{30, 1},       Ratio{48, 1},
                                   Ratio{50, 1},       Ratio{60000, 1001}, Ratio{60, 1},
                                   Ratio{100, 1},      Ratio{120, 1},      Ratio{240, 1}};

std::string written(const Ratio& ratio) {
    return std::to_string(ratio.numerator) + '/' + std::to_string(ratio.denominator);
}

Ratio reduced(Ratio ratio) {
    const std::int64_t divisor = std::gcd(ratio.numerator, ratio.denominator);
    ratio = {ratio.numerator / divisor, ratio.denominator / divisor};
    while (std::max(ratio.numerator, ratio.denominator) > largestPart)
        ratio = {std::max<std::int64_t>(ratio.numerator / 2, 1),
                 std::max<std::int64_t>(ratio.denominator / 2, 1)};
    return ratio;
}

Ratio standardRateNear(double rate) {
    const auto distance = [rate](const Ratio& each) {
        return std::abs(std::log(each.value() / rate));
    };
    return *std::min_element(
        standardRates.begin(), standardRates.end(),
        [&](const Ratio& one, const Ratio& other) { return distance(one) < distance(other); });
}

bool isText(const TrackFacts& track) {
    constexpr std::array<std::string_view, 6> kinds{"mov_text", "subrip", "ass",
                                                    "ssa",      "webvtt", "text"};
    return track.kind == TrackKind::Subtitle &&
           std::find(kinds.begin(), kinds.end(), track.codec) != kinds.end();
}

} // namespace

void addPicture(const MovieFacts&, const EncoderAbilities&, Additions& add) {
    add.output({"-map", "0:" + std::to_string(add.picture.index)});
}

void addSubtitles(const MovieFacts& movie, const EncoderAbilities&, Additions& add) {
    bool any = false;
    for (const TrackFacts& track : movie.tracks) {
        if (isText(track)) {
            add.output({"-map", "0:" + std::to_string(track.index)});
            any = true;
        } else if (track.kind == TrackKind::Subtitle) {
            add.losses.push_back("track " + std::to_string(track.index) +
                                 " (subtitles that are pictures) is left out");
        }
    }
    if (!any)
        return;
    // Those of old movies may be in any encoding: they are passed on as they are, for ffmpeg would
    // take them for damage.
    add.beforeInput.insert(add.beforeInput.end(), {"-sub_charenc_mode:s", "ignore"});
    add.output({"-codec:s", "mov_text"});
}

void addTags(const MovieFacts& movie, const EncoderAbilities&, Additions& add) {
    add.output({"-map_metadata", "0"});
    if (movie.hasPhoneTags)
        add.output({"-movflags", "use_metadata_tags"});
    if (!movie.repeatedDate.empty())
        add.output({"-metadata", "creation_time=" + movie.repeatedDate});
}

Ratio outputPixelShape(const TrackFacts& picture, int width, int height) {
    const Ratio own = picture.pixelShape.isKnown() ? reduced(picture.pixelShape) : Ratio{1, 1};
    const Ratio shape = {own.numerator * picture.width * height,
                         own.denominator * picture.height * width};
    return std::abs(shape.value() - 1) <= asGoodAsSquare ? Ratio{1, 1} : reduced(shape);
}

void addShape(const MovieFacts&, const EncoderAbilities&, Additions& add) {
    const Ratio shape = outputPixelShape(add.picture, add.width, add.height);
    add.filters.push_back("setsar=sar=" + written(shape) + ":max=" + std::to_string(largestPart));
}

Ratio outputRate(const TrackFacts& picture) {
    const Ratio& nominal = picture.nominalRate;
    const Ratio& average = picture.averageRate;
    if (average.isKnown() && average.value() <= highestRate &&
        (!nominal.isKnown() || nominal.value() > mostNominalToAverage * average.value()))
        return standardRateNear(average.value());
    return nominal.isKnown() && nominal.value() <= highestRate ? nominal : Ratio{};
}

void addPace(const MovieFacts&, const EncoderAbilities&, Additions& add) {
    const Ratio rate = outputRate(add.picture);
    // From 0 on: a picture that begins late is shown from the beginning, for its sound's sake.
    if (rate.isKnown())
        add.filters.push_back("fps=" + written(rate) + ":0");
}
