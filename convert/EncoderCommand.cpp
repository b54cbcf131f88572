#include "convert/EncoderCommand.h"

#include <stdexcept>

namespace {

QString partOfName(ProfileKind profile) {
    switch (profile) {
    case ProfileKind::Pro:
        return QStringLiteral("Pro");
    case ProfileKind::Normal:
        return QStringLiteral("Normal");
    case ProfileKind::HighQuality:
        break;
    }
    return QStringLiteral("HQ");
}

} // namespace

QString rateFactor(ProfileKind profile) {
    switch (profile) {
    case ProfileKind::Pro:
        return QStringLiteral("7");
    case ProfileKind::Normal:
        return QStringLiteral("23");
    case ProfileKind::HighQuality:
        break;
    }
    return QStringLiteral("15");
}

QString outputBase(const QString& folder, const QString& source) {
    const QString name = source.section(u'/', -1);
    const qsizetype dot = name.lastIndexOf(u'.');
    // A name that only begins with a dot has no extension.
    const QString stem = dot > 0 ? name.left(dot) : name;
    return folder + u'/' + stem;
}

QString outputName(ProfileKind profile, const QString& base, const QString& resolution) {
    return base + u'_' + partOfName(profile) + u'_' + resolution + QStringLiteral(".mp4");
}

QString duplicateName(ProfileKind profile, const QString& base, int number,
                      const QString& resolution) {
    const QString extension =
        profile == ProfileKind::Normal ? QStringLiteral(".mov") : QStringLiteral(".mp4");
    return base + u'_' + partOfName(profile) + u'(' + QString::number(number) +
           QStringLiteral(")_") + resolution + extension;
}

QString scaleFilter(const QString& resolution) {
    const QStringList parts = resolution.split(u'x');
    if (parts.size() < 2)
        throw std::out_of_range("a picture size without a height: " + resolution.toStdString());
    return QStringLiteral("scale=") + parts[0] + u':' + parts[1];
}

QStringList encoderArguments(ProfileKind profile, const QString& source, const QString& resolution,
                             const QString& output, bool overwrite) {
    QStringList arguments;
    if (overwrite)
        arguments << QStringLiteral("-y");
    arguments << QStringLiteral("-psnr") << QStringLiteral("-i") << source
              << QStringLiteral("-codec:v") << QStringLiteral("libx264")
              << QStringLiteral("-preset") << QStringLiteral("veryfast")
              << QStringLiteral("-level:v") << QStringLiteral("5.1") << QStringLiteral("-vf")
              << scaleFilter(resolution) << QStringLiteral("-crf") << rateFactor(profile)
              << QStringLiteral("-g") << QStringLiteral("15") << QStringLiteral("-pix_fmt")
              << QStringLiteral("yuv420p") << QStringLiteral("-acodec") << QStringLiteral("copy")
              << QStringLiteral("-avoid_negative_ts") << QStringLiteral("1") << output;
    return arguments;
}
