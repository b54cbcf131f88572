#include "convert/ConversionJob.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderCommand.h"
#include "convert/EncoderMonitor.h"
#include "convert/EncoderOutcomes.h"
#include "convert/EncoderReader.h"
#include "convert/FileTime.h"
#include "convert/PauseAndStop.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "convert/RunWindow.h"
#include "convert/Timecode.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "media/ProfileCatalogue.h"
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

ConversionJob::ConversionJob(ConversionContext& context, ConversionQueue& queue,
                             EncoderMonitor& monitor, EncoderOutcomes& outcomes,
                             PauseAndStop& pauseAndStop)
    : context_(context),
      queue_(queue),
      monitor_(monitor),
      outcomes_(outcomes),
      pauseAndStop_(pauseAndStop) {}

template <typename F> auto ConversionJob::inJob(const EncoderRunPtr& run, F&& f) {
    return context_.mainThread.onMainThread([&] {
        if (run->life.isSettled())
            throw Abandoned();
        return f();
    });
}

void ConversionJob::start(const EncoderRunPtr& run) {
    try {
        context_.workers.start([this, run, id = run->jobId] { work(run, id); });
    } catch (const std::system_error& failure) {
        qCWarning(lcConvert, "job %d found no thread: %s", run->jobId, failure.what());
        run->source = run->record->text(key::srcpath);
        // Not now: whoever began the job comes to its own end first.
        QTimer::singleShot(0, &context_.mainThread, [this, run] {
            runGuarded([&] { outcomes_.failedWithoutThread(run); });
        });
    }
}

void ConversionJob::work(const EncoderRunPtr& run, int jobId) {
    try {
        bgConvertWork(run);
    } catch (const Abandoned&) {
        qCDebug(lcConvert, "job %d was given up before its encoder was launched", jobId);
    } catch (const std::exception& failure) {
        qCWarning(lcConvert, "job %d could not be started: %s", jobId, failure.what());
        failBeforeReading(run);
    }
}

// An encoder that nobody reads must not be left to itself.
void ConversionJob::failBeforeReading(const EncoderRunPtr& run) {
    if (!run->task) {
        outcomes_.failed(run, nullptr);
        return;
    }
    EncoderReader reader(context_, run);
    reader.endEncoder();
    outcomes_.failed(run, &reader);
}

void ConversionJob::bgConvertWork(const EncoderRunPtr& run) {
    const Order order = inJob(run, [&] { return orderOf(*run->record); });
    run->source = order.source;
    if (dropWithoutDuration(run, order))
        return;
    run->total = secondsOfTimecode(order.duration);
    qCDebug(lcConvert, "Executable path: %s", qPrintable(context_.encoderPath));
    if (!sourceIsThere(run))
        return;
    run->sourceTime = modificationTime(run->source);
    const auto output = settleOutput(run, order);
    if (!output)
        return;
    const ProfileKind profile = context_.profiles.kindOf(order.profile);
    run->output = PartialOutput(output->path);
    run->note.write({context_.workers, context_.stateFolder, context_.second}, run->source,
                    run->output);
    launch(run, encoderArguments(profile, order.source, order.resolution, output->path,
                                 output->overwrite));
}

ConversionJob::Order ConversionJob::orderOf(const JobRecord& record) const {
    return {record.text(key::duration),         record.text(key::srcpath),
            record.text(key::profile),          record.text(key::resolution),
            context_.window.outputFolderText(), context_.state.probe.bitrate};
}

bool ConversionJob::dropWithoutDuration(const EncoderRunPtr& run, const Order& order) {
    if (order.duration != none)
        return false;
    inJob(run, [&] {
        // Kept: the mark goes to a fresh progress record, the row shows nothing of it.
        ProgressObject().changestat(status::STATFL);
        context_.files.dequeueHead(run->jobId);
        (void)queue_.settle(run);
        queue_.startConverting();
    });
    return true;
}

bool ConversionJob::sourceIsThere(const EncoderRunPtr& run) {
    if (QFileInfo::exists(run->source))
        return true;
    const int answer = inJob(run, [&] {
        setWaiting(*run->record);
        context_.rowChanged(*run);
        return context_.dialogs.askSourceUnavailable();
    });
    if (answer == boxanswer::first) {
        inJob(run, [&] {
            run->progress->setStatusString(QString());
            context_.files.dequeueHead(run->jobId);
            context_.rowChanged(*run);
        });
        context_.workers.sleep(context_.second);
    }
    inJob(run, [&] {
        (void)queue_.settle(run);
        queue_.startConverting();
    });
    return false;
}

