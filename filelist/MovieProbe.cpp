#include "filelist/MovieProbe.h"

#include "filelist/FileList.h"
#include "filelist/FileListLog.h"
#include "media/EncoderBuild.h"
#include "platform/MainThread.h"

namespace {

void putInto(JobRecord& record, const RetryFindings& findings) {
    if (findings.duration)
        record.set(key::duration, *findings.duration);
    if (findings.isAac)
        record.set(key::audio, QStringLiteral("AAC"));
    if (findings.isHevc)
        record.set(key::video, QStringLiteral("HEVC"));
}

} // namespace

void MovieProbe::setLeft(bool isLeft) {
    isLeft_ = isLeft;
    mainThread_.wake();
}

bool MovieProbe::waitFor(bool (Examination::*isOver)() const) {
    const auto over = [&] { return ((*examination_).*isOver)(); };
    mainThread_.waitUntil([&] { return isLeft_ || over(); });
    wasLeft_ = !over();
    return !wasLeft_;
}

void MovieProbe::take(ProbeRunner::Result result, const QString& moviePath) {
    encoderMissing_ = result == ProbeRunner::Result::FailedToStart;
    gaveUp_ = result == ProbeRunner::Result::Silent;
    if (gaveUp_)
        qCWarning(lcFileList, "the examination of a movie was given up: %s", qPrintable(moviePath));
}

QString MovieProbe::getVideoInfo2(const QString& moviePath, int rowNumber) {
    Q_ASSERT(rowNumber == files_.rowCount());
    if (!waitFor(&Examination::isFirstOver))
        return {};
    const Examination::FirstLook& look = examination_->first();
    take(look.result, moviePath);
    encoderUnsuitable_ = saysThereIsNoX264(look.report);
    return look.report;
}

void MovieProbe::getVideoInfo(const QString& moviePath, int rowNumber) {
    const JobRecordPtr record = files_.recordAt(rowNumber - 1);
    if (!waitFor(&Examination::isSecondOver))
        return;
    const Examination::SecondLook& look = examination_->second();
    take(look.result, moviePath);
    for (const RetryFindings& found : look.found) {
        found.putInto(state_.probe);
        putInto(*record, found);
        if (!found.log.isEmpty())
            qCWarning(lcFileList, "%s", qPrintable(found.log));
    }
}
