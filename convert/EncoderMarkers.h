#pragma once

#include <QString>

/// What a piece of the encoder's output says. The marks are case-sensitive: every good run prints
/// "results will be invalid!". A value.
struct EncoderMarkers final {
    bool hasPosition = false; ///< "time="
    bool hasError = false;    ///< "error"
    bool hasInvalid = false;  ///< "Invalid"
    bool hasWriteFailure = false;
    bool hasSummary = false; ///< "LPSNR="
    /// The summary counts no picture: nothing but sound, at best, is in the output.
    bool hasNoPicture = false;

    /// A write failure that names no position and no error: it is looked at with what follows.
    [[nodiscard]] bool isWriteFailureAlone() const {
        return hasWriteFailure && !hasPosition && !hasError;
    }
};

/// A stretch of the encoder's standard error that is handled at once.
struct EncoderPiece final {
    QString text; ///< what the movie says about itself is blanked
    EncoderMarkers marks;
    /// It holds a complaint about the movie that is being converted, with a position or without.
    bool hasDamage = false;
    /// A write failure after which the encoder ended without another word.
    bool writeFailureAtEnd = false;
};

[[nodiscard]] EncoderMarkers markersOf(const QString& piece);

/// The 11 characters after the first "time=". Without one they are taken from character 4 on,
/// which is kept: the place is counted in 32 bits and wraps. Throws std::out_of_range for a piece
/// too short to hold them.
[[nodiscard]] QString positionText(const QString& piece);

/// Whole percent of `position` in `total` (seconds both), cut towards zero; 100 for a negative
/// share, 0 where there is no number to show.
[[nodiscard]] int percentage(double position, double total);

/// "37 %".
[[nodiscard]] QString percentageText(int percent);
