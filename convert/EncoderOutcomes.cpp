#include "convert/EncoderOutcomes.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderReader.h"
#include "convert/FileTime.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"

using namespace std::chrono_literals;

void EncoderOutcomes::conclude(const EncoderRunPtr& run, EncoderReader& reader) {
    const auto verdict = context_.mainThread.onMainThread([&] { return run->life.verdict(); });
    switch (verdict) {
    case EncoderLife::Verdict::Converted:
        converted(run);
        break;
    case EncoderLife::Verdict::WriteFailed:
        writeFailed(run, reader);
        break;
    case EncoderLife::Verdict::Failed:
        failed(run, &reader);
        break;
    case EncoderLife::Verdict::Stopped:
    case EncoderLife::Verdict::Removed:
        endAsAsked(run, reader);
        break;
    }
}

void EncoderOutcomes::converted(const EncoderRunPtr& run) {
    takeOverTime(*run);
    context_.mainThread.onMainThread([&] {
        // The row went after its end was looked at.
        if (run->life.request() == EncoderLife::Request::Remove) {
            settleRemoved(run);
            return;
        }
        if (!queue_.settle(run))
            return;
        context_.watch.converted(*run);
        ++context_.state.noOfConvertedFile;
        run->progress->setStatusString(QString());
        setConverted(*run->record);
        // Kept: a movie that was finished before its pause took effect is not among those that a
        // later stop or the summary takes out of the list.
        if (!run->life.suspendFailed())
            context_.files.noteConverted(run->record->id());
        context_.files.dequeueHead(run->jobId);
        context_.rowChanged(*run);
        if (run->life.request() == EncoderLife::Request::None)
            queue_.startConverting();
    });
}

// Before the movie is counted: the next job may be about to replace this very file, and notes its
// time to see whether its own encoder touches it.
void EncoderOutcomes::takeOverTime(const EncoderRun& run) {
    if (!run.sourceTime || setModificationTime(run.output.path(), *run.sourceTime))
        return;
    const QString reason = qt_error_string();
    qCWarning(lcConvert).noquote()
        << onOneLine(run.output.path()) % u": could not be given its movie's time: " % reason;
}

void EncoderOutcomes::endAsAsked(const EncoderRunPtr& run, EncoderReader& reader) {
    // Nothing was said for a second: one that has just come to its end by itself says so here.
    if (!reader.awaitEnd(0ms)) {
        const bool summarySeen =
            context_.mainThread.onMainThread([&] { return run->life.isSummarySeen(); });
        // After its summary an encoder has closed its file and ends by itself within milliseconds.
        if (!summarySeen || !reader.awaitEnd(context_.second)) {
            // One that ends by itself at this very moment has a finished file.
            if (reader.tellToEnd())
                run->output.remove();
            reader.awaitObedience();
        }
    }
    const std::pair ended = context_.mainThread.onMainThread(
        [&] { return std::pair(run->life.verdict(), run->life.isFinished()); });
    const EncoderLife::Verdict verdict = ended.first; // clang 14 captures no structured binding
    const bool isFinished = ended.second;
    if (verdict == EncoderLife::Verdict::Converted) {
        converted(run);
        return;
    }
    if (!isFinished)
        run->output.remove();
    context_.mainThread.onMainThread([&] {
        if (verdict == EncoderLife::Verdict::Removed)
            settleRemoved(run);
        else
            settleStopped(run);
    });
}

void EncoderOutcomes::settleStopped(const EncoderRunPtr& run) {
    if (!queue_.settle(run))
        return;
    context_.showWaiting(*run);
    context_.state.convertingIndex = SharedState::noRow;
    if (context_.state.stopped)
        context_.files.clearQueue();
}

void EncoderOutcomes::settleRemoved(const EncoderRunPtr& run) {
    if (!queue_.settle(run))
        return;
    if (run->life.wasRemovedWhilePaused()) {
        const auto& paused = context_.files.pausedList;
        if (!paused.empty() && paused.front().task == run->task)
            context_.files.dropFirstPaused();
        context_.state.pausedFileIsDeleted = false;
    }
    // After rows were dragged the row that went may have been another movie's.
    if (context_.files.recordWithId(run->record->id()))
        context_.showWaiting(*run);
    goOn();
}

// A stop that is under way clears up by itself, and shows no summary.
void EncoderOutcomes::goOn() {
    if (!context_.state.stopped)
        queue_.startConverting();
}
