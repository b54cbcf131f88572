#include "convert/NoteFile.h"

#include "convert/RunNote.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int mostNotes = 100;

/// The folder, if it is one of the user's own and no link; -1 otherwise.
int openFolder(const QString& folder) {
    const int descriptor = ::open(QFile::encodeName(folder).constData(),
                                  O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat facts {};
    if (descriptor < 0 || (::fstat(descriptor, &facts) == 0 && facts.st_uid == ::geteuid()))
        return descriptor;
    ::close(descriptor);
    errno = EPERM;
    return -1;
}

/// Also makes a new entry in the folder last.
bool makeLasting(int folder) {
    return ::fsync(folder) == 0;
}

bool isOfTheUser(const struct stat& facts) {
    return S_ISREG(facts.st_mode) && facts.st_uid == ::geteuid();
}

QByteArray newName() {
    return "run-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + ".note";
}

} // namespace

NoteFile::NoteFile(int folder, int descriptor, QByteArray name)
    : folder_(folder), descriptor_(descriptor), name_(std::move(name)) {}

NoteFile::~NoteFile() {
    ::close(descriptor_);
    ::close(folder_);
}

QString NoteFile::stateFolder() {
    QString base = qEnvironmentVariable("XDG_STATE_HOME");
    const QString home = qEnvironmentVariable("HOME");
    if (!QDir::isAbsolutePath(base))
        base = QDir::isAbsolutePath(home) ? home + QStringLiteral("/.local/state") : QString();
    return base.isEmpty() ? base : base + QStringLiteral("/reelshift");
}

std::unique_ptr<NoteFile> NoteFile::create(const QString& folder) {
    const QString above = QFileInfo(folder).path();
    QDir().mkpath(above);
    if (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0) {
        const int parent = ::open(QFile::encodeName(above).constData(), O_RDONLY | O_CLOEXEC);
        makeLasting(parent);
        ::close(parent);
    }
    const int place = openFolder(folder);
    if (place < 0)
        return nullptr;
    const QByteArray name = newName();
    const int descriptor =
        ::openat(place, name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                 S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        const int reason = errno;
        ::close(place);
        errno = reason;
        return nullptr;
    }
    std::unique_ptr<NoteFile> file(new NoteFile(place, descriptor, name));
    // Another program that starts at this very moment may have found an empty file.
    if (!file->claim() || !makeLasting(place)) {
        file->remove();
        return nullptr;
    }
    return file;
}

std::vector<std::unique_ptr<NoteFile>> NoteFile::openAll(const QString& folder) {
    std::vector<std::unique_ptr<NoteFile>> result;
    const int place = folder.isEmpty() ? -1 : openFolder(folder);
    if (place < 0)
        return result;
    QDirIterator entries(folder, {QStringLiteral("run-*.note")},
                         QDir::Files | QDir::System | QDir::Hidden);
    while (entries.hasNext() && result.size() < mostNotes) {
        entries.next();
        const QByteArray name = QFile::encodeName(entries.fileName());
        struct stat facts {};
        if (::fstatat(place, name.constData(), &facts, AT_SYMLINK_NOFOLLOW) != 0 ||
            !isOfTheUser(facts))
            continue;
        // To look again: whoever opens a pipe may wait for ever.
        const int descriptor = ::openat(place, name.constData(),
                                        O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor < 0)
            continue;
        std::unique_ptr<NoteFile> file(
            new NoteFile(::fcntl(place, F_DUPFD_CLOEXEC, 0), descriptor, name));
        if (::fstat(descriptor, &facts) == 0 && isOfTheUser(facts))
            result.push_back(std::move(file));
    }
    ::close(place);
    return result;
}

bool NoteFile::claim() {
    struct stat facts {};
    return ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor_, &facts) == 0 &&
           facts.st_nlink > 0;
}

QByteArray NoteFile::read() const {
    QByteArray text(RunNote::longestText + 1, '\0');
    const ssize_t got = ::pread(descriptor_, text.data(), static_cast<size_t>(text.size()), 0);
    if (got < 0 || got > RunNote::longestText)
        return {};
    text.truncate(got);
    return text;
}

qint64 NoteFile::lastAlive() const {
    struct stat facts {};
    return ::fstat(descriptor_, &facts) == 0 ? facts.st_mtim.tv_sec : 0;
}

bool NoteFile::add(const QByteArray& text) {
    const ssize_t written =
        ::write(descriptor_, text.constData(), static_cast<size_t>(text.size()));
    return written == text.size() && ::fsync(descriptor_) == 0;
}

void NoteFile::markAlive() {
    // By this computer's clock, on a share too.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const timespec times[] = {{0, UTIME_OMIT}, now};
    ::futimens(descriptor_, times);
    ::fsync(descriptor_);
}

void NoteFile::remove() {
    ::unlinkat(folder_, name_.constData(), 0);
}
