#include "media/Examination.h"

#include "media/ReportBlanking.h"
#include "media/ReportText.h"
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
    std::vector<RetryFindings> found;
    const auto result = runner.run(
        moviePath_,
        [&](const QByteArray& chunk) {
            found.push_back(reader.read(chunk));
            return found.back().interrupt ? ProbeRunner::Answer::Interrupt
                                          : ProbeRunner::Answer::ReadOn;
        },
        stop_);
    return {result, std::move(found)};
}
