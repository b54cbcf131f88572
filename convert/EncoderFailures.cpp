// What follows a failure: the question, and what its answer means.

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderOutcomes.h"
#include "convert/EncoderReader.h"
#include "convert/LiveJobs.h"
#include "convert/RunWatch.h"
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
bool mayAsk(const Job& job) {
    return !job.life().isSettled() && job.life().request() == EncoderLife::Request::None;
}

} // namespace

void EncoderOutcomes::settleFailed(const JobPtr& job, Answer answer) {
    // A stop that came meanwhile is the outcome. A removal is not once the user was asked: the row
    // is gone, the answer still says how the run goes on.
    if (job->life().request() == EncoderLife::Request::Stop) {
        settleStopped(job);
        return;
    }
    if (answer == Answer::NotAsked) {
        settleRemoved(job);
        return;
    }
    if (!context_.jobs.settle(job))
        return;
    context_.jobs.showWaiting(*job);
    if (answer != Answer::EndRun)
        goOn();
    else if (!context_.state.stopped)
        context_.goOn(AfterJob::EndRun);
}

void EncoderOutcomes::failed(const JobPtr& job, EncoderReader* reader) {
    MainThread& mainThread = context_.mainThread;
    if (mainThread.onMainThread([&] { return job->life().isSettled(); }))
        return;
    noteFailure(*job, reader);
    judgeAtItsEnd(job);
    const Answer answer = askAfterFailure(job);
    if (reader)
        job->plan().output.remove();
    mainThread.onMainThread([&] {
        if (job->life().isSettled())
            return;
        context_.jobs.showWaiting(*job);
        if (answer == Answer::DropJob)
            context_.files.dequeueHead(job->row.id);
        if (!reader)
            settleFailed(job, answer);
    });
    if (!reader)
        return;
    if (!job->task()->end())
        reader->endEncoder();
    if (answer != Answer::NotAsked)
        context_.workers.sleep(context_.second);
    job->plan().output.remove();
    mainThread.onMainThread([&] { settleFailed(job, answer); });
}

void EncoderOutcomes::failedWithoutThread(const JobPtr& job) {
    if (job->life().isSettled())
        return;
    context_.state.error = true;
    const auto look = [source = job->order.source] { return QFileInfo::exists(source); };
    bool isSourceThere = false;
    try {
        isSourceThere = context_.mainThread.waitForResult(look);
    } catch (const std::system_error&) {
        isSourceThere = look(); // still none to be had: better to be held up than to ask wrongly
    }
    const Answer answer = answerAboutFailure(job, isSourceThere);
    if (answer == Answer::DropJob)
        context_.files.dequeueHead(job->row.id);
    settleFailed(job, answer);
}

// Under the question nobody reads what an encoder says: its end would be noticed too late.
void EncoderOutcomes::judgeAtItsEnd(const JobPtr& job) {
    if (!job->task())
        return;
    if (job->task()->end()) {
        job->plan().output.judge();
        return;
    }
    try {
        context_.workers.start([job] {
            while (!job->task()->waitForEnd(std::chrono::hours(1))) {
            }
            job->plan().output.judge();
        });
    } catch (const std::system_error& failure) {
        qCWarning(lcConvert, "nobody waits for the end of an encoder: %s", failure.what());
    }
}

// Before the question: whoever reads it may look into the log.
void EncoderOutcomes::noteFailure(const Job& job, const EncoderReader* reader) {
    QStringList said;
    QStringList command;
    if (reader) {
        said = QStringList(u"not converted, " + endText(job.task()->end()));
        for (const QString& line : reader->lastWords())
            said += onOneLine(line);
        command = reader->remarks();
    } else {
        said = QStringList(QStringLiteral("not converted, no encoder was launched"));
    }
    const QString movie = onOneLine(QFileInfo(job.order.source).fileName());
    for (const QString& line : said)
        qCWarning(lcConvert).noquote() << movie % u": " % line;
    const QString details = (QStringList(movie) + command + said).join(u'\n');
    context_.mainThread.onMainThread([&] { context_.watch.failed(job.row.id, details); });
}

EncoderOutcomes::Answer EncoderOutcomes::askAfterFailure(const JobPtr& job) {
    MainThread& mainThread = context_.mainThread;
    mainThread.onMainThread([&] {
        if (!job->life().isSettled())
            context_.state.error = true;
    });
    const auto isSourceThere = lookForSource(job);
    return mainThread.onMainThread(
        [&] { return isSourceThere ? answerAboutFailure(job, *isSourceThere) : Answer::NotAsked; });
}

std::optional<bool> EncoderOutcomes::lookForSource(const JobPtr& job) {
    const auto isThere = std::make_shared<std::atomic<bool>>(false);
    const bool isKnown =
        doBeforeBox(job, [job, isThere] { *isThere = QFileInfo::exists(job->order.source); });
    return isKnown ? std::optional(isThere->load()) : std::nullopt;
}

// A share that hangs must not hold a stop up: the thread that looks is left behind. It also sees
// which file the encoder writes, before others can put theirs there under the box.
bool EncoderOutcomes::doBeforeBox(const JobPtr& job, const std::function<void()>& work) {
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    const auto all = [job, work, isDone] {
        job->plan().output.note();
        work();
        *isDone = true;
        job->news.wake();
    };
    try {
        context_.workers.start(all);
    } catch (const std::system_error&) {
        all();
    }
    job->news.waitUntil([&] { return isDone->load(); });
    return *isDone;
}

EncoderOutcomes::Answer EncoderOutcomes::answerAboutFailure(const JobPtr& job, bool isSourceThere) {
    if (!mayAsk(*job))
        return Answer::NotAsked;
    const int answer =
        isSourceThere ? answerToConversionError(job) : context_.dialogs.askSourceRemoved();
    if (answer == boxanswer::first)
        return Answer::EndRun;
    return isSourceThere ? Answer::DropJob : Answer::TryAgain;
}

// Kept: the mark of the name conflict guards the stored answer of the conversion error. One that
// was never given means to ask.
int EncoderOutcomes::answerToConversionError(const JobPtr& job) {
    const SharedState& state = context_.state;
    const int stored = state.resultStoredForConversionError;
    if (state.checkStatusForFileConflict &&
        (stored == boxanswer::first || stored == boxanswer::second))
        return stored;
    return context_.dialogs.popUpforConversionError(QFileInfo(job->order.source).fileName());
}

void EncoderOutcomes::writeFailed(const JobPtr& job, EncoderReader& reader) {
    MainThread& mainThread = context_.mainThread;
    noteFailure(*job, &reader);
    judgeAtItsEnd(job);
    (void)doBeforeBox(job, [] {});
    const bool isTold = mainThread.onMainThread([&] {
        if (!mayAsk(*job))
            return false;
        context_.dialogs.tellMemoryFull();
        return true;
    });
    job->plan().output.remove();
    if (!reader.awaitOwnEnd(context_.patience.end))
        reader.endEncoder();
    job->plan().output.remove();
    mainThread.onMainThread([&] { settleFailed(job, isTold ? Answer::EndRun : Answer::NotAsked); });
}
