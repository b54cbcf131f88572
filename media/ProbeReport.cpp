#include "media/ProbeReport.h"

#include <QList>

#include <limits>
#include <stdexcept>

namespace {

constexpr qsizetype durationLength = 11;

/// The text from a position on; a position past the end is an error, the end itself is not.
QStringView textFrom(QStringView text, quint32 start) {
    if (qint64{start} > text.size())
        throw std::out_of_range("position behind the end of the report");
    return text.sliced(qsizetype{start});
}

/// Where the description after "Video:" begins. The position is a 32-bit number and "not found"
/// is its largest value, so a report without the word is read from position 4 on.
quint32 videoStart(QStringView text) {
    const auto word = static_cast<quint32>(text.indexOf(u"Video"));
    return word + 5U;
}

CodecText codecText(QStringView text, quint32 start, QLatin1StringView wanted) {
    const QStringView rest = textFrom(text, start);
    const qsizetype comma = rest.indexOf(u',');
    if (comma < 0)
        throw std::out_of_range("no comma behind the codec");
    const QString description = rest.first(comma).toString().toUpper();
    if (description.contains(wanted))
        return {wanted, true};
    return {description, false};
}

} // namespace

std::optional<QString> durationText(QStringView text) {
    const qsizetype word = text.indexOf(u"Duration");
    if (word < 0)
        return std::nullopt;
    const qsizetype start = word + 10;
    if (start + durationLength > text.size())
        throw std::out_of_range("the report ends inside the duration");
    return text.sliced(start, durationLength).toString();
}

std::optional<QString> probedDuration(QStringView text) {
    try {
        return durationText(text);
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

std::optional<CodecText> probedAudio(QStringView text) {
    const qsizetype word = text.indexOf(u"Audio");
    if (word < 0)
        return std::nullopt;
    return codecText(text, static_cast<quint32>(word + 7), QLatin1StringView("AAC"));
}

std::optional<CodecText> probedVideo(QStringView text) {
    // Kept: the comma decides whether there is a video line to read, not the word.
    if (!text.contains(u','))
        return std::nullopt;
    return codecText(text, videoStart(text), QLatin1StringView("HEVC"));
}

PictureSize pictureSize(QStringView text) {
    const QStringView description = textFrom(text, videoStart(text));
    for (const QStringView piece : description.tokenize(u',')) {
        const QList<QStringView> parts = piece.split(u'x');
        const int width = leadingNumber(parts.first());
        if (width <= 0)
            continue;
        if (parts.size() < 2)
            throw std::out_of_range("a picture size without a height");
        return {width, leadingNumber(parts.at(1))};
    }
    return {};
}

int leadingNumber(QStringView text) {
    constexpr qint64 largest = std::numeric_limits<int>::max();
    qsizetype at = 0;
    while (at < text.size() && text.at(at).isSpace())
        ++at;
    qint64 number = 0;
    for (; at < text.size() && text.at(at) >= u'0' && text.at(at) <= u'9'; ++at)
        number = qMin(number * 10 + (text.at(at).unicode() - u'0'), largest);
    return static_cast<int>(number);
}
