#include "convert/Leftover.h"

#include "convert/MovieForm.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Clocks of file systems are coarse, some by two seconds.
constexpr qint64 coarseness = 2;
// What an encoder wrote at its end may reach a share a little later.
constexpr qint64 longestWriting = 60 + std::chrono::seconds(aliveInterval).count();

/// Whether both are one file. Device numbers change from one session of the computer to the next.
bool isSame(const RunNote::File& one, const RunNote::File& other, bool sameBoot) {
    return one.inode == other.inode && (!sameBoot || one.device == other.device);
}

bool isUntouched(const RunNote::File& before, const RunNote::File& now) {
    return before.inode == now.inode && before.size == now.size && before.seconds == now.seconds &&
           before.nanoseconds == now.nanoseconds;
}

bool isSource(const RunNote& note, const RunNote::File& now, bool sameBoot) {
    if (note.output == note.source || isSame(note.sourceFile, now, sameBoot))
        return true;
    struct stat source {};
    return ::stat(note.source.constData(), &source) == 0 && isSame(noted(source), now, true);
}

bool isInUse(const RunNote& note, const RunNote::File& now, const std::vector<RunNote>& underWay) {
    return std::any_of(underWay.begin(), underWay.end(), [&](const RunNote& other) {
        return other.output == note.output || (other.made && isSame(*other.made, now, true)) ||
               isSame(other.sourceFile, now, true);
    });
}

// "Not changed since" means: it is the file that the encoder was seen to make (where the program
// lived to see it), and its content was last changed between the launch and the time at which the
// program, and with it the encoder, was last known to live. What its name, owner or rights are
// does not count. One who writes into it within that last minute is not told from the encoder,
// unless they make a whole movie of it, or nothing like one.
bool isChanged(const RunNote& note, const RunNote::File& now, const Circumstances& circumstances) {
    if (now.seconds > circumstances.lastAlive + longestWriting)
        return true;
    return note.made ? !isSame(*note.made, now, note.boot == circumstances.boot)
                     : now.seconds < note.launched - coarseness;
}

Leftover withoutFile(const QByteArray& path) {
    if (errno != ENOENT)
        return Leftover::OutOfReach;
    const QByteArray folder = path.left(std::max<qsizetype>(path.lastIndexOf('/'), 1));
    return ::access(folder.constData(), F_OK) == 0 ? Leftover::Nothing : Leftover::OutOfReach;
}

} // namespace

Leftover leftover(const RunNote& note, const Circumstances& now) {
    struct stat facts {};
    if (::lstat(note.output.constData(), &facts) != 0)
        return withoutFile(note.output);
    if (!S_ISREG(facts.st_mode))
        return Leftover::NoFile;
    // Not to wait for a pipe that has come since.
    const int descriptor =
        ::open(note.output.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return Leftover::OutOfReach;
    const auto close = qScopeGuard([descriptor] { ::close(descriptor); });
    if (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode))
        return Leftover::NoFile;
    const RunNote::File file = noted(facts);
    if (isSource(note, file, note.boot == now.boot))
        return Leftover::Source;
    if (isInUse(note, file, now.underWay))
        return Leftover::InUse;
    if (note.before && isUntouched(*note.before, file))
        return Leftover::Older;
    if (isChanged(note, file, now))
        return Leftover::Changed;
    switch (movieForm(descriptor, file.size)) {
    case MovieForm::Begun:
        return Leftover::HalfMovie;
    case MovieForm::Whole:
        return Leftover::Whole;
    case MovieForm::Other:
        break;
    }
    return Leftover::Changed;
}

const char* nameOf(Leftover found) {
    switch (found) {
    case Leftover::HalfMovie:
        return "half a movie";
    case Leftover::Nothing:
        return "nothing";
    case Leftover::OutOfReach:
        return "out of reach";
    case Leftover::NoFile:
        return "no file";
    case Leftover::Source:
        return "the movie itself";
    case Leftover::Older:
        return "what stood there before";
    case Leftover::Changed:
        return "changed since";
    case Leftover::Whole:
        return "a whole movie";
    case Leftover::InUse:
        return "being written again";
    }
    Q_UNREACHABLE();
}

QByteArray bootId() {
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? file.read(64).trimmed() : QByteArray();
}
