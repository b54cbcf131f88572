#include "convert/EncoderMonitor.h"

#include "convert/ConversionContext.h"
#include "convert/ConversionQueue.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderMarkers.h"
#include "convert/EncoderOutcomes.h"
#include "convert/EncoderReader.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "convert/Timecode.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"

EncoderMonitor::EncoderMonitor(ConversionContext& context, ConversionQueue& queue,
                               EncoderOutcomes& outcomes)
    : context_(context), queue_(queue), outcomes_(outcomes) {}

void EncoderMonitor::watch(const EncoderRunPtr& run) {
    context_.workers.start([this, run] {
        if (run->kind == EncoderRun::Kind::Job)
            follow(run);
        else
            discard(run);
    });
}

void EncoderMonitor::discard(const EncoderRunPtr& run) {
    QByteArray bytes;
    while (run->task->read(bytes) != ChildProcess::Read::Ended)
        bytes.clear();
    context_.mainThread.onMainThread([&] { (void)queue_.settle(run); });
}

void EncoderMonitor::follow(const EncoderRunPtr& run) {
    EncoderReader reader(context_, run);
    try {
        followToEnd(run, reader);
    } catch (const Cancelled&) {
        reader.readLastWords(context_.patience.end);
        throw;
    }
}

void EncoderMonitor::followToEnd(const EncoderRunPtr& run, EncoderReader& reader) {
    for (;;) {
        const EncoderReader::Event event = reader.next();
        if (event.kind == EncoderReader::Event::Kind::Ended) {
            outcomes_.conclude(run, reader);
            return;
        }
        if (event.kind == EncoderReader::Event::Kind::EndAsked) {
            outcomes_.endAsAsked(run, reader);
            return;
        }
        const Step step = handle(run, event.piece);
        if (step != Step::Go) {
            carryOut(step, run, reader);
            return;
        }
    }
}

// The guard of the handling: a piece that cannot be read interrupts the encoder, and its end is a
// failed conversion.
EncoderMonitor::Step EncoderMonitor::handle(const EncoderRunPtr& run, const EncoderPiece& piece) {
    try {
        const Step step = context_.mainThread.onMainThread([&] { return takePiece(run, piece); });
        if (step != Step::WaitASecond)
            return step;
        context_.workers.sleep(context_.second);
        return context_.mainThread.onMainThread([&] { return afterASecond(run, piece); });
    } catch (const std::exception& failure) {
        qCWarning(lcConvert, "a piece of the encoder's output could not be read: %s",
                  failure.what());
        if (run->task->interrupt())
            context_.mainThread.onMainThread([&] { run->life.toldToEnd(); });
        return Step::AwaitEnd;
    }
}

void EncoderMonitor::carryOut(Step step, const EncoderRunPtr& run, EncoderReader& reader) {
    switch (step) {
    case Step::EndAsAsked:
        outcomes_.endAsAsked(run, reader);
        break;
    case Step::Failed:
        outcomes_.failed(run, &reader);
        break;
    case Step::WriteFailed:
        outcomes_.writeFailed(run, reader);
        break;
    case Step::AwaitEnd:
        if (!reader.awaitOwnEnd(context_.patience.end))
            reader.endEncoder();
        outcomes_.conclude(run, reader);
        break;
    case Step::Go:
    case Step::WaitASecond:
        Q_UNREACHABLE();
    }
}

EncoderMonitor::Step EncoderMonitor::takePiece(const EncoderRunPtr& run,
                                               const EncoderPiece& piece) {
    run->life.saw(piece);
    if (run->life.request() != EncoderLife::Request::None)
        return Step::EndAsAsked;
    if (piece.writeFailureAtEnd)
        return Step::WriteFailed;
    if (!piece.marks.hasPosition && !piece.marks.hasError && !piece.hasDamage)
        return Step::Go;
    return takePosition(run, piece.text);
}

EncoderMonitor::Step EncoderMonitor::takePosition(const EncoderRunPtr& run, const QString& text) {
    SharedState& state = context_.state;
    run->progress->changestat(status::STATCR);
    state.probe.duration = positionText(text);
    const double position = secondsOfTimecode(state.probe.duration);
    run->percent = percentage(position, run->total);

    if (state.convertingIndex >= context_.files.rowCount())
        return Step::Go;
    if (state.convertingIndex == SharedState::noRow) {
        run->ask(EncoderLife::Request::Remove);
        return Step::EndAsAsked;
    }
    if (state.convertingIndex == SharedState::pauseRequested) {
        pause(run);
        return Step::Go;
    }
    if (state.convertingIndex < 0)
        return Step::Go;
    if (const auto row = context_.rowOf(*run))
        run->record = context_.files.recordAt(*row);
    run->record->set(key::progress, QString());
    run->record->set(key::progressValue, percentageText(run->percent));
    context_.watch.reached(*run, position);
    context_.rowChanged(*run);
    return Step::WaitASecond;
}

EncoderMonitor::Step EncoderMonitor::afterASecond(const EncoderRunPtr& run,
                                                  const EncoderPiece& piece) {
    if (run->life.request() != EncoderLife::Request::None)
        return Step::EndAsAsked;
    const EncoderMarkers& marks = piece.marks;
    // The damage may have been in a piece that a pause took up.
    if (marks.hasError || marks.hasInvalid || run->life.isDamageSeen())
        return Step::Failed;
    if (marks.hasWriteFailure)
        return Step::WriteFailed;
    if (marks.hasSummary)
        return Step::AwaitEnd;
    run->progress->incrementStep(run->percent);
    context_.rowChanged(*run);
    return Step::Go;
}

void EncoderMonitor::pause(const EncoderRunPtr& run) {
    run->progress->setStatusString(QString());
    if (!run->task->suspend()) {
        run->life.suspendDidFail();
        context_.rowChanged(*run);
        return;
    }
    run->suspended();
    context_.watch.paused();
    context_.state.convertingIndex = SharedState::pauseRequested;
    setPaused(*run->record);
    context_.files.pause({run->task, run->task->readEnd(),
                          static_cast<int>(run->task->processIdentifier()), context_.pauseRowId});
    context_.rowChanged(*run);
}
