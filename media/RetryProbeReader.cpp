#include "media/RetryProbeReader.h"

#include "media/ProbeReport.h"

#include <QList>
#include <QStringView>

#include <stdexcept>

namespace {

void addLogLine(QString& log, const char* step, const std::out_of_range& error) {
    if (!log.isEmpty())
        log += u'\n';
    log += QLatin1StringView(step) % QLatin1StringView(": ") % QLatin1StringView(error.what());
}

void readDuration(QStringView text, RetryFindings& found) {
    try {
        found.duration = durationText(text);
    } catch (const std::out_of_range& error) {
        addLogLine(found.log, "duration", error);
        found.interrupt = true;
    }
}

void readBitrate(QStringView text, RetryFindings& found) {
    constexpr qsizetype length = 5;
    const qsizetype word = text.indexOf(u"bitrate");
    if (word < 0)
        return;
    const qsizetype start = word + 9;
    if (start + length > text.size()) {
        addLogLine(found.log, "bit rate", std::out_of_range("the report ends inside the number"));
        found.interrupt = true;
        return;
    }
    found.bitrate = text.sliced(start, length).toString();
}

void readPictureSize(QStringView text, RetryFindings& found) {
    const qsizetype word = text.indexOf(u"Video");
    if (word < 0)
        return;
    for (const QStringView piece : text.sliced(word).tokenize(u' ')) {
        const QList<QStringView> parts = piece.split(u'x');
        // The hexadecimal tag of a codec ("0x31637668") is no size.
        if (parts.size() < 2 || parts.first() == u"0")
            continue;
        found.size = {parts.at(0).toString(), parts.at(1).toString()};
        return;
    }
}

void readCodecs(QStringView text, RetryFindings& found) {
    try {
        if (const auto audio = probedAudio(text)) {
            found.audioCodec = audio->text;
            found.isAac = audio->isWanted;
        }
        if (const auto video = probedVideo(text)) {
            found.videoCodec = video->text;
            found.isHevc = video->isWanted;
            found.closePipe = true;
        }
    } catch (const std::out_of_range& error) {
        addLogLine(found.log, "codec", error);
    }
}

} // namespace

void RetryFindings::putInto(ProbeValues& values) const {
    values.durationMain = duration.value_or(values.durationMain);
    values.bitrate = bitrate.value_or(values.bitrate);
    values.audioCodec = audioCodec.value_or(values.audioCodec);
    values.videoCodec = videoCodec.value_or(values.videoCodec);
    if (!size)
        return;
    values.strWidth = size->width;
    values.strHeight = size->height;
    values.commonWidth = leadingNumber(size->width);
    values.commonHeight = leadingNumber(size->height);
}

RetryProbeReader::RetryProbeReader(const QStringList& paths) : blanker_(paths) {}

RetryFindings RetryProbeReader::read(const QByteArray& chunk) {
    RetryFindings found;
    if (isClosed_)
        return found;
    const QString text = blanker_.blank(decoder_.decode(chunk));
    readDuration(text, found);
    readBitrate(text, found);
    readPictureSize(text, found);
    readCodecs(text, found);
    isClosed_ = found.closePipe;
    return found;
}
