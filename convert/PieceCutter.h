#pragma once

#include "media/ReportBlanking.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// A stretch of the encoder's standard error that is handled at once.
struct EncoderPiece final {
    QString text; ///< what the movie says about itself is blanked
    /// A write failure after which the encoder ended without another word.
    bool writeFailureAtEnd = false;
};

/// Cuts what an encoder says into pieces: whole lines, all that have come when a piece is asked
/// for. What stands before the first progress line is kept apart from it, and a write failure
/// without a position waits for the piece that brings one. A value; one reader thread.
class PieceCutter final {
public:
    /// `paths` are the names that the encoder may echo: the source's and the output's.
    explicit PieceCutter(const QStringList& paths) : blanker_(paths) {}

    /// Whether an unfinished line is waiting for its end.
    [[nodiscard]] bool hasRest() const { return !waiting_.isEmpty(); }

    void add(const QByteArray& bytes) { waiting_ += bytes; }
    /// The next piece of whole lines, or, with `flush`, of whatever is there.
    [[nodiscard]] std::optional<EncoderPiece> next(bool flush);
    /// What was held back when the encoder came to its end.
    [[nodiscard]] std::optional<EncoderPiece> last();

private:
    [[nodiscard]] QByteArray takeBytes(bool flush);

    ReportBlanker blanker_;
    QByteArray waiting_;
    QString held_;
    bool inHeader_ = true;
};
