#include "launcher/MovieFacts.h"

#include "launcher/FlatReport.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace {

// A movie with more tracks is not one of anybody's.
constexpr int mostTracks = 200;
constexpr int largestSide = 65535;

/// 0 for what is no number, a negative one, or one that is too large.
int number(std::string_view text) {
    int value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = failure == std::errc() && end == text.data() + text.size();
    return isWhole ? std::max(value, 0) : 0;
}

int side(std::string_view text) {
    const int pixels = number(text);
    return pixels <= largestSide ? pixels : 0;
}

/// Of "16:9" or "30000/1001".
Ratio ratio(std::string_view text) {
    const std::size_t between = text.find_first_of(":/");
    if (between == std::string_view::npos)
        return {};
    const Ratio read{number(text.substr(0, between)), number(text.substr(between + 1))};
    return read.isKnown() ? read : Ratio{};
}

/// Empty for what ffprobe does not know.
std::string word(std::string_view text) {
    const bool says = text != "unknown" && text != "N/A" && text != "none" && text != "unspecified";
    return says ? std::string(text) : std::string();
}

TrackKind kind(std::string_view text) {
    if (text == "video")
        return TrackKind::Video;
    if (text == "audio")
        return TrackKind::Sound;
    return text == "subtitle" ? TrackKind::Subtitle : TrackKind::Other;
}

using Field = void (*)(TrackFacts&, std::string_view);

const std::map<std::string_view, Field>& fields() {
    static const std::map<std::string_view, Field> all{
        {"index", [](TrackFacts& t, std::string_view v) { t.index = number(v); }},
        {"codec_type", [](TrackFacts& t, std::string_view v) { t.kind = kind(v); }},
        {"codec_name", [](TrackFacts& t, std::string_view v) { t.codec = word(v); }},
        {"width", [](TrackFacts& t, std::string_view v) { t.width = side(v); }},
        {"height", [](TrackFacts& t, std::string_view v) { t.height = side(v); }},
        {"sample_aspect_ratio", [](TrackFacts& t, std::string_view v) { t.pixelShape = ratio(v); }},
        {"r_frame_rate", [](TrackFacts& t, std::string_view v) { t.nominalRate = ratio(v); }},
        {"avg_frame_rate", [](TrackFacts& t, std::string_view v) { t.averageRate = ratio(v); }},
        {"color_range", [](TrackFacts& t, std::string_view v) { t.range = word(v); }},
        {"color_space", [](TrackFacts& t, std::string_view v) { t.matrix = word(v); }},
        {"color_primaries", [](TrackFacts& t, std::string_view v) { t.primaries = word(v); }},
        {"color_transfer", [](TrackFacts& t, std::string_view v) { t.transfer = word(v); }},
        {"sample_rate", [](TrackFacts& t, std::string_view v) { t.sampleRate = number(v); }},
        {"channels", [](TrackFacts& t, std::string_view v) { t.channels = number(v); }},
        {"channel_layout", [](TrackFacts& t, std::string_view v) { t.loudspeakers = word(v); }},
        {"sample_fmt", [](TrackFacts& t, std::string_view v) { t.hasDecoder = !word(v).empty(); }},
        {"disposition.attached_pic",
         [](TrackFacts& t, std::string_view v) { t.isCoverPicture = v != "0"; }},
    };
    return all;
}

void takeOfTrack(TrackFacts& track, std::string_view key, std::string_view value) {
    const auto found = fields().find(key);
    if (found != fields().end())
        found->second(track, value);
    else if (key.starts_with("side_data_list.") && key.substr(key.rfind('.')) == ".dv_profile")
        track.dolbyVisionProfile = number(value);
}

bool isPhoneTag(std::string_view key) {
    return key.starts_with("com_apple") || key.starts_with("com_android") || key == "make" ||
           key == "model";
}

