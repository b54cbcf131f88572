#include "filelist/MovieProbe.h"

#include "filelist/FileList.h"
#include "filelist/FileListLog.h"
#include "media/EncoderBuild.h"
#include "media/ReportBlanking.h"
#include "media/ReportText.h"
#include "media/RetryProbeReader.h"

#include <memory>
#include <vector>

namespace {

/// A second look. Its reader's thread owns it until the probe is over, or for good where the
/// program closes before that.
struct SecondLook {
    RetryProbeReader reader;
    ProbeValues values;
    std::vector<RetryFindings> findings;
};

void putInto(JobRecord& record, const RetryFindings& findings) {
    if (findings.duration)
        record.set(key::duration, *findings.duration);
    if (findings.isAac)
        record.set(key::audio, QStringLiteral("AAC"));
    if (findings.isHevc)
        record.set(key::video, QStringLiteral("HEVC"));
}

} // namespace

ProbeRunner::Result MovieProbe::run(const QString& moviePath, ProbeRunner::ChunkHandler handler) {
    const ProbeRunner::Result result = runner_.run(moviePath, std::move(handler));
    encoderMissing_ = result == ProbeRunner::Result::FailedToStart;
    gaveUp_ = result == ProbeRunner::Result::Silent;
    if (gaveUp_)
        qCWarning(lcFileList, "the examination of a movie was given up: %s", qPrintable(moviePath));
    return result;
}

QString MovieProbe::getVideoInfo2(const QString& moviePath, int rowNumber) {
    Q_ASSERT(rowNumber == files_.rowCount());
    const auto report = std::make_shared<ReportText>();
    const auto result = run(moviePath, [report](const QByteArray& chunk) {
        report->append(chunk);
        return ProbeRunner::Answer::ReadOn;
    });
    encoderUnsuitable_ = false;
    if (result != ProbeRunner::Result::Ended)
        return QString();
    const QString text = blankReport(report->text(), {moviePath});
    encoderUnsuitable_ = saysThereIsNoX264(text);
    return text;
}

void MovieProbe::getVideoInfo(const QString& moviePath, int rowNumber) {
    const JobRecordPtr record = files_.recordAt(rowNumber - 1);
    const auto look = std::make_shared<SecondLook>(
        SecondLook{RetryProbeReader(QStringList{moviePath}), state_.probe, {}});
    run(moviePath, [look](const QByteArray& chunk) {
        look->findings.push_back(look->reader.read(chunk, look->values));
        return look->findings.back().interrupt ? ProbeRunner::Answer::Interrupt
                                               : ProbeRunner::Answer::ReadOn;
    });
    state_.probe = look->values;
    for (const RetryFindings& each : look->findings) {
        putInto(*record, each);
        if (!each.log.isEmpty())
            qCWarning(lcFileList, "%s", qPrintable(each.log));
    }
}
