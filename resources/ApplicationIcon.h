#pragma once

#include <QIcon>
#include <QPixmap>

// Each drawing is read from its file at once, which takes a while for the large ones. Main thread,
// after the application object exists.

/// The program's icon in all its drawn sizes.
[[nodiscard]] QIcon applicationIcon();
/// In those that title bars and task lists show.
[[nodiscard]] QIcon smallApplicationIcon();
/// As a picture; `side` in logical pixels.
[[nodiscard]] QPixmap applicationPicture(int side, qreal devicePixelRatio);
