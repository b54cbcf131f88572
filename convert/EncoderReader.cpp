#include "convert/EncoderReader.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "platform/MainThread.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

using Clock = ReaderSignals::Clock;

constexpr auto longestRest = 100ms;

std::chrono::milliseconds timeUntil(Clock::time_point moment) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now());
    return std::max<std::chrono::milliseconds>(left, 0ms);
}

} // namespace

EncoderReader::EncoderReader(const ConversionContext& context, const EncoderRunPtr& run)
    : mainThread_(context.mainThread),
      run_(run),
      second_(context.second),
      obedience_(context.patience.obedience),
      cutter_({run->source, run->output.path()}) {}

EncoderReader::Event EncoderReader::next() {
    for (;;) {
        if (!run_->reader.waitWhileSuspended())
            throw Cancelled();
        if (auto piece = cut(isRestDue())) {
            restSince_.reset();
            return {Event::Kind::Piece, *piece};
        }
        QByteArray bytes;
        const auto result = run_->task->read(bytes, limitOfRead());
        take(bytes);
        const auto asked = run_->reader.endAskedAt();
        if (result == ChildProcess::Read::Ended) {
            if (auto piece = cutAtEnd())
                return {Event::Kind::Piece, *piece};
            noteEnd();
            return {Event::Kind::Ended};
        }
        if (result == ChildProcess::Read::TimedOut && asked && timeUntil(*asked + second_) == 0ms)
            return {Event::Kind::EndAsked};
    }
}

void EncoderReader::take(const QByteArray& bytes) {
    cutter_.add(bytes);
    lastWords_.add(bytes);
    for (const QString& remark : remarks_.add(bytes))
        qCDebug(lcConvert, "job %d: %s", run_->jobId, qPrintable(onOneLine(remark)));
}

bool EncoderReader::isRestDue() {
    if (!cutter_.hasRest())
        restSince_.reset();
    else if (!restSince_)
        restSince_ = Clock::now();
    return restSince_ && timeUntil(*restSince_ + longestRest) == 0ms;
}

std::optional<EncoderPiece> EncoderReader::cut(bool flush) {
    return noted(cutter_.next(flush));
}

std::optional<EncoderPiece> EncoderReader::cutAtEnd() {
    auto piece = cutter_.next(true);
    return noted(piece ? std::move(piece) : cutter_.last());
}

std::optional<EncoderPiece> EncoderReader::noted(std::optional<EncoderPiece> piece) {
    if (piece)
        run_->words.note(*piece);
    return piece;
}

std::optional<std::chrono::milliseconds> EncoderReader::limitOfRead() const {
    std::optional<std::chrono::milliseconds> limit;
    if (const auto asked = run_->reader.endAskedAt())
        limit = timeUntil(*asked + second_);
    if (restSince_) {
        const auto untilDue = timeUntil(*restSince_ + longestRest);
        limit = std::min<std::chrono::milliseconds>(limit.value_or(untilDue), untilDue);
    }
    return limit;
}

bool EncoderReader::awaitEnd(std::chrono::milliseconds limit) {
    return readToEnd([deadline = Clock::now() + limit] { return deadline; });
}

bool EncoderReader::awaitOwnEnd(std::chrono::milliseconds limit) {
    return readToEnd([this, deadline = Clock::now() + limit] {
        const auto asked = run_->reader.endAskedAt();
        return asked ? std::min<Clock::time_point>(deadline, *asked + second_) : deadline;
    });
}

bool EncoderReader::readToEnd(const Deadline& deadline) {
    for (;;) {
        QByteArray bytes;
        const auto result = run_->task->read(bytes, timeUntil(deadline()));
        take(bytes);
        const bool ended = result == ChildProcess::Read::Ended;
        if (auto piece = ended ? cutAtEnd() : cut(false)) {
            mainThread_.onMainThread([&] { run_->life.saw(*piece); });
        } else if (ended) {
            noteEnd();
            return true;
        }
        // One that never stops talking must not be listened to for ever; what an ended one has
        // said is read to its last word.
        if (timeUntil(deadline()) == 0ms && !run_->task->end())
            return false;
    }
}

bool EncoderReader::tellToEnd() {
    const bool lives = send(&ChildProcess::terminate);
    // A stopped process cannot obey.
    run_->task->resume();
    return lives;
}

void EncoderReader::awaitObedience() {
    if (awaitEnd(obedience_))
        return;
    send(&ChildProcess::kill);
    // A process that hangs in the kernel cannot be helped: it is left behind.
    awaitEnd(obedience_);
}

bool EncoderReader::send(bool (ChildProcess::*signal)()) {
    const bool sent = (run_->task.get()->*signal)();
    if (sent)
        mainThread_.onMainThread([this] { run_->life.toldToEnd(); });
    return sent;
}

void EncoderReader::readLastWords(std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    for (;;) {
        QByteArray bytes;
        const auto result = run_->task->read(bytes, timeUntil(deadline));
        take(bytes);
        const bool ended = result == ChildProcess::Read::Ended;
        while (ended ? cutAtEnd() : cut(false)) {
        }
        if (ended)
            run_->words.noteLastWord();
        if (ended || timeUntil(deadline) == 0ms)
            return;
    }
}

void EncoderReader::noteEnd() {
    run_->words.noteLastWord();
    const auto end = run_->task->end();
    if (!end)
        return;
    const bool hasOutput = run_->output.judge();
    mainThread_.onMainThread([&] { run_->life.ended(*end, hasOutput); });
}
