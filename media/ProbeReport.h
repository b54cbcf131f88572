#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// How a movie's properties are read from the text that ffmpeg prints about it. The text is one
// that `blankReport` has been over; positions are UTF-16 units. Any thread.

/// What stands between "Audio: " or "Video: " and the next comma, in capitals.
struct CodecText final {
    QString text;          ///< just the wanted codec's name where `isWanted`
    bool isWanted = false; ///< AAC for sound, HEVC for pictures
};

struct PictureSize final {
    int width = 0;
    int height = 0;

    friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

/// The eleven characters after "Duration: "; nothing where the word is missing.
/// Throws std::out_of_range when the text ends before they do.
[[nodiscard]] std::optional<QString> durationText(QStringView text);

/// `durationText`, with a text that ends too early counted as one without a duration.
[[nodiscard]] std::optional<QString> probedDuration(QStringView text);

/// Nothing where "Audio" is missing; std::out_of_range when no comma follows it.
[[nodiscard]] std::optional<CodecText> probedAudio(QStringView text);

/// Nothing where the text holds no comma at all; std::out_of_range when none follows the start.
/// Without "Video" the description starts at position 4.
[[nodiscard]] std::optional<CodecText> probedVideo(QStringView text);

/// Size in the first comma-separated piece after "Video" that begins with a positive number;
/// 0 by 0 where there is none, std::out_of_range where that piece has no "x".
[[nodiscard]] PictureSize pictureSize(QStringView text);

/// Decimal number at the start of a text after blanks: 0 without digits, the largest int when it
/// is larger still.
[[nodiscard]] int leadingNumber(QStringView text);
