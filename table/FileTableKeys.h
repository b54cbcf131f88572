#pragma once

#include "platform/LocalizedStrings.h"

#include <QKeySequence>
#include <QString>

/// Keys of the list that are named in tooltips; pressed anywhere in the window.
namespace tablekey {
inline const QKeySequence selectAll{Qt::CTRL | Qt::SHIFT | Qt::Key_A};
inline const QKeySequence pauseOrResume{Qt::CTRL | Qt::Key_P};
} // namespace tablekey

/// A tooltip with the key that does the same behind it.
[[nodiscard]] inline QString tipWithKey(const QString& tip, const QKeySequence& key) {
    return getLocalString("IDS_TIP_WITH_SHORTCUT").arg(tip, key.toString(QKeySequence::NativeText));
}