/// The date at the beginning of a list of them; empty for anything else. Of what the movie says
/// nothing gets through but digits in their places.
std::string firstOfDates(std::string_view text) {
    constexpr std::string_view pattern = "0000-00-00T00:00:00";
    if (text.size() < pattern.size() || text.find(';') == std::string_view::npos)
        return {};
    text = text.substr(0, pattern.size());
    const bool isDate =
        std::equal(text.begin(), text.end(), pattern.begin(), [](char c, char wanted) {
            return wanted == '0' ? c >= '0' && c <= '9' : c == wanted;
        });
    return isDate ? std::string(text) + 'Z' : std::string();
}

void takeTag(MovieFacts& facts, std::string_view key, std::string_view value) {
    facts.hasPhoneTags |= isPhoneTag(key);
    if (key == "creation_time")
        facts.repeatedDate = firstOfDates(value);
}

/// The number of the track and the rest of a key such as `streams.stream.0.width`.
bool takeTrack(std::string_view& key, int& track) {
    constexpr std::string_view start = "streams.stream.";
    if (!key.starts_with(start))
        return false;
    key.remove_prefix(start.size());
    const std::size_t dot = key.find('.');
    if (dot == std::string_view::npos)
        return false;
    const auto [end, failure] = std::from_chars(key.data(), key.data() + dot, track);
    if (failure != std::errc() || end != key.data() + dot || track < 0 || track >= mostTracks)
        return false;
    key.remove_prefix(dot + 1);
    return true;
}

} // namespace

const TrackFacts* MovieFacts::picture() const {
    const auto found = std::find_if(tracks.begin(), tracks.end(), [](const TrackFacts& each) {
        return each.kind == TrackKind::Video && !each.isCoverPicture && !each.codec.empty() &&
               each.width > 0 && each.height > 0;
    });
    return found == tracks.end() ? nullptr : &*found;
}

const std::vector<std::string>& questionsAboutMovie() {
    static const std::vector<std::string> all{
        "-show_entries",
        "stream=index,codec_type,codec_name,width,height,sample_aspect_ratio,r_frame_rate,"
        "avg_frame_rate,color_range,color_space,color_primaries,color_transfer,sample_fmt,"
        "sample_rate,channels,channel_layout:stream_disposition=attached_pic:stream_side_data=dv_"
        "profile:"
        "format_tags",
        "-of",
        "flat",
    };
    return all;
}

MovieFacts movieFactsFrom(std::string_view answer) {
    std::map<int, TrackFacts> tracks;
    MovieFacts facts;
    forEachEntry(answer, [&](std::string_view key, std::string_view value) {
        constexpr std::string_view tags = "format.tags.";
        int track = 0;
        if (takeTrack(key, track))
            takeOfTrack(tracks[track], key, value);
        else if (key.starts_with(tags))
            takeTag(facts, key.substr(tags.size()), value);
    });
    for (auto& [position, track] : tracks) {
        if (track.index >= 0)
            facts.tracks.push_back(std::move(track));
    }
    return facts;
}

bool mayBeHlg(const TrackFacts& picture) {
    return picture.transfer == "bt2020-10" || picture.transfer == "bt2020-12";
}

std::vector<std::string> questionsAboutFirstPicture(const TrackFacts& picture) {
    return {"-select_streams",
            std::to_string(picture.index),
            "-read_intervals",
            "%+#1",
            "-show_entries",
            "frame=color_transfer",
            "-of",
            "flat"};
}

void takeFirstPicture(MovieFacts& facts, std::string_view answer) {
    constexpr std::string_view hlg = "arib-std-b67";
    const TrackFacts* const picture = facts.picture();
    if (!picture)
        return;
    bool isHlg = false;
    forEachEntry(answer, [&](std::string_view key, std::string_view value) {
        isHlg |= key == "frames.frame.0.color_transfer" && value == hlg;
    });
    if (isHlg)
        facts.tracks[static_cast<std::size_t>(picture - facts.tracks.data())].transfer = hlg;
}
