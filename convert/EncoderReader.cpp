#include "convert/EncoderReader.h"

#include "convert/ConversionContext.h"
#include "convert/ConvertLog.h"
#include "platform/MainThread.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

using Clock = JobNews::Clock;

constexpr auto longestRest = 100ms;

std::chrono::milliseconds timeUntil(Clock::time_point moment) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now());
    return std::max<std::chrono::milliseconds>(left, 0ms);
}

} // namespace

EncoderReader::EncoderReader(const ConversionContext& context, const JobPtr& job)
    : mainThread_(context.mainThread),
      job_(job),
      second_(context.second),
      obedience_(context.patience.obedience),
      cutter_({job->order.source, job->plan().output.path()}) {}

EncoderReader::Event EncoderReader::next() {
    for (;;) {
        if (!job_->news.waitWhileSuspended())
            throw Cancelled();
        if (auto piece = cut(isRestDue())) {
            restSince_.reset();
            return {Event::Kind::Piece, *piece};
        }
        QByteArray bytes;
        const auto result = job_->task()->read(bytes, limitOfRead());
        take(bytes);
        const auto asked = job_->news.endAskedAt();
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
    for (const QString& remark : remarks_.add(bytes)) {
        heard_ += onOneLine(remark);
        qCDebug(lcConvert, "job %d: %s", job_->order.id, qPrintable(heard_.last()));
    }
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
        job_->news.noteSaid(*piece);
    return piece;
}

std::optional<std::chrono::milliseconds> EncoderReader::limitOfRead() const {
    std::optional<std::chrono::milliseconds> limit;
    if (const auto asked = job_->news.endAskedAt())
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
        const auto asked = job_->news.endAskedAt();
        return asked ? std::min<Clock::time_point>(deadline, *asked + second_) : deadline;
    });
}

bool EncoderReader::readToEnd(const Deadline& deadline) {
    for (;;) {
        QByteArray bytes;
        const auto result = job_->task()->read(bytes, timeUntil(deadline()));
        take(bytes);
        const bool ended = result == ChildProcess::Read::Ended;
        if (auto piece = ended ? cutAtEnd() : cut(false)) {
            mainThread_.onMainThread([&] { job_->saw(*piece); });
        } else if (ended) {
            noteEnd();
            return true;
        }
        // One that never stops talking must not be listened to for ever; what an ended one has
        // said is read to its last word.
        if (timeUntil(deadline()) == 0ms && !job_->task()->end())
            return false;
    }
}

bool EncoderReader::tellToEnd() {
    return mainThread_.onMainThread([this] { return job_->tellToEnd(); });
}

void EncoderReader::awaitObedience() {
    if (awaitEnd(obedience_))
        return;
    mainThread_.onMainThread([this] { job_->kill(); });
    // A process that hangs in the kernel cannot be helped: it is left behind.
    awaitEnd(obedience_);
}

void EncoderReader::readLastWords(std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    for (;;) {
        QByteArray bytes;
        const auto result = job_->task()->read(bytes, timeUntil(deadline));
        take(bytes);
        const bool ended = result == ChildProcess::Read::Ended;
        while (ended ? cutAtEnd() : cut(false)) {
        }
        if (ended)
            job_->news.noteLastWord();
        if (ended || timeUntil(deadline) == 0ms)
            return;
    }
}

void EncoderReader::noteEnd() {
    job_->news.noteLastWord();
    const auto end = job_->task()->end();
    if (!end)
        return;
    const bool hasOutput = job_->plan().output.judge();
    mainThread_.onMainThread([&] { job_->ended(*end, hasOutput); });
}
