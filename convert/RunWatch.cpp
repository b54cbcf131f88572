#include "convert/RunWatch.h"

#include "convert/TimeLeftText.h"
#include "convert/Timecode.h"
#include "filelist/FileList.h"

#include <QThread>

#include <algorithm>
#include <stdexcept>

namespace {

TimeLeft::Moment steadyNow() {
    return std::chrono::duration_cast<TimeLeft::Moment>(
        std::chrono::steady_clock::now().time_since_epoch());
}

/// Nothing where the report did not tell.
std::optional<double> lengthOf(const JobRecord& record) {
    if (record.text(key::duration) == QStringLiteral("None"))
        return 0; // dropped without an encoder
    try {
        const double seconds = secondsOfTimecode(record.text(key::duration));
        return seconds > 0 ? std::optional(seconds) : std::nullopt;
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

} // namespace

RunWatch::RunWatch(const FileList& files, QObject* parent)
    : QObject(parent), files_(files), clock_(steadyNow) {}

void RunWatch::runGoesOn() {
    Q_ASSERT(thread() == QThread::currentThread());
    if (phase_ == Phase::Idle) {
        queued_.clear();
        converted_.clear();
        time_ = {};
        waitingFor_ = {-1, 0};
        isSummaryDue_ = true;
        setPhase(Phase::Queued);
    }
    queued_.insert(files_.conversionTaskList.begin(), files_.conversionTaskList.end());
}

void RunWatch::jobBegins(int job) {
    queued_.insert(job);
    details_.erase(job);
    setPhase(Phase::Working);
}

void RunWatch::idsChanged(const std::unordered_map<int, int>& ids) {
    for (std::unordered_set<int>* const each : {&queued_, &converted_}) {
        std::unordered_set<int> changed;
        for (const int id : *each) {
            const auto found = ids.find(id);
            changed.insert(found != ids.end() ? found->second : id);
        }
        *each = std::move(changed);
    }
    std::unordered_map<int, QString> details;
    for (const auto& [id, text] : details_) {
        const auto found = ids.find(id);
        details.emplace(found != ids.end() ? found->second : id, text);
    }
    details_ = std::move(details);
    waitingFor_ = {-1, 0};
}

void RunWatch::encoderLaunched(int job, double length) {
    time_.movieBegins(clock_(), length);
    if (phase_ == Phase::Idle)
        return;
    const std::optional<double> waiting = waitingLength(job);
    Q_EMIT progressed(time_.share(waiting));
    Q_EMIT timeLeftChanged(timeLeftOfRunText(time_, waiting));
}

QString RunWatch::reached(int job, double position) {
    if (phase_ == Phase::Idle)
        return QString();
    time_.reached(clock_(), position);
    const std::optional<double> waiting = waitingLength(job);
    Q_EMIT progressed(time_.share(waiting));
    Q_EMIT timeLeftChanged(timeLeftOfRunText(time_, waiting));
    return timeLeftText(time_, waiting);
}

void RunWatch::paused() {
    time_.pause(clock_());
    if (phase_ == Phase::Working)
        setPhase(Phase::Paused);
}

void RunWatch::resumed() {
    time_.resume(clock_());
    if (phase_ == Phase::Paused)
        setPhase(Phase::Working);
}

void RunWatch::jobEnds() {
    time_.movieEnds();
}

void RunWatch::converted(int job, double length) {
    converted_.insert(job);
    time_.movieIsDone(length);
}

void RunWatch::failed(int job, const QString& details) {
    details_[job] = details;
}

QString RunWatch::detailsOf(int job) const {
    const auto found = details_.find(job);
    return found != details_.end() ? found->second : QString();
}

void RunWatch::summaryOpens() {
    runIsOver();
    if (std::exchange(isSummaryDue_, false) && !queued_.empty())
        Q_EMIT ended(outcome());
}

void RunWatch::runIsOver() {
    Q_ASSERT(thread() == QThread::currentThread());
    if (phase_ == Phase::Idle)
        return;
    setPhase(Phase::Idle);
    Q_EMIT over();
}

void RunWatch::setPhase(Phase phase) {
    const bool wasWorking = isWorking();
    phase_ = phase;
    if (isWorking() && !wasWorking)
        Q_EMIT workBegan();
    else if (wasWorking && !isWorking()) {
        Q_EMIT timeLeftChanged(QString());
        Q_EMIT workRests();
    }
}

RunWatch::Outcome RunWatch::outcome() const {
    Outcome result;
    result.converted = static_cast<int>(converted_.size());
    for (const int id : files_.idList)
        result.notConverted += queued_.contains(id) && !converted_.contains(id) ? 1 : 0;
    return result;
}

std::optional<double> RunWatch::waitingLength(int job) {
    const std::pair now{job, files_.conversionTaskList.size()};
    if (std::exchange(waitingFor_, now) == now)
        return waitingLength_;
    std::unordered_set<int> waiting(files_.conversionTaskList.begin(),
                                    files_.conversionTaskList.end());
    waiting.erase(job);
    double sum = 0;
    bool isKnown = true;
    // By the row: after rows were dragged a record's own id is not the job's.
    const size_t rows = std::min(files_.idList.size(), files_.fileInfoArr.size());
    for (size_t row = 0; row < rows; ++row) {
        if (!waiting.contains(files_.idList[row]))
            continue;
        const std::optional<double> length = lengthOf(*files_.fileInfoArr[row]);
        isKnown = isKnown && length;
        sum += length.value_or(0);
    }
    waitingLength_ = isKnown ? std::optional(sum) : std::nullopt;
    return waitingLength_;
}
