#include "convert/JobThread.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderCommand.h"
#include "convert/EncoderMonitor.h"
#include "convert/EncoderOutcomes.h"
#include "convert/FileTime.h"
#include "convert/LiveJobs.h"
#include "convert/RowStates.h"
#include "convert/Timecode.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxAnswers.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <system_error>

namespace {

const QString none = QStringLiteral("None");

// The job was stopped or its row removed: its thread goes without another word.
struct Abandoned final {};

} // namespace

JobThread::JobThread(const ConversionContext& context, EncoderMonitor& monitor,
                     EncoderOutcomes& outcomes)
    : context_(context), monitor_(monitor), outcomes_(outcomes) {}

template <typename F> auto JobThread::inJob(const JobPtr& job, F&& f) {
    return context_.mainThread.onMainThread([&] {
        if (job->life().isSettled())
            throw Abandoned();
        return f();
    });
}

void JobThread::start(const JobPtr& job) {
    try {
        context_.workers.start([this, job] { work(job); });
    } catch (const std::system_error& failure) {
        qCWarning(lcConvert, "job %d found no thread: %s", job->order.id, failure.what());
        // Not now: whoever began the job comes to its own end first.
        QTimer::singleShot(0, &context_.mainThread, [this, job] {
            runGuarded([&] { outcomes_.failedWithoutThread(job); });
        });
    }
}

void JobThread::work(const JobPtr& job) {
    try {
        bgConvertWork(job);
    } catch (const Abandoned&) {
        qCDebug(lcConvert, "job %d was given up before its encoder was launched", job->order.id);
    } catch (const std::exception& failure) {
        qCWarning(lcConvert, "job %d went wrong: %s", job->order.id, failure.what());
        if (job->task())
            monitor_.giveUp(job);
        else
            outcomes_.failed(job, nullptr);
    }
}

void JobThread::bgConvertWork(const JobPtr& job) {
    inJob(job, [] {});
    if (dropWithoutDuration(job))
        return;
    const double length = secondsOfTimecode(job->order.duration);
    qCDebug(lcConvert, "Executable path: %s", qPrintable(context_.encoderPath));
    if (!sourceIsThere(job))
        return;
    const auto sourceTime = modificationTime(job->order.source);
    const auto output = settleOutput(job);
    if (!output)
        return;
    job->setPlan({length, sourceTime, PartialOutput(output->path)});
    job->note.write({context_.workers, context_.stateFolder, context_.second}, job->order.source,
                    job->plan().output);
    launch(job, encoderArguments(context_.profiles.kindOf(job->order.profile), job->order.source,
                                 job->order.resolution, output->path, output->overwrite));
    monitor_.follow(job);
}

bool JobThread::dropWithoutDuration(const JobPtr& job) {
    if (job->order.duration != none)
        return false;
    inJob(job, [&] {
        // Kept: the mark goes to a fresh progress record, the row shows nothing of it.
        ProgressObject().changestat(status::STATFL);
        context_.files.dequeueHead(job->row.id);
        settleAndGoOn(job);
    });
    return true;
}

bool JobThread::sourceIsThere(const JobPtr& job) {
    if (QFileInfo::exists(job->order.source))
        return true;
    const int answer = inJob(job, [&] {
        setWaiting(*job->row.record);
        context_.jobs.rowChanged(*job);
        return context_.dialogs.askSourceUnavailable();
    });
    if (answer == boxanswer::first) {
        inJob(job, [&] {
            job->row.progress->setStatusString(QString());
            context_.files.dequeueHead(job->row.id);
            context_.jobs.rowChanged(*job);
        });
        context_.workers.sleep(context_.second);
    }
    inJob(job, [&] { settleAndGoOn(job); });
    return false;
}

std::optional<JobThread::Output> JobThread::settleOutput(const JobPtr& job) {
    const JobOrder& order = job->order;
    const ProfileKind profile = context_.profiles.kindOf(order.profile);
    const QString base = outputBase(order.outputFolder, order.source);
    if (profile == ProfileKind::Normal)
        qCDebug(lcConvert, "bit rate %dk", static_cast<int>(leadingDecimal(order.bitrate)));
    const QString candidate = outputName(profile, base, order.resolution);
    if (!QFileInfo::exists(candidate))
        return Output{candidate};
    return settleConflict(job, base, candidate);
}

std::optional<JobThread::Output> JobThread::settleConflict(const JobPtr& job, const QString& base,
                                                           const QString& candidate) {
    const bool isSource = isSourceOfARow(job, candidate);
    const int answer = inJob(job, [&] { return answerToConflict(candidate, isSource); });
    if (answer == boxanswer::fourth && !isSource)
        return Output{candidate, true};
    if (answer == boxanswer::second) {
        const ProfileKind profile = context_.profiles.kindOf(job->order.profile);
        QString duplicate = candidate;
        for (int number = 1; QFileInfo::exists(duplicate); ++number)
            duplicate = duplicateName(profile, base, number, job->order.resolution);
        return Output{duplicate};
    }
    if (answer == boxanswer::first)
        inJob(job, [&] { context_.goOn(AfterJob::StopRun); });
    else if (answer == boxanswer::third)
        skipConflict(job, candidate);
    else
        outcomes_.failed(job, nullptr); // to replace would overwrite somebody's source
    return std::nullopt;
}

bool JobThread::isSourceOfARow(const JobPtr& job, const QString& path) {
    const QStringList sources = inJob(job, [&] {
        QStringList result;
        for (const JobRecordPtr& record : context_.files.fileInfoArr)
            result << record->text(key::srcpath);
        return result;
    });
    return std::any_of(sources.begin(), sources.end(),
                       [&](const QString& source) { return isSameFile(path, source); });
}

int JobThread::answerToConflict(const QString& candidate, bool isSource) {
    const SharedState& state = context_.state;
    const bool wouldReplaceSource = isSource && state.resultStoredForConflict == boxanswer::fourth;
    if (state.checkStatusForFileConflict && !wouldReplaceSource)
        return state.resultStoredForConflict;
    return context_.dialogs.popUpforReplaceSkipDuplicateCancel(candidate);
}

void JobThread::launch(const JobPtr& job, const QStringList& arguments) {
    inJob(job, [&] {
        setProcessing(*job->row.record);
        job->row.record->set(key::path, job->plan().output.path());
        context_.jobs.rowChanged(*job);
        context_.jobs.launched(*job, context_.processes.launch(context_.encoderPath, arguments));
    });
}

void JobThread::skipConflict(const JobPtr& job, const QString& candidate) {
    inJob(job, [&] {
        job->row.progress->setStatusString(QString());
        context_.files.dequeueHead(job->row.id);
        context_.jobs.rowChanged(*job);
        settleAndGoOn(job);
    });
    launchForNothing(job, candidate);
}

// Kept: when the next job has begun the encoder is launched once more without any argument.
void JobThread::launchForNothing(const JobPtr& job, const QString& candidate) {
    const auto task = context_.mainThread.onMainThread([&] {
        job->row.record->set(key::path, candidate);
        const auto launched = context_.processes.launch(context_.encoderPath, {});
        context_.jobs.addStray(launched);
        return launched;
    });
    QByteArray said;
    while (task->read(said) != ChildProcess::Read::Ended)
        said.clear();
    context_.mainThread.onMainThread([&] { context_.jobs.dropStray(task); });
}

void JobThread::settleAndGoOn(const JobPtr& job) {
    (void)context_.jobs.settle(job);
    context_.goOn(AfterJob::NextJob);
}
