#include "help/EncoderVersion.h"

#include <QStandardPaths>

QString encoderVersionIn(const QByteArray& report) {
    const QByteArray words = "ffmpeg version ";
    const qsizetype begin = report.indexOf(words);
    if (begin < 0)
        return {};
    const QByteArray rest = report.sliced(begin + words.size());
    return QString::fromUtf8(rest.simplified().split(' ').first());
}

QString encoderPlace() {
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}
