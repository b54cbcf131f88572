#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What ffprobe says of a movie, as numbers and words to be looked up. No text of the movie's own
// (titles, places, names) is kept: what is built from these facts cannot hold any.

/// Of whole numbers, both positive where it is known.
struct Ratio final {
    std::int64_t numerator = 0;
    std::int64_t denominator = 0;

    [[nodiscard]] bool isKnown() const { return numerator > 0 && denominator > 0; }
    [[nodiscard]] double value() const {
        return static_cast<double>(numerator) / static_cast<double>(denominator);
    }
};

enum class TrackKind { Video, Sound, Subtitle, Other };

/// One track. What ffprobe does not know is 0 or empty.
struct TrackFacts final {
    int index = -1; ///< among all tracks of the movie
    TrackKind kind = TrackKind::Other;
    std::string codec;
    bool isCoverPicture = false;

    int width = 0; ///< pixels, as stored: before any turning
    int height = 0;
    Ratio pixelShape;
    Ratio nominalRate; ///< pictures a second that all times fit
    Ratio averageRate;
    std::string range; ///< these four in ffprobe's words
    std::string matrix;
    std::string primaries;
    std::string transfer;
    int dolbyVisionProfile = 0;

    int sampleRate = 0;
    int channels = 0;
    std::string loudspeakers; ///< which ones the channels are for, in ffprobe's words
    bool hasDecoder = false;  ///< known for sound alone
};

struct MovieFacts final {
    std::vector<TrackFacts> tracks; ///< by their index
    /// Whether it has tags that only a list of keys can hold.
    bool hasPhoneTags = false;
    /// When it was taken, as `2022-03-04T05:06:07Z`, where it says so more than once: a later
    /// release of ffmpeg would put both behind one another and make no date of them.
    std::string repeatedDate;

    /// The track that is the movie: the first one with a picture that is no cover. Null without
    /// one.
    [[nodiscard]] const TrackFacts* picture() const;
};

/// What is asked of ffprobe, but for the movie.
[[nodiscard]] const std::vector<std::string>& questionsAboutMovie();

/// Whether its pictures may be HLG though the track says otherwise: broadcasts name a light that
/// old televisions know, and tell the truth beside each picture.
[[nodiscard]] bool mayBeHlg(const TrackFacts& picture);
/// What is asked then.
[[nodiscard]] std::vector<std::string> questionsAboutFirstPicture(const TrackFacts& picture);
/// Takes over what the answer says of the movie's picture.
void takeFirstPicture(MovieFacts& facts, std::string_view answer);

/// From ffprobe's answer in its format "flat". What is missing or makes no sense stays unknown.
[[nodiscard]] MovieFacts movieFactsFrom(std::string_view answer);
