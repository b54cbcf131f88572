#include "update/PartFile.h"

#include "platform/LocalizedStrings.h"
#include "update/SafeFileName.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int highestNumber = 9999;

[[noreturn]] void fail() {
    throw PartFile::Error{qt_error_string(errno)};
}

/// Whether errno says that the file system cannot do it, not that it may not be done.
bool isUnknownHere() {
    constexpr std::array unknown{EINVAL, ENOSYS, EOPNOTSUPP, EPERM, EMLINK};
    return std::ranges::find(unknown, errno) != unknown.end();
}

/// Takes the name first, where a file system knows neither of the other ways.
bool moveOntoNewFile(const char* from, const char* to) {
    const int taken = ::open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (taken < 0)
        return false;
    ::close(taken);
    if (std::rename(from, to) == 0)
        return true;
    const int reason = errno;
    ::unlink(to);
    errno = reason;
    return false;
}

/// False with EEXIST where something has that name.
bool moveWithoutReplacing(const char* from, const char* to) {
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return true;
    if (!isUnknownHere())
        return false;
    if (::link(from, to) == 0) {
        ::unlink(from);
        return true;
    }
    return isUnknownHere() && moveOntoNewFile(from, to);
}

} // namespace

void PartFile::create(const QString& folder) {
    const QDir place(folder);
    if (!place.exists() && !place.mkpath(QStringLiteral(".")))
        throw Error{getLocalString("IDS_TXT_UPDATE_NO_DOWNLOADS")};
    // A name of its own: the final one may be as long as a name can be. Opened as a new file, it
    // gets the user's default permissions, never the right to run.
    file_.setFileName(place.absoluteFilePath(QStringLiteral(".reelshift-update-") %
                                             QUuid::createUuid().toString(QUuid::Id128) %
                                             QStringLiteral(".part")));
    if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        const QString reason = file_.errorString();
        file_.setFileName(QString());
        throw Error{reason};
    }
}

void PartFile::write(const QByteArray& piece) {
    // A disk that fills up takes a part first and gives its reason with the next one.
    for (qsizetype written = 0; written < piece.size();) {
        const qint64 part = file_.write(piece.constData() + written, piece.size() - written);
        if (part <= 0)
            throw Error{file_.errorString()};
        written += part;
    }
}

void PartFile::finish() {
    // Some file systems report a full disk only here.
    if (::fsync(file_.handle()) != 0 && errno != EINVAL && errno != ENOSYS)
        fail();
    file_.close();
}

QString PartFile::moveTo(const QString& path) {
    const QFileInfo wanted(path);
    const QByteArray from = QFile::encodeName(file_.fileName());
    for (int number = 0; number <= highestNumber; ++number) {
        const QString name =
            number == 0 ? wanted.fileName() : numberedFileName(wanted.fileName(), number);
        const QString to = wanted.absoluteDir().absoluteFilePath(name);
        if (moveWithoutReplacing(from.constData(), QFile::encodeName(to).constData())) {
            file_.setFileName(QString());
            return to;
        }
        if (errno != EEXIST)
            fail();
    }
    fail();
}

void PartFile::remove() {
    if (file_.fileName().isEmpty())
        return;
    file_.close();
    QFile::remove(file_.fileName());
    file_.setFileName(QString());
}
