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

void readDuration(QStringView text, ProbeValues& values, RetryFindings& found) {
    try {
        found.duration = durationText(text);
        if (found.duration)
            values.durationMain = *found.duration;
    } catch (const std::out_of_range& error) {
        addLogLine(found.log, "duration", error);
        found.interrupt = true;
    }
}

void readBitrate(QStringView text, ProbeValues& values, RetryFindings& found) {
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
    values.bitrate = text.sliced(start, length).toString();
}

void readPictureSize(QStringView text, ProbeValues& values) {
    const qsizetype word = text.indexOf(u"Video");
    if (word < 0)
        return;
    for (const QStringView piece : text.sliced(word).tokenize(u' ')) {
        const QList<QStringView> parts = piece.split(u'x');
        // The hexadecimal tag of a codec ("0x31637668") is no size.
        if (parts.size() < 2 || parts.first() == u"0")
            continue;
        values.strWidth = parts.at(0).toString();
        values.strHeight = parts.at(1).toString();
        values.commonHeight = leadingNumber(parts.at(1));
        values.commonWidth = leadingNumber(parts.at(0));
        return;
    }
}

void readCodecs(QStringView text, ProbeValues& values, RetryFindings& found) {
    try {
        if (const auto audio = probedAudio(text)) {
            values.audioCodec = audio->text;
            found.isAac = audio->isWanted;
        }
        if (const auto video = probedVideo(text)) {
            values.videoCodec = video->text;
            found.isHevc = video->isWanted;
            found.closePipe = true;
        }
    } catch (const std::out_of_range& error) {
        addLogLine(found.log, "codec", error);
    }
}

} // namespace

RetryProbeReader::RetryProbeReader(const QStringList& paths) : blanker_(paths) {}

RetryFindings RetryProbeReader::read(const QByteArray& chunk, ProbeValues& values) {
    RetryFindings found;
    if (isClosed_)
        return found;
    const QString text = blanker_.blank(decoder_.decode(chunk));
    readDuration(text, values, found);
    readBitrate(text, values, found);
    readPictureSize(text, values);
    readCodecs(text, values, found);
    isClosed_ = found.closePipe;
    return found;
}
