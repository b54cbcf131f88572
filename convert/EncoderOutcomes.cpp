#include "convert/EncoderOutcomes.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionDialogs.h"
#include "convert/ConversionQueue.h"
#include "convert/EncoderReader.h"
#include "convert/FileTime.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "widgets/ProgressObject.h"

#include <QFileInfo>
#include <QLoggingCategory>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "reelshift.convert")

QString endText(const std::optional<ProcessEnd>& end) {
    if (!end)
        return QStringLiteral("the encoder goes on");
    switch (end->how) {
    case ProcessEnd::How::FailedToStart:
        return u"the encoder could not be started: " % qt_error_string(end->code);
    case ProcessEnd::How::Killed:
        return u"the encoder was ended by signal " % QString::number(end->code);
    case ProcessEnd::How::Exited:
        break;
    }
    return u"the encoder ended with status " % QString::number(end->code);
}

} // namespace

void EncoderOutcomes::conclude(const EncoderRunPtr& run, EncoderReader& reader) {
    auto verdict = context_.mainThread.onMainThread([&] { return run->life.verdict(); });
    // Somebody else may have deleted it: never "Converted" with nothing there.
    if (verdict == EncoderLife::Verdict::Converted && !run->output.exists())
        verdict = EncoderLife::Verdict::Failed;
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
            context_.files.convertedFileList.push_back(run->record->id());
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
    qCWarning(log).noquote() << onOneLine(run.output.path()) %
                                    u": could not be given its movie's time: " % reason;
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
        context_.files.conversionTaskList.clear();
}

void EncoderOutcomes::settleRemoved(const EncoderRunPtr& run) {
    if (!queue_.settle(run))
        return;
    if (run->life.wasRemovedWhilePaused()) {
        auto& paused = context_.files.pausedList;
        if (!paused.empty() && paused.front().task == run->task)
            paused.erase(paused.begin());
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

void EncoderOutcomes::settleFailed(const EncoderRunPtr& run, Answer answer) {
    // A stop that came meanwhile is the outcome. A removal is not: the row is gone, the answer
    // still says how the run goes on.
    if (run->life.request() == EncoderLife::Request::Stop) {
        settleStopped(run);
        return;
    }
    if (!queue_.settle(run))
        return;
    context_.showWaiting(*run);
    if (answer != Answer::EndRun)
        goOn();
    else if (!context_.state.stopped)
        queue_.endRunAfterFailure();
}

void EncoderOutcomes::failed(const EncoderRunPtr& run, EncoderReader* reader) {
    MainThread& mainThread = context_.mainThread;
    if (mainThread.onMainThread([&] { return run->life.isSettled(); }))
        return;
    logFailure(*run, reader);
    const Answer answer = askAfterFailure(run);
    run->output.remove();
    mainThread.onMainThread([&] {
        context_.showWaiting(*run);
        if (answer == Answer::DropJob)
            context_.files.dequeueHead(run->jobId);
        if (!reader)
            settleFailed(run, answer);
    });
    if (!reader)
        return;
    if (!run->task->end())
        reader->endEncoder();
    context_.workers.sleep(context_.second);
    run->output.remove();
    mainThread.onMainThread([&] { settleFailed(run, answer); });
}

void EncoderOutcomes::failedWithoutThread(const EncoderRunPtr& run) {
    if (run->life.isSettled())
        return;
    context_.state.error = true;
    const bool isEnd = answerToConversionError(run) == ConversionDialogs::firstButton;
    if (!isEnd)
        context_.files.dequeueHead(run->jobId);
    settleFailed(run, isEnd ? Answer::EndRun : Answer::DropJob);
}

// Before the question: whoever reads it may look into the log.
void EncoderOutcomes::logFailure(const EncoderRun& run, const EncoderReader* reader) {
    const QString movie = onOneLine(QFileInfo(run.source).fileName());
    if (!reader) {
        qCWarning(log).noquote() << movie % u": not converted, no encoder was launched";
        return;
    }
    qCWarning(log).noquote() << movie % u": not converted, " % endText(run.task->end());
    const QStringList lines = reader->lastWords();
    for (const QString& line : lines)
        qCWarning(log).noquote() << movie % u": " % onOneLine(line);
}

EncoderOutcomes::Answer EncoderOutcomes::askAfterFailure(const EncoderRunPtr& run) {
    MainThread& mainThread = context_.mainThread;
    mainThread.onMainThread([&] { context_.state.error = true; });
    if (!QFileInfo::exists(run->source)) {
        const int answer =
            mainThread.onMainThread([&] { return context_.dialogs.askSourceRemoved(); });
        return answer == ConversionDialogs::firstButton ? Answer::EndRun : Answer::TryAgain;
    }
    const int answer = mainThread.onMainThread([&] { return answerToConversionError(run); });
    return answer == ConversionDialogs::firstButton ? Answer::EndRun : Answer::DropJob;
}

// Kept: the mark of the name conflict guards the stored answer of the conversion error. One that
// was never given means to ask.
int EncoderOutcomes::answerToConversionError(const EncoderRunPtr& run) {
    const SharedState& state = context_.state;
    const int stored = state.resultStoredForConversionError;
    if (state.checkStatusForFileConflict &&
        (stored == ConversionDialogs::firstButton || stored == ConversionDialogs::secondButton))
        return stored;
    return context_.dialogs.popUpforConversionError(QFileInfo(run->source).fileName());
}

void EncoderOutcomes::writeFailed(const EncoderRunPtr& run, EncoderReader& reader) {
    MainThread& mainThread = context_.mainThread;
    logFailure(*run, &reader);
    mainThread.onMainThread([&] { context_.dialogs.tellMemoryFull(); });
    run->output.remove();
    if (!reader.awaitOwnEnd(context_.patience.end))
        reader.endEncoder();
    run->output.remove();
    mainThread.onMainThread([&] { settleFailed(run, Answer::EndRun); });
}
