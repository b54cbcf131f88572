#include "media/Examination.h"

#include "media/ProbeValues.h"
#include "media/ReportBlanking.h"
#include "media/ReportText.h"
#include "media/RetryProbeReader.h"
#include "platform/PlatformLog.h"

#include <stdexcept>
#include <type_traits>

namespace {

// Who waits for a look must not wait for ever because there was no memory for it.
template <typename Look> auto orNothing(Look look) -> std::invoke_result_t<Look&> {
    try {
        return look();
    } catch (const std::exception& failure) {
        qCWarning(lcPlatform, "the examination of a movie failed: %s", failure.what());
        return {};
    }
}

} // namespace

void Examination::run(const ProbeRunner& runner, const std::function<void()>& lookIsOver) {
    FirstLook first = orNothing([&] { return lookFirst(runner); });
    // Nobody waits a second time for one that does not answer.
    const bool again = twice_ && first.result != ProbeRunner::Result::Silent;
    {
        const std::lock_guard lock(mutex_);
        first_ = std::move(first);
    }
    lookIsOver();
    SecondLook second;
    if (again)
        second = orNothing([&] { return lookAgain(runner); });
    {
        const std::lock_guard lock(mutex_);
        second_ = std::move(second);
    }
    lookIsOver();
}

bool Examination::isFirstOver() const {
    const std::lock_guard lock(mutex_);
    return first_.has_value();
}

bool Examination::isSecondOver() const {
    const std::lock_guard lock(mutex_);
    return second_.has_value();
}

// Not written any more, once they are there.
const Examination::FirstLook& Examination::first() const {
    const std::lock_guard lock(mutex_);
    return first_.value();
}

const Examination::SecondLook& Examination::second() const {
    const std::lock_guard lock(mutex_);
    return second_.value();
}

Examination::FirstLook Examination::lookFirst(const ProbeRunner& runner) {
    ReportText report;
    const auto result = runner.run(
        moviePath_,
        [&](const QByteArray& chunk) {
            report.append(chunk);
            return ProbeRunner::Answer::ReadOn;
        },
        stop_);
    if (result != ProbeRunner::Result::Ended)
        return {result, QString()};
    return {result, blankReport(report.text(), {moviePath_})};
}

Examination::SecondLook Examination::lookAgain(const ProbeRunner& runner) {
    RetryProbeReader reader{QStringList{moviePath_}};
    ProbeValues passedOver; // set by whoever reads the chunks into the list
    std::vector<QByteArray> chunks;
    const auto result = runner.run(
        moviePath_,
        [&](const QByteArray& chunk) {
            chunks.push_back(chunk);
            return reader.read(chunk, passedOver).interrupt ? ProbeRunner::Answer::Interrupt
                                                            : ProbeRunner::Answer::ReadOn;
        },
        stop_);
    return {result, std::move(chunks)};
}
