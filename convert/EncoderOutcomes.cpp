#include "convert/EncoderOutcomes.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderReader.h"
#include "convert/FileTime.h"
#include "convert/LiveJobs.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"

using namespace std::chrono_literals;

void EncoderOutcomes::conclude(const JobPtr& job, EncoderReader& reader) {
    const auto verdict = context_.mainThread.onMainThread([&] { return job->life().verdict(); });
    switch (verdict) {
    case EncoderLife::Verdict::Converted:
        converted(job);
        break;
    case EncoderLife::Verdict::WriteFailed:
        writeFailed(job, reader);
        break;
    case EncoderLife::Verdict::Failed:
        failed(job, &reader);
        break;
    case EncoderLife::Verdict::Stopped:
    case EncoderLife::Verdict::Removed:
        endAsAsked(job, reader);
        break;
    }
}

void EncoderOutcomes::converted(const JobPtr& job) {
    takeOverTime(*job);
    context_.mainThread.onMainThread([&] {
        // The row went after its end was looked at.
        if (job->life().request() == EncoderLife::Request::Remove) {
            settleRemoved(job);
            return;
        }
        if (!context_.jobs.settle(job))
            return;
        context_.watch.converted(job->row.id, job->plan().length);
        ++context_.state.noOfConvertedFile;
        job->row.progress->setStatusString(QString());
        setConverted(*job->row.record);
        // Kept: a movie that was finished before its pause took effect is not among those that a
        // later stop or the summary takes out of the list.
        if (!job->life().suspendFailed())
            context_.files.noteConverted(job->row.record->id());
        context_.files.dequeueHead(job->row.id);
        context_.jobs.rowChanged(*job);
        if (job->life().request() == EncoderLife::Request::None)
            context_.goOn(AfterJob::NextJob);
    });
}

// Before the movie is counted: the next job may be about to replace this very file, and notes its
// time to see whether its own encoder touches it.
void EncoderOutcomes::takeOverTime(const Job& job) {
    if (!job.plan().sourceTime ||
        setModificationTime(job.plan().output.path(), *job.plan().sourceTime))
        return;
    const QString reason = qt_error_string();
    qCWarning(lcConvert).noquote() << onOneLine(job.plan().output.path()) %
                                          u": could not be given its movie's time: " % reason;
}

void EncoderOutcomes::endAsAsked(const JobPtr& job, EncoderReader& reader) {
    // Nothing was said for a second: one that has just come to its end by itself says so here.
    if (!reader.awaitEnd(0ms)) {
        const bool summarySeen =
            context_.mainThread.onMainThread([&] { return job->life().isSummarySeen(); });
        // After its summary an encoder has closed its file and ends by itself within milliseconds.
        if (!summarySeen || !reader.awaitEnd(context_.second)) {
            // One that ends by itself at this very moment has a finished file.
            if (reader.tellToEnd())
                job->plan().output.remove();
            reader.awaitObedience();
        }
    }
    const std::pair ended = context_.mainThread.onMainThread(
        [&] { return std::pair(job->life().verdict(), job->life().isFinished()); });
    const EncoderLife::Verdict verdict = ended.first; // clang 14 captures no structured binding
    const bool isFinished = ended.second;
    if (verdict == EncoderLife::Verdict::Converted) {
        converted(job);
        return;
    }
    if (!isFinished)
        job->plan().output.remove();
    context_.mainThread.onMainThread([&] {
        if (verdict == EncoderLife::Verdict::Removed)
            settleRemoved(job);
        else
            settleStopped(job);
    });
}

void EncoderOutcomes::settleStopped(const JobPtr& job) {
    if (!context_.jobs.settle(job))
        return;
    context_.jobs.showWaiting(*job);
    context_.state.convertingIndex.clear();
    if (context_.state.stopped)
        context_.files.clearQueue();
}

void EncoderOutcomes::settleRemoved(const JobPtr& job) {
    if (!context_.jobs.settle(job))
        return;
    if (job->life().wasRemovedWhilePaused()) {
        const auto& paused = context_.files.pausedList;
        if (!paused.empty() && paused.front().task == job->task())
            context_.files.dropFirstPaused();
        context_.state.pausedFileIsDeleted = false;
    }
    // After rows were dragged the row that went may have been another movie's.
    if (context_.files.recordWithId(job->row.record->id()))
        context_.jobs.showWaiting(*job);
    goOn();
}

// A stop that is under way clears up by itself, and shows no summary.
void EncoderOutcomes::goOn() {
    if (!context_.state.stopped)
        context_.goOn(AfterJob::NextJob);
}
