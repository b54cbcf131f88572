#include "media/ProbeRunner.h"

#include "launcher/Words.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"

#include <QScopeGuard>

#include <semaphore>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto longestGoodbye = 500ms;

using Result = ProbeRunner::Result;

/// The launcher's own way of saying that there is no ffmpeg; both, because a movie has no say in
/// how a program ends.
bool isMissing(const ChildProcess& child, const QByteArray& firstWords) {
    const auto end = child.end();
    return end && end->how == ProcessEnd::How::Exited && end->code == missingEncoderStatus &&
           firstWords.startsWith(missingEncoderWords);
}

Result readToEnd(ChildProcess& child, const ProbeRunner::ChunkHandler& handler,
                 std::chrono::milliseconds patience) {
    // One that goes on speaking, as about a playlist with missing parts, has its limit too.
    const auto deadline = std::chrono::steady_clock::now() + 2 * patience;
    QByteArray firstWords;
    for (;;) {
        QByteArray chunk;
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

ProbeRunner::ProbeRunner(MainThread& mainThread, ChildProcesses& processes,
                         const QString& encoderPath)
    : mainThread_(mainThread), processes_(processes), encoderPath_(encoderPath) {}

ProbeRunner::Result ProbeRunner::run(const QString& moviePath, ChunkHandler handler) {
    const auto child = processes_.launch(encoderPath_, {QStringLiteral("-i"), moviePath});
    if (const auto end = child->end(); end && end->how == ProcessEnd::How::FailedToStart)
        return Result::FailedToStart;
    const auto readerGone = std::make_shared<std::binary_semaphore>(0);
    try {
        return mainThread_.waitForResult(
            [child, handler = std::move(handler), patience = patience_, readerGone] {
                const auto leave = qScopeGuard([&] { readerGone->release(); });
                return readToEnd(*child, handler, patience);
            });
    } catch (const Cancelled&) {
        // The reader may be about to signal the child, which others own.
        child->kill();
        [[maybe_unused]] const bool gone = readerGone->try_acquire_for(longestGoodbye);
        throw;
    }
}
