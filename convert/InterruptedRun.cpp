#include "convert/InterruptedRun.h"

#include "convert/ConvertLog.h"
#include "convert/LastWords.h"
#include "convert/NoteFile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <ctime>
#include <utility>

namespace {

// A disk that has not come back by then is not waited for.
constexpr qint64 longestKept = 90LL * 24 * 60 * 60;

void logFound(const RunNote& note, Leftover found) {
    qCInfo(lcConvert).noquote() << onOneLine(QFile::decodeName(note.output)) %
                                       u": its conversion was interrupted, what is there now: " %
                                       QLatin1StringView(nameOf(found));
}

bool mayComeBack(const RunNote& note, Leftover found) {
    return found == Leftover::OutOfReach && std::time(nullptr) < note.launched + longestKept;
}

// Qt 6.4 takes the working directory for the trash where the one of the home cannot be made.
bool canHaveTrash() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString trash = data + QStringLiteral("/Trash");
    if (!QDir::isAbsolutePath(trash) || !QDir().mkpath(data))
        return false;
    ::mkdir(QFile::encodeName(trash).constData(), S_IRWXU);
    return QDir().mkpath(trash + QStringLiteral("/files")) &&
           QDir().mkpath(trash + QStringLiteral("/info"));
}

} // namespace

InterruptedRun::InterruptedRun(QString stateFolder, std::unique_ptr<NoteFile> file, RunNote note,
                               Circumstances circumstances)
    : stateFolder_(std::move(stateFolder)),
      file_(std::move(file)),
      note_(std::move(note)),
      circumstances_(std::move(circumstances)) {}

InterruptedRun::~InterruptedRun() = default;

InterruptedRun::Found InterruptedRun::findAll(const QString& stateFolder) {
    Circumstances now{bootId(), 0, {}};
    std::vector<std::pair<std::unique_ptr<NoteFile>, RunNote>> left;
    for (std::unique_ptr<NoteFile>& file : NoteFile::openAll(stateFolder)) {
        const bool isLeft = file->claim();
        auto note = RunNote::fromText(file->read());
        if (!isLeft && note)
            now.underWay.push_back(*note);
        else if (isLeft && note)
            left.emplace_back(std::move(file), std::move(*note));
        else if (isLeft)
            file->remove(); // its program died before it had an encoder
    }
    Found result;
    for (auto& [file, note] : left) {
        now.lastAlive = file->lastAlive();
        const Leftover found = leftover(note, now);
        logFound(note, found);
        const bool isKnown =
            std::any_of(result.begin(), result.end(), [&, &output = note.output](const auto& each) {
                return each->note_.output == output;
            });
        if (found == Leftover::HalfMovie && !isKnown)
            result.emplace_back(
                new InterruptedRun(stateFolder, std::move(file), std::move(note), now));
        else if (!mayComeBack(note, found))
            file->remove();
    }
    return result;
}

QString InterruptedRun::output() const {
    return QFile::decodeName(note_.output);
}

bool InterruptedRun::moveToTrash() {
    // The question may have been open for long.
    circumstances_.underWay.clear();
    for (const std::unique_ptr<NoteFile>& file : NoteFile::openAll(stateFolder_)) {
        const bool isLeft = file->claim();
        const auto note = RunNote::fromText(file->read());
        if (!isLeft && note && *note != note_)
            circumstances_.underWay.push_back(*note);
    }
    const Leftover found = leftover(note_, circumstances_);
    const bool isGone = found == Leftover::HalfMovie
                            ? canHaveTrash() && QFile::moveToTrash(output())
                            : found == Leftover::Nothing;
    if (!isGone)
        logFound(note_, found);
    forget();
    return isGone;
}

void InterruptedRun::forget() {
    file_->remove();
}
