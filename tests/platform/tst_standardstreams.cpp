#include "TestProgram.h"
#include "platform/StandardStreams.h"

#include <QCoreApplication>
#include <QTest>

#include <array>
#include <initializer_list>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Streams that were closed when the program was started.
class TestStandardStreams final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void closedOnesAreTheNullDevice_data();
    void closedOnesAreTheNullDevice();
};

namespace {

bool isNullDevice(int stream) {
    struct stat found {};
    struct stat wanted {};
    return ::fstat(stream, &found) == 0 && ::stat("/dev/null", &wanted) == 0 &&
           S_ISCHR(found.st_mode) && found.st_rdev == wanted.st_rdev;
}

} // namespace

void TestStandardStreams::closedOnesAreTheNullDevice_data() {
    QTest::addColumn<int>("closed"); // a bit a stream
    for (int closed = 0; closed < 8; ++closed)
        QTest::newRow(qPrintable(QString::number(closed, 2).rightJustified(3, u'0'))) << closed;
}

void TestStandardStreams::closedOnesAreTheNullDevice() {
    QFETCH(int, closed);
    const pid_t pid = ::fork();
    QVERIFY(pid >= 0);
    if (pid == 0) {
        // The others stand for streams that somebody reads.
        std::array<int, 2> pipe{};
        if (::pipe(pipe.data()) != 0)
            ::_exit(8);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(pipe[1], stream);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            if ((closed & (1 << stream)) != 0)
                ::close(stream);
        }
        openStandardStreams();
        int found = 0;
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            found |= isNullDevice(stream) ? 1 << stream : 0;
        ::_exit(found);
    }
    int status = 0;
    QCOMPARE(::waitpid(pid, &status, 0), pid);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), closed);
}

REELSHIFT_TEST(tst_standardstreams, TestStandardStreams, QCoreApplication)
#include "tst_standardstreams.moc"
