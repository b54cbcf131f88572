#pragma once

#include "convert/DamageWatch.h"
#include "convert/EncoderMarkers.h"
#include "media/ReportBlanking.h"

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include <optional>

/// Cuts what an encoder says into pieces: whole lines, all that have come when a piece is asked
/// for. What stands before the first progress line is kept apart from it, and a write failure
/// without a position waits for the piece that brings one. One thread, which owns it.
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
    void blankWaiting(bool flush);
    [[nodiscard]] QString takeReady();

    ReportBlanker blanker_;
    QByteArray waiting_;
    QStringDecoder decoder_{QStringConverter::Utf8}; ///< joins a character that a flush has cut
    QString ready_;                                  ///< blanked, in no piece yet
    EncoderPiece held_;                              ///< a write failure alone, or nothing
    DamageWatch damage_;
    bool damageHeld_ = false; ///< since the last piece
    bool inHeader_ = true;
    bool atLineStart_ = true; ///< whether `ready_` begins a line
};
