#pragma once

#include <QIcon>

/// The program's icon in all its drawn sizes. Main thread, after the application object exists.
[[nodiscard]] QIcon applicationIcon();
