#include "media/ProbeRunner.h"

#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "system/LauncherWords.h"

#include <utility>

namespace {

using Result = ProbeRunner::Result;

/// The launcher's own way of saying that there is no ffmpeg; both, because a movie has no say in
/// how a program ends.
bool isMissing(const ChildProcess& child, const QByteArray& firstWords) {
    const auto end = child.end();
    return end && end->how == ProcessEnd::How::Exited && end->code == missingEncoderStatus &&
           firstWords.startsWith(missingEncoderWords);
}

Result readToEnd(ChildProcess& child, const ProbeRunner::ChunkHandler& handler,
                 std::chrono::milliseconds patience, const ProbeRunner::Stop& stop) {
    // One that goes on speaking, as about a playlist with missing parts, has its limit too.
    const auto deadline = std::chrono::steady_clock::now() + 2 * patience;
    QByteArray firstWords;
    for (;;) {
        QByteArray chunk;
        if (stop.isAsked())
            return Result::Stopped;
        if (std::chrono::steady_clock::now() >= deadline) {
            child.kill();
            return Result::Silent;
        }
        switch (child.read(chunk, patience)) {
        case ChildProcess::Read::Data:
            if (firstWords.size() < qsizetype{sizeof missingEncoderWords})
                firstWords +=
                    chunk.first(qMin(chunk.size(), qsizetype{sizeof missingEncoderWords}));
            if (handler(chunk) == ProbeRunner::Answer::Interrupt)
                child.interrupt();
            break;
        case ChildProcess::Read::Ended:
            return isMissing(child, firstWords) ? Result::FailedToStart : Result::Ended;
        case ChildProcess::Read::TimedOut:
            child.kill();
            return Result::Silent;
        case ChildProcess::Read::Woken:
            break;
        }
    }
}

} // namespace

/// Lets a stop reach a child while it is being read.
class ProbeRunner::Stop::Watch final {
public:
    Watch(Stop& stop, const std::shared_ptr<ChildProcess>& child) : stop_(stop) {
        const std::lock_guard lock(stop_.mutex_);
        stop_.child_ = child;
        if (stop_.asked_)
            child->kill();
    }
    ~Watch() {
        const std::lock_guard lock(stop_.mutex_);
        stop_.child_.reset();
    }
    Q_DISABLE_COPY_MOVE(Watch)

private:
    Stop& stop_;
};

void ProbeRunner::Stop::ask() {
    const std::lock_guard lock(mutex_);
    if (std::exchange(asked_, true) || !child_)
        return;
    child_->kill();
    child_->wakeReader();
}

bool ProbeRunner::Stop::isAsked() const {
    const std::lock_guard lock(mutex_);
    return asked_;
}

ProbeRunner::ProbeRunner(ChildProcesses& processes, const QString& encoderPath)
    : processes_(processes), encoderPath_(encoderPath) {}

ProbeRunner::Result ProbeRunner::run(const QString& moviePath, const ChunkHandler& handler,
                                     Stop& stop) const {
    if (stop.isAsked())
        return Result::Stopped;
    const auto child = processes_.launch(encoderPath_, {QStringLiteral("-i"), moviePath});
    if (const auto end = child->end(); end && end->how == ProcessEnd::How::FailedToStart)
        return Result::FailedToStart;
    const Stop::Watch watch(stop, child);
    return readToEnd(*child, handler, patience_, stop);
}
