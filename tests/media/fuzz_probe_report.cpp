#include "media/ProbeReport.h"
#include "media/ReportBlanking.h"
#include "media/RetryProbeReader.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

void extract(const QString& text) {
    require(!probedDuration(text) || probedDuration(text)->size() == 11);
    try {
        (void)probedAudio(text);
    } catch (const std::out_of_range&) {
    }
    try {
        (void)probedVideo(text);
    } catch (const std::out_of_range&) {
    }
    try {
        const PictureSize size = pictureSize(text);
        require(size.width >= 0 && size.height >= 0);
    } catch (const std::out_of_range&) {
    }
}

void blankInTwo(const QString& text, qsizetype cut, const QStringList& paths) {
    ReportBlanker blanker(paths);
    require(blanker.blank(text.first(cut)).size() == cut);
    require(blanker.blank(text.sliced(cut)).size() == text.size() - cut);
}

} // namespace

/// The first byte says where the report is cut in two, the first line is a path that it may name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1,
                           static_cast<qsizetype>(size) - 1);
    const QByteArray pathBytes = bytes.first(qMax(bytes.indexOf('\n'), qsizetype{0}));
    const QStringList paths{QString::fromUtf8(pathBytes)};
    const QString text = QString::fromUtf8(bytes);

    const QString blanked = blankReport(text, paths);
    require(blanked.size() == text.size());
    for (qsizetype i = 0; i < text.size(); ++i)
        require(blanked.at(i) == text.at(i) || blanked.at(i) == u' ');
    extract(text);
    extract(blanked);
    blankInTwo(text, text.size() * data[0] / 255, paths);

    ProbeValues values;
    RetryProbeReader reader(paths);
    const qsizetype cut = bytes.size() * data[0] / 255;
    reader.read(bytes.first(cut)).putInto(values);
    reader.read(bytes.sliced(cut)).putInto(values);
    return 0;
}
