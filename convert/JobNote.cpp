#include "convert/JobNote.h"

#include "convert/ConvertLog.h"
#include "convert/Leftover.h"
#include "convert/NoteFile.h"
#include "convert/RunNote.h"
#include "platform/WorkerThreads.h"

#include <QFile>
#include <QFileInfo>

#include <condition_variable>
#include <ctime>
#include <mutex>
#include <system_error>

using namespace std::chrono_literals;

namespace {

constexpr auto longestWrite = 2s;

QByteArray encodedPath(const QString& path) {
    return QFile::encodeName(QFileInfo(path).absoluteFilePath());
}

RunNote noteOf(const QString& source, const PartialOutput& output) {
    RunNote note;
    note.boot = bootId();
    note.launched = std::time(nullptr);
    note.output = encodedPath(output.path());
    note.source = encodedPath(source);
    struct stat facts {};
    if (::stat(note.source.constData(), &facts) == 0)
        note.sourceFile = noted(facts);
    if (const auto before = output.before())
        note.before = noted(*before);
    return note;
}

} // namespace

enum class JobNote::End { None, Drop, Leave };

struct JobNote::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool isTried = false;
    End end = End::None;
    std::optional<RunNote::File> made;

    void setEnd(End how) {
        const std::lock_guard lock(mutex);
        if (end == End::None)
            end = how;
        changed.notify_all();
    }
};

JobNote::JobNote() : shared_(std::make_shared<Shared>()) {}

void JobNote::write(const Place& place, const QString& source, const PartialOutput& output) {
    if (place.folder.isEmpty())
        return;
    const QByteArray text = noteOf(source, output).text();
    const auto begin = [&](const auto& work) {
        try {
            place.workers.start(work);
            return true;
        } catch (const std::system_error& failure) {
            qCWarning(lcConvert, "no thread for the note of a job: %s", failure.what());
            return false;
        }
    };
    if (!begin([shared = shared_, folder = place.folder, text] { keep(shared, folder, text); }))
        return;
    begin([shared = shared_, output, second = place.second] {
        lookForOutput(shared, output, second);
    });
    std::unique_lock lock(shared_->mutex);
    if (!shared_->changed.wait_for(
            lock, longestWrite, [this] { return shared_->isTried || shared_->end != End::None; }))
        qCWarning(lcConvert, "the note of a job could not be written in time");
}

void JobNote::drop() {
    shared_->setEnd(End::Drop);
}

void JobNote::leave() {
    shared_->setEnd(End::Leave);
}

void JobNote::keep(const std::shared_ptr<Shared>& shared, const QString& folder,
                   const QByteArray& text) {
    std::unique_ptr<NoteFile> file = NoteFile::create(folder);
    if (!file || !file->add(text)) {
        qCWarning(lcConvert, "the note of a job could not be written in %s: %s", qPrintable(folder),
                  qPrintable(qt_error_string()));
        if (file)
            file->remove();
        file.reset();
    }
    std::unique_lock lock(shared->mutex);
    shared->isTried = true;
    shared->changed.notify_all();
    if (!file)
        return;
    bool isMadeWritten = false;
    const auto hasMore = [&] { return shared->made && !isMadeWritten; };
    for (;;) {
        shared->changed.wait_for(lock, aliveInterval,
                                 [&] { return shared->end != End::None || hasMore(); });
        if (shared->end != End::None)
            break;
        const auto made = hasMore() ? shared->made : std::nullopt;
        isMadeWritten = isMadeWritten || made;
        lock.unlock(); // the folder may not answer
        if (made)
            file->add(RunNote::madeText(*made));
        else
            file->markAlive();
        lock.lock();
    }
    const bool goes = shared->end == End::Drop;
    lock.unlock();
    if (goes)
        file->remove();
}

void JobNote::lookForOutput(const std::shared_ptr<Shared>& shared, const PartialOutput& output,
                            std::chrono::milliseconds second) {
    std::unique_lock lock(shared->mutex);
    while (!shared->changed.wait_for(lock, second, [&] { return shared->end != End::None; })) {
        lock.unlock();
        const auto made = output.madeByNow();
        lock.lock();
        if (!made)
            continue;
        shared->made = noted(*made);
        shared->changed.notify_all();
        return;
    }
}
