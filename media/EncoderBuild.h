#pragma once

#include <QStringView>

/// Whether a probe's report says, in ffmpeg's own banner, that ffmpeg was built without libx264,
/// the encoder that every conversion uses. A report without that banner says nothing. Any thread.
[[nodiscard]] bool saysThereIsNoX264(QStringView report);
