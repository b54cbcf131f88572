#include "convert/PieceCutter.h"

#include "convert/EncoderMarkers.h"

#include <utility>

namespace {

// More than any line of a real encoder.
constexpr qsizetype longestLine = 1 << 20;

qsizetype startOfProgress(const QByteArray& bytes) {
    const QByteArray word = QByteArrayLiteral("frame=");
    qsizetype position = bytes.indexOf(word);
    while (position > 0 && bytes[position - 1] != '\n' && bytes[position - 1] != '\r')
        position = bytes.indexOf(word, position + 1);
    return position;
}

} // namespace

std::optional<EncoderPiece> PieceCutter::next(bool flush) {
    for (;;) {
        const QByteArray bytes = takeBytes(flush);
        if (bytes.isEmpty())
            return std::nullopt;
        const QString text = held_ + blanker_.blank(QString::fromUtf8(bytes));
        held_.clear();
        if (!isWriteFailureWithoutPosition(text))
            return EncoderPiece{text};
        held_ = text;
    }
}

std::optional<EncoderPiece> PieceCutter::last() {
    if (held_.isEmpty())
        return std::nullopt;
    return EncoderPiece{std::exchange(held_, QString()), true};
}

QByteArray PieceCutter::takeBytes(bool flush) {
    const auto take = [this](qsizetype length) {
        const QByteArray taken = waiting_.left(length);
        waiting_.remove(0, length);
        return taken;
    };
    if (inHeader_) {
        const qsizetype progress = startOfProgress(waiting_);
        inHeader_ = progress < 0;
        if (progress > 0)
            return take(progress);
    }
    if (flush || waiting_.size() >= longestLine)
        return take(waiting_.size());
    return take(qMax(waiting_.lastIndexOf('\n'), waiting_.lastIndexOf('\r')) + 1);
}
