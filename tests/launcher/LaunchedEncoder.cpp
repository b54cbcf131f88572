#include "launcher/LaunchedEncoder.h"

#include <QFile>
#include <QTest>

#include <array>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int answerLimit = 20000; // milliseconds

QByteArray nameOf(const QByteArray& pid) {
    QFile file(QStringLiteral("/proc/") + QString::fromLatin1(pid) + QStringLiteral("/comm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

} // namespace

LaunchedEncoder::LaunchedEncoder(const QString& searchPath, const QStringList& arguments,
                                 Stream stream) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        qFatal("no pipe");
    if (stream == Stream::NonBlocking)
        ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    readEnd_ = ends[0];
    std::vector<QByteArray> texts{QByteArrayLiteral(REELSHIFT_LAUNCHER)};
    for (const QString& each : arguments)
        texts.push_back(QFile::encodeName(each));
    std::vector<char*> pointers;
    for (QByteArray& each : texts)
        pointers.push_back(each.data());
    pointers.push_back(nullptr);
    QByteArray path = "PATH=" + QFile::encodeName(searchPath);
    QByteArray mark("LAUNCHED=as it is");
    const std::vector<char*> environment{mark.data(), searchPath.isNull() ? nullptr : path.data(),
                                         nullptr};
    pid_ = ::fork();
    if (pid_ == 0) {
        ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
        // What outlives the test must not hold the test's own output.
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        ::dup2(ends[1], STDERR_FILENO);
        ::execve(REELSHIFT_LAUNCHER, pointers.data(), environment.data());
        ::_exit(99);
    }
    ::close(ends[1]);
}

LaunchedEncoder::~LaunchedEncoder() {
    closeReadEnd();
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
}

pid_t LaunchedEncoder::filter() const {
    QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(pid_));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& each : file.readAll().split(' ')) {
        if (!each.isEmpty() && nameOf(each) == "reelshift-words")
            return each.toInt();
    }
    return 0;
}

int LaunchedEncoder::bytesWaiting() const {
    int bytes = 0;
    ::ioctl(readEnd_, FIONREAD, &bytes);
    return bytes;
}

bool LaunchedEncoder::readSome() {
    pollfd waited{readEnd_, POLLIN, 0};
    if (isAtEnd_ || ::poll(&waited, 1, answerLimit) <= 0)
        return false;
    std::array<char, 65536> bytes;
    const ssize_t got = ::read(readEnd_, bytes.data(), bytes.size());
    isAtEnd_ = got == 0;
    if (got > 0)
        said_.append(bytes.data(), got);
    return got > 0;
}

bool LaunchedEncoder::waitFor(const QByteArray& text) {
    while (!said_.contains(text)) {
        if (!readSome())
            return false;
    }
    return true;
}

bool LaunchedEncoder::readToEnd() {
    while (readSome()) {
    }
    return isAtEnd_;
}

int LaunchedEncoder::waitForEnd() {
    int status = 0;
    ::waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

void LaunchedEncoder::closeReadEnd() {
    if (readEnd_ >= 0)
        ::close(std::exchange(readEnd_, -1));
}
