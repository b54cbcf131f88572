// What follows a failure: the question, and what its answer means.

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderOutcomes.h"
#include "convert/EncoderReader.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "platform/ChildProcess.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>

#include <atomic>
#include <functional>
#include <memory>
#include <system_error>

namespace {

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

/// A request is the outcome, and one that has had it asks nothing more.
bool mayAsk(const EncoderRun& run) {
    return !run.life.isSettled() && run.life.request() == EncoderLife::Request::None;
}

} // namespace

void EncoderOutcomes::settleFailed(const EncoderRunPtr& run, Answer answer) {
    // A stop that came meanwhile is the outcome. A removal is not once the user was asked: the row
    // is gone, the answer still says how the run goes on.
    if (run->life.request() == EncoderLife::Request::Stop) {
        settleStopped(run);
        return;
    }
    if (answer == Answer::NotAsked) {
        settleRemoved(run);
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
    judgeAtItsEnd(run);
    const Answer answer = askAfterFailure(run);
    if (reader)
        run->output.remove();
    mainThread.onMainThread([&] {
        if (run->life.isSettled())
            return;
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
    if (answer != Answer::NotAsked)
        context_.workers.sleep(context_.second);
    run->output.remove();
    mainThread.onMainThread([&] { settleFailed(run, answer); });
}

void EncoderOutcomes::failedWithoutThread(const EncoderRunPtr& run) {
    if (run->life.isSettled())
        return;
    context_.state.error = true;
    const auto look = [source = run->source] { return QFileInfo::exists(source); };
    bool isSourceThere = false;
    try {
        isSourceThere = context_.mainThread.waitForResult(look);
    } catch (const std::system_error&) {
        isSourceThere = look(); // still none to be had: better to be held up than to ask wrongly
    }
    const Answer answer = answerAboutFailure(run, isSourceThere);
    if (answer == Answer::DropJob)
        context_.files.dequeueHead(run->jobId);
    settleFailed(run, answer);
}

// Under the question nobody reads what an encoder says: its end would be noticed too late.
void EncoderOutcomes::judgeAtItsEnd(const EncoderRunPtr& run) {
    if (!run->task)
        return;
    if (run->task->end()) {
        run->output.judge();
        return;
    }
    try {
        context_.workers.start([run] {
            while (!run->task->waitForEnd(std::chrono::hours(1))) {
            }
            run->output.judge();
        });
    } catch (const std::system_error& failure) {
        qCWarning(lcConvert, "nobody waits for the end of an encoder: %s", failure.what());
    }
}

// Before the question: whoever reads it may look into the log.
void EncoderOutcomes::logFailure(const EncoderRun& run, const EncoderReader* reader) {
    const QString movie = onOneLine(QFileInfo(run.source).fileName());
    if (!reader) {
        qCWarning(lcConvert).noquote() << movie % u": not converted, no encoder was launched";
        return;
    }
    qCWarning(lcConvert).noquote() << movie % u": not converted, " % endText(run.task->end());
    const QStringList lines = reader->lastWords();
    for (const QString& line : lines)
        qCWarning(lcConvert).noquote() << movie % u": " % onOneLine(line);
}

EncoderOutcomes::Answer EncoderOutcomes::askAfterFailure(const EncoderRunPtr& run) {
    MainThread& mainThread = context_.mainThread;
    mainThread.onMainThread([&] {
        if (!run->life.isSettled())
            context_.state.error = true;
    });
    const auto isSourceThere = lookForSource(run);
    return mainThread.onMainThread(
        [&] { return isSourceThere ? answerAboutFailure(run, *isSourceThere) : Answer::NotAsked; });
}

std::optional<bool> EncoderOutcomes::lookForSource(const EncoderRunPtr& run) {
    const auto isThere = std::make_shared<std::atomic<bool>>(false);
    const bool isKnown =
        doBeforeBox(run, [run, isThere] { *isThere = QFileInfo::exists(run->source); });
    return isKnown ? std::optional(isThere->load()) : std::nullopt;
}

// A share that hangs must not hold a stop up: the thread that looks is left behind. It also sees
// which file the encoder writes, before others can put theirs there under the box.
bool EncoderOutcomes::doBeforeBox(const EncoderRunPtr& run, const std::function<void()>& work) {
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    const auto all = [run, work, isDone] {
        run->output.note();
        work();
        *isDone = true;
        run->reader.wake();
    };
    try {
        context_.workers.start(all);
    } catch (const std::system_error&) {
        all();
    }
    run->reader.waitUntil([&] { return isDone->load(); });
    return *isDone;
}

EncoderOutcomes::Answer EncoderOutcomes::answerAboutFailure(const EncoderRunPtr& run,
                                                            bool isSourceThere) {
    if (!mayAsk(*run))
        return Answer::NotAsked;
    const int answer =
        isSourceThere ? answerToConversionError(run) : context_.dialogs.askSourceRemoved();
    if (answer == boxanswer::first)
        return Answer::EndRun;
    return isSourceThere ? Answer::DropJob : Answer::TryAgain;
}

// Kept: the mark of the name conflict guards the stored answer of the conversion error. One that
// was never given means to ask.
int EncoderOutcomes::answerToConversionError(const EncoderRunPtr& run) {
    const SharedState& state = context_.state;
    const int stored = state.resultStoredForConversionError;
    if (state.checkStatusForFileConflict &&
        (stored == boxanswer::first || stored == boxanswer::second))
        return stored;
    return context_.dialogs.popUpforConversionError(QFileInfo(run->source).fileName());
}

void EncoderOutcomes::writeFailed(const EncoderRunPtr& run, EncoderReader& reader) {
    MainThread& mainThread = context_.mainThread;
    logFailure(*run, &reader);
    judgeAtItsEnd(run);
    (void)doBeforeBox(run, [] {});
    const bool isTold = mainThread.onMainThread([&] {
        if (!mayAsk(*run))
            return false;
        context_.dialogs.tellMemoryFull();
        return true;
    });
    run->output.remove();
    if (!reader.awaitOwnEnd(context_.patience.end))
        reader.endEncoder();
    run->output.remove();
    mainThread.onMainThread([&] { settleFailed(run, isTold ? Answer::EndRun : Answer::NotAsked); });
}
