#pragma once

#include "media/ProfileCatalogue.h"

#include <QString>
#include <QStringList>

/// libx264's constant rate factor: lower is better and larger.
[[nodiscard]] QString rateFactor(ProfileKind profile);

/// `folder` and the source's file name without its last extension.
[[nodiscard]] QString outputBase(const QString& folder, const QString& source);
/// The name tried first, e.g. BASE_Pro_1280x720.mp4.
[[nodiscard]] QString outputName(ProfileKind profile, const QString& base,
                                 const QString& resolution);
/// The name of the `number`th duplicate, e.g. BASE_Pro(1)_1280x720.mp4. A Normal duplicate ends
/// in .mov, which is kept so.
[[nodiscard]] QString duplicateName(ProfileKind profile, const QString& base, int number,
                                    const QString& resolution);

/// "scale=W:H" of a size WxH, the two texts as they stand. Throws std::out_of_range without an x.
[[nodiscard]] QString scaleFilter(const QString& resolution);

/// Everything after the program's name.
[[nodiscard]] QStringList encoderArguments(ProfileKind profile, const QString& source,
                                           const QString& resolution, const QString& output,
                                           bool overwrite);
