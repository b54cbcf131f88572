#include "convert/EncoderMarkers.h"

#include "convert/Timecode.h"

#include <cmath>
#include <limits>

namespace {

const QString positionMark = QStringLiteral("time=");
const QString summaryMark = QStringLiteral("LPSNR=");
const QString framesMark = QStringLiteral("frame=");
constexpr int positionLength = 11;

// The last two come at the very end, when the movie's index cannot be written: the encoder then
// prints its summary and ends with 0, and the file cannot be played.
bool holdsWriteFailure(const QString& piece) {
    return piece.contains(QStringLiteral("av_interleaved_write_frame")) ||
           piece.contains(QStringLiteral("No space left on device")) ||
           piece.contains(QStringLiteral("Error writing trailer of")) ||
           piece.contains(QStringLiteral("Error closing file"));
}

// The line may be the piece's second report: the first position often comes before any picture.
bool summaryCountsNoPicture(QStringView piece) {
    const qsizetype summary = piece.indexOf(summaryMark);
    if (summary < 0)
        return false;
    const QStringView before = piece.first(summary);
    const qsizetype frames = before.lastIndexOf(framesMark);
    if (frames < 0)
        return false;
    const QStringView counted = before.sliced(frames + framesMark.size());
    if (counted.contains(u'\r') || counted.contains(u'\n'))
        return false;
    const QStringView number = counted.trimmed();
    return number.startsWith(u'0') && (number.size() == 1 || !number.at(1).isDigit());
}

} // namespace

EncoderMarkers markersOf(const QString& piece) {
    EncoderMarkers marks;
    marks.hasPosition = piece.contains(positionMark);
    marks.hasError = piece.contains(QStringLiteral("error"));
    marks.hasInvalid = piece.contains(QStringLiteral("Invalid"));
    marks.hasWriteFailure = holdsWriteFailure(piece);
    marks.hasSummary = piece.contains(summaryMark);
    marks.hasNoPicture = summaryCountsNoPicture(piece);
    return marks;
}

QString positionText(const QString& piece) {
    const auto mark = static_cast<quint32>(piece.indexOf(positionMark));
    const quint32 start = mark + static_cast<quint32>(positionMark.size());
    return substring(piece, start, positionLength);
}

int percentage(double position, double total) {
    const double percent = position * 100.0 / total;
    if (!std::isfinite(percent))
        return 0;
    if (percent < 0)
        return 100;
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(percent > most ? most : percent);
}

QString percentageText(int percent) {
    return QString::number(percent) + QStringLiteral(" %");
}
