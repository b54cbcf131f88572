#pragma once

#include "filelist/SharedState.h"

/// Brings `countstr` and `fileCountStr` in line with a number of rows and answers the latter: the
/// caption, two spaces, the number in parentheses. `state.count` stays as it is.
inline const QString& fileCountText(SharedState& state, qint64 rows) {
    state.countstr = QStringLiteral("(%1)").arg(rows);
    state.fileCountStr = state.fileListStr + QStringLiteral("  ") + state.countstr;
    return state.fileCountStr;
}
