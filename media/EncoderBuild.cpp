#include "media/EncoderBuild.h"

#include <QStringTokenizer>

bool saysThereIsNoX264(QStringView report) {
    for (const QStringView line : report.tokenize(u'\n')) {
        // What follows is about the movie.
        if (line.startsWith(u"Input #"))
            break;
        if (line.startsWith(u"  configuration:"))
            return !line.contains(u"--enable-libx264");
    }
    return false;
}
