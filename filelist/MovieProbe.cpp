#include "filelist/MovieProbe.h"

#include "filelist/FileList.h"
#include "media/ReportBlanking.h"
#include "media/ReportText.h"
#include "media/RetryProbeReader.h"
#include "platform/MainThread.h"

#include <QLoggingCategory>

#include <memory>

namespace {

Q_LOGGING_CATEGORY(log, "reelshift.filelist")

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
    if (result == ProbeRunner::Result::Silent)
        qCWarning(log, "the examination of a movie was given up: %s", qPrintable(moviePath));
    return result;
}

QString MovieProbe::getVideoInfo2(const QString& moviePath, int rowNumber) {
    Q_ASSERT(rowNumber == files_.rowCount());
    const auto report = std::make_shared<ReportText>();
    const auto result = run(moviePath, [report](const QByteArray& chunk) {
        report->append(chunk);
        return ProbeRunner::Answer::ReadOn;
    });
    if (result != ProbeRunner::Result::Ended)
        return QString();
    return blankReport(report->text(), {moviePath});
}

void MovieProbe::getVideoInfo(const QString& moviePath, int rowNumber) {
    const JobRecordPtr record = files_.recordAt(rowNumber - 1);
    const auto reader = std::make_shared<RetryProbeReader>(QStringList{moviePath});
    run(moviePath, [this, &mainThread = mainThread_, record, reader](const QByteArray& chunk) {
        return mainThread.onMainThread([&] {
            const RetryFindings findings = reader->read(chunk, state_.probe);
            putInto(*record, findings);
            if (!findings.log.isEmpty())
                qCWarning(log, "%s", qPrintable(findings.log));
            return findings.interrupt ? ProbeRunner::Answer::Interrupt
                                      : ProbeRunner::Answer::ReadOn;
        });
    });
}
