#pragma once

#include <QIcon>
#include <QPixmap>

/// An image of the resources (":/images/NAME.png") for screens of every density: drawn down from
/// the next larger drawing where there is none of just that size. The toolkit's own choice by file
/// name takes the smallest drawing at a density of 1.25 or 1.5 and leaves it to the screen to blow
/// it up. Main thread, after the application object exists.
[[nodiscard]] QIcon drawnImage(const QString& name);
/// The same at once, `size` logical pixels square. Unlike what an icon gives it stays in no cache:
/// for what is drawn once.
[[nodiscard]] QPixmap drawnPixmap(const QString& name, int size, qreal devicePixelRatio);
