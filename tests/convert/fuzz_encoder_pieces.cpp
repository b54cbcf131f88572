#include "convert/EncoderMarkers.h"
#include "convert/PieceCutter.h"
#include "convert/Timecode.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// What the monitor does with a piece.
void handle(const EncoderPiece& piece) {
    const EncoderMarkers& marks = piece.marks;
    require(!piece.text.isEmpty());
    require(!piece.writeFailureAtEnd || marks.hasWriteFailure);
    require(piece.writeFailureAtEnd || !marks.isWriteFailureAlone());
    try {
        const QString position = positionText(piece.text);
        require(position.size() == 11);
        const double seconds = secondsOfTimecode(position);
        for (const double total : {0.0, 1e-300, 8.0, seconds, -seconds, 1e300}) {
            const int percent = percentage(seconds, total);
            require(percent >= 0);
            require(percentageText(percent).endsWith(QStringLiteral(" %")));
        }
    } catch (const std::out_of_range&) {
    }
}

QString cutUp(const QByteArray& bytes, const QStringList& names, qsizetype step, bool flush) {
    PieceCutter cutter(names);
    QString joined;
    const auto takeAll = [&](bool flushNow) {
        while (const auto piece = cutter.next(flushNow)) {
            handle(*piece);
            joined += piece->text;
        }
    };
    for (qsizetype at = 0; at < bytes.size(); at += step) {
        cutter.add(bytes.mid(at, step));
        takeAll(flush);
    }
    takeAll(true);
    require(!cutter.hasRest());
    if (const auto piece = cutter.last()) {
        handle(*piece);
        joined += piece->text;
    }
    return joined;
}

} // namespace

/// The first byte says how much arrives at once, the first line is a name that may be echoed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1,
                           static_cast<qsizetype>(size) - 1);
    const QStringList names{
        QString::fromUtf8(bytes.first(qMax(bytes.indexOf('\n'), qsizetype{0})))};
    const QString whole = cutUp(bytes, names, qMax(bytes.size(), qsizetype{1}), false);
    const qsizetype step = 1 + data[0] / 2;
    require(cutUp(bytes, names, step, false).size() == whole.size());
    // Where a flush has cut bytes that are no text, fewer question marks may stand for them.
    const QString flushed = cutUp(bytes, names, step, true);
    require(!bytes.isValidUtf8() || flushed.size() == whole.size());
    return 0;
}
