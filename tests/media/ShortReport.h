#pragma once

#include <QByteArray>

/// A report of ffmpeg without most of what it says about itself, its options and its libraries,
/// which is half of many a report and always the same: for tests that cut it at every byte.
inline QByteArray withShortBanner(QByteArray report) {
    constexpr qsizetype enough = 80;
    const qsizetype options = report.indexOf("  configuration: ");
    const qsizetype library = report.indexOf("\n  libswresample ", options);
    if (options >= 0 && library > options + enough)
        report.remove(options + enough, library - options - enough);
    return report;
}
