#include "convert/PieceCutter.h"

#include "media/LineEnd.h"

#include <utility>

namespace {

// More than any line of a real encoder.
constexpr qsizetype longestLine = 1 << 20;

qsizetype startOfProgress(const QString& text, bool beginsLine) {
    const QString word = QStringLiteral("frame=");
    for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
        if (at == 0 ? beginsLine : isLineEnd(text[at - 1]))
            return at;
    }
    return -1;
}

} // namespace

std::optional<EncoderPiece> PieceCutter::next(bool flush) {
    blankWaiting(flush);
    while (!ready_.isEmpty()) {
        const QString taken = takeReady();
        damageHeld_ = damage_.add(taken) || damageHeld_;
        const QString text = std::exchange(held_.text, QString()) + taken;
        const EncoderMarkers marks = markersOf(text);
        if (!marks.isWriteFailureAlone())
            return EncoderPiece{text, marks, std::exchange(damageHeld_, false)};
        held_ = {text, marks};
    }
    return std::nullopt;
}

std::optional<EncoderPiece> PieceCutter::last() {
    if (held_.text.isEmpty())
        return std::nullopt;
    return EncoderPiece{std::exchange(held_.text, QString()), held_.marks,
                        std::exchange(damageHeld_, false), true};
}

void PieceCutter::blankWaiting(bool flush) {
    qsizetype length = qMax(waiting_.lastIndexOf('\n'), waiting_.lastIndexOf('\r')) + 1;
    if (flush || waiting_.size() - length >= longestLine)
        length = waiting_.size();
    if (length == 0)
        return;
    ready_ += blanker_.blank(decoder_.decode(QByteArrayView(waiting_).first(length)));
    waiting_.remove(0, length);
}

// The first progress line is looked for in the blanked text: a name may hold "\nframe=".
QString PieceCutter::takeReady() {
    qsizetype length = ready_.size();
    if (inHeader_) {
        const qsizetype progress = startOfProgress(ready_, atLineStart_);
        inHeader_ = progress < 0;
        if (progress > 0)
            length = progress;
    }
    const QString taken = ready_.first(length);
    ready_.remove(0, length);
    atLineStart_ = isLineEnd(taken.back());
    return taken;
}
