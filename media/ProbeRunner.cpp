#include "media/ProbeRunner.h"

#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"

#include <QScopeGuard>

#include <semaphore>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto longestGoodbye = 500ms;

bool readToEnd(ChildProcess& child, const ProbeRunner::ChunkHandler& handler,
               std::chrono::milliseconds patience) {
    // One that goes on speaking, as about a playlist with missing parts, has its limit too.
    const auto deadline = std::chrono::steady_clock::now() + 2 * patience;
    for (;;) {
        QByteArray chunk;
        if (std::chrono::steady_clock::now() >= deadline) {
            child.kill();
            return false;
        }
        switch (child.read(chunk, patience)) {
        case ChildProcess::Read::Data:
            if (handler(chunk) == ProbeRunner::Answer::Interrupt)
                child.interrupt();
            break;
        case ChildProcess::Read::Ended:
            return true;
        case ChildProcess::Read::TimedOut:
            child.kill();
            return false;
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
        const bool spoke = mainThread_.waitForResult(
            [child, handler = std::move(handler), patience = patience_, readerGone] {
                const auto leave = qScopeGuard([&] { readerGone->release(); });
                return readToEnd(*child, handler, patience);
            });
        return spoke ? Result::Ended : Result::Silent;
    } catch (const Cancelled&) {
        // The reader may be about to signal the child, which others own.
        child->kill();
        [[maybe_unused]] const bool gone = readerGone->try_acquire_for(longestGoodbye);
        throw;
    }
}
