#pragma once

#include <QString>
#include <QStringView>

/// Looks for an encoder's complaints about the movie that it is converting: "error" and "Invalid"
/// in the lines that follow "Stream mapping:". The later releases report their first position only
/// after half a second, so such a line may well come before it. What is said while the movie is
/// still being opened is no matter of this class. Takes the output in pieces that may be cut
/// anywhere; one thread, owned by whoever cuts the output.
class DamageWatch final {
public:
    /// Whether the piece holds a complaint, or ends one that the piece before began. `text` is
    /// blanked.
    [[nodiscard]] bool add(QStringView text);

private:
    QString open_; ///< the unfinished line, as far as it matters
    bool isConverting_ = false;
};
