#include "convert/EncoderMonitor.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "convert/EncoderMarkers.h"
#include "convert/EncoderOutcomes.h"
#include "convert/EncoderReader.h"
#include "convert/LiveJobs.h"
#include "convert/RowStates.h"
#include "convert/RunWatch.h"
#include "convert/Timecode.h"
#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"

void EncoderMonitor::follow(const JobPtr& job) {
    EncoderReader reader(context_, job);
    try {
        followToEnd(job, reader);
    } catch (const Cancelled&) {
        reader.readLastWords(context_.patience.end);
        throw;
    }
}

void EncoderMonitor::giveUp(const JobPtr& job) {
    EncoderReader reader(context_, job);
    reader.endEncoder();
    outcomes_.failed(job, &reader);
}

void EncoderMonitor::followToEnd(const JobPtr& job, EncoderReader& reader) {
    for (;;) {
        const EncoderReader::Event event = reader.next();
        if (event.kind == EncoderReader::Event::Kind::Ended) {
            outcomes_.conclude(job, reader);
            return;
        }
        if (event.kind == EncoderReader::Event::Kind::EndAsked) {
            outcomes_.endAsAsked(job, reader);
            return;
        }
        const Step step = handle(job, event.piece);
        if (step != Step::Go) {
            carryOut(step, job, reader);
            return;
        }
    }
}

// The guard of the handling: a piece that cannot be read interrupts the encoder, and its end is a
// failed conversion.
EncoderMonitor::Step EncoderMonitor::handle(const JobPtr& job, const EncoderPiece& piece) {
    try {
        const Step step = context_.mainThread.onMainThread([&] { return takePiece(job, piece); });
        if (step != Step::WaitASecond)
            return step;
        context_.workers.sleep(context_.second);
        return context_.mainThread.onMainThread([&] { return afterASecond(job, piece); });
    } catch (const std::exception& failure) {
        qCWarning(lcConvert, "a piece of the encoder's output could not be read: %s",
                  failure.what());
        context_.mainThread.onMainThread([&] { job->interrupt(); });
        return Step::AwaitEnd;
    }
}

void EncoderMonitor::carryOut(Step step, const JobPtr& job, EncoderReader& reader) {
    switch (step) {
    case Step::EndAsAsked:
        outcomes_.endAsAsked(job, reader);
        break;
    case Step::Failed:
        outcomes_.failed(job, &reader);
        break;
    case Step::WriteFailed:
        outcomes_.writeFailed(job, reader);
        break;
    case Step::AwaitEnd:
        if (!reader.awaitOwnEnd(context_.patience.end))
            reader.endEncoder();
        outcomes_.conclude(job, reader);
        break;
    case Step::Go:
    case Step::WaitASecond:
        Q_UNREACHABLE();
    }
}

EncoderMonitor::Step EncoderMonitor::takePiece(const JobPtr& job, const EncoderPiece& piece) {
    job->saw(piece);
    if (job->life().request() != EncoderLife::Request::None)
        return Step::EndAsAsked;
    if (piece.writeFailureAtEnd)
        return Step::WriteFailed;
    if (!piece.marks.hasPosition && !piece.marks.hasError && !piece.hasDamage)
        return Step::Go;
    return takePosition(job, piece.text);
}

EncoderMonitor::Step EncoderMonitor::takePosition(const JobPtr& job, const QString& text) {
    SharedState& state = context_.state;
    job->row.progress->changestat(status::STATCR);
    state.probe.duration = positionText(text);
    const double position = secondsOfTimecode(state.probe.duration);

    if (state.convertingIndex >= context_.files.rowCount())
        return Step::Go;
    if (state.convertingIndex.isNone()) {
        job->ask(EncoderLife::Request::Remove);
        return Step::EndAsAsked;
    }
    if (state.convertingIndex.isPauseRequested()) {
        pause(job);
        return Step::Go;
    }
    if (!state.convertingIndex.isRow())
        return Step::Go;
    context_.jobs.showPosition(*job, percentage(position, job->plan().length),
                               context_.watch.reached(job->row.id, position));
    return Step::WaitASecond;
}

EncoderMonitor::Step EncoderMonitor::afterASecond(const JobPtr& job, const EncoderPiece& piece) {
    if (job->life().request() != EncoderLife::Request::None)
        return Step::EndAsAsked;
    const EncoderMarkers& marks = piece.marks;
    // The damage may have been in a piece that a pause took up.
    if (marks.hasError || marks.hasInvalid || job->life().isDamageSeen())
        return Step::Failed;
    if (marks.hasWriteFailure)
        return Step::WriteFailed;
    if (marks.hasSummary)
        return Step::AwaitEnd;
    context_.jobs.showStep(*job);
    return Step::Go;
}

void EncoderMonitor::pause(const JobPtr& job) {
    job->row.progress->setStatusString(QString());
    if (!job->suspend()) {
        context_.jobs.rowChanged(*job);
        return;
    }
    context_.watch.paused();
    context_.state.convertingIndex.requestPause();
    setPaused(*job->row.record);
    context_.files.pause({job->task(), job->task()->readEnd(),
                          static_cast<int>(job->task()->processIdentifier()), job->row.pauseId});
    context_.jobs.rowChanged(*job);
}
