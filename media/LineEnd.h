#pragma once

#include <QChar>

/// Progress lines of ffmpeg end in a carriage return.
[[nodiscard]] inline bool isLineEnd(QChar c) {
    return c == u'\n' || c == u'\r';
}
