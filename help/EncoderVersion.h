#pragma once

#include <QByteArray>
#include <QString>

/// The version that ffmpeg says at the beginning of any report; empty where it says none. Pure.
[[nodiscard]] QString encoderVersionIn(const QByteArray& report);

/// Where the system's ffmpeg is; empty where there is none. Looks through PATH.
[[nodiscard]] QString encoderPlace();