std::optional<ConversionJob::Output> ConversionJob::settleOutput(const EncoderRunPtr& run,
                                                                 const Order& order) {
    const ProfileKind profile = context_.profiles.kindOf(order.profile);
    const QString base = outputBase(order.outputFolder, order.source);
    if (profile == ProfileKind::Normal)
        qCDebug(lcConvert, "bit rate %dk", static_cast<int>(leadingDecimal(order.bitrate)));
    const QString candidate = outputName(profile, base, order.resolution);
    if (!QFileInfo::exists(candidate))
        return Output{candidate};
    return settleConflict(run, order, base, candidate);
}

std::optional<ConversionJob::Output> ConversionJob::settleConflict(const EncoderRunPtr& run,
                                                                   const Order& order,
                                                                   const QString& base,
                                                                   const QString& candidate) {
    const bool isSource = isSourceOfARow(run, candidate);
    const int answer = inJob(run, [&] { return answerToConflict(candidate, isSource); });
    if (answer == boxanswer::fourth && !isSource)
        return Output{candidate, true};
    if (answer == boxanswer::second) {
        const ProfileKind profile = context_.profiles.kindOf(order.profile);
        QString duplicate = candidate;
        for (int number = 1; QFileInfo::exists(duplicate); ++number)
            duplicate = duplicateName(profile, base, number, order.resolution);
        return Output{duplicate};
    }
    if (answer == boxanswer::first)
        inJob(run, [&] { pauseAndStop_.stopConversion(); });
    else if (answer == boxanswer::third)
        skipConflict(run, candidate);
    else
        outcomes_.failed(run, nullptr); // to replace would overwrite somebody's source
    return std::nullopt;
}

bool ConversionJob::isSourceOfARow(const EncoderRunPtr& run, const QString& path) {
    const QStringList sources = inJob(run, [&] {
        QStringList result;
        for (const JobRecordPtr& record : context_.files.fileInfoArr)
            result << record->text(key::srcpath);
        return result;
    });
    return std::any_of(sources.begin(), sources.end(),
                       [&](const QString& source) { return isSameFile(path, source); });
}

int ConversionJob::answerToConflict(const QString& candidate, bool isSource) {
    const SharedState& state = context_.state;
    const bool wouldReplaceSource = isSource && state.resultStoredForConflict == boxanswer::fourth;
    if (state.checkStatusForFileConflict && !wouldReplaceSource)
        return state.resultStoredForConflict;
    return context_.dialogs.popUpforReplaceSkipDuplicateCancel(candidate);
}

void ConversionJob::launch(const EncoderRunPtr& run, const QStringList& arguments) {
    inJob(run, [&] {
        setProcessing(*run->record);
        run->record->set(key::path, run->output.path());
        context_.rowChanged(*run);
        startEncoder(run, arguments);
        run->life.launched();
        context_.watch.encoderLaunched(*run);
        monitor_.watch(run);
    });
}

// Kept: the next job begins, and then the encoder is launched once more without any argument, for
// nothing.
void ConversionJob::skipConflict(const EncoderRunPtr& run, const QString& candidate) {
    inJob(run, [&] {
        run->progress->setStatusString(QString());
        context_.files.dequeueHead(run->jobId);
        context_.rowChanged(*run);
        (void)queue_.settle(run);
        queue_.startConverting();
    });
    const auto trailing = std::make_shared<EncoderRun>();
    trailing->kind = EncoderRun::Kind::WithoutArguments;
    try {
        context_.mainThread.onMainThread([&] {
            run->record->set(key::path, candidate);
            startEncoder(trailing, {});
            context_.liveRuns.push_back(trailing);
            monitor_.watch(trailing);
        });
    } catch (const std::system_error&) {
        monitor_.discard(trailing); // no thread can be had, but this one has nothing else to do
    }
}

void ConversionJob::startEncoder(const EncoderRunPtr& run, const QStringList& arguments) {
    run->task = context_.processes.launch(context_.encoderPath, arguments);
    context_.runningTask = run->task;
    const int row = context_.state.convertingIndex;
    if (row >= 0 && row < static_cast<int>(context_.files.progressObjects.size()))
        run->progress = context_.files.progressObjects[static_cast<size_t>(row)];
    else
        qCDebug(lcConvert, "exception--> no progress record for row %d", row);
}
