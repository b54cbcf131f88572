#include "TestProgram.h"
#include "encoder/ScriptedMovie.h"
#include "platform/ChildProbe.h"
#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <future>
#include <set>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;
using How = ProcessEnd::How;

Q_DECLARE_METATYPE(ProcessEnd::How)

namespace {

/// Those that a started program would inherit.
std::set<int> inheritedDescriptors() {
    std::set<int> result;
    for (int fd = 0; fd < 1024; ++fd) {
        const int flags = ::fcntl(fd, F_GETFD);
        if (flags >= 0 && (flags & FD_CLOEXEC) == 0)
            result.insert(fd);
    }
    return result;
}

/// All that it says until its end.
QByteArray everything(ChildProcess& child) {
    QByteArray text;
    while (child.read(text, longEnough) == ChildProcess::Read::Data) {
    }
    return text;
}

} // namespace

/// The life of a child: start, signals, one end.
class TestChildProcess final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void endTellsHow_data();
    void endTellsHow();
    void failedStartIsAnEnd_data();
    void failedStartIsAnEnd();
    void endComesExactlyOnce();
    void endCanBeReadInsideItsCallback();
    void callbackMaySignalAndLaunch();
    void lastReferenceMayGoInsideTheCallback();
    void nothingReachesAnEndedProcess();
    void signalsEndAProcess_data();
    void signalsEndAProcess();
    void waitForEndHasALimit();
    void suspendStopsAndResumeGoesOn();
    void suspendTwiceNeedsOneResume();
    void signalOfASuspendedProcess();
    void suspendOfAnEndedProcessFails();
    void suspendAtTheEndIsOneOrTheOther();
    void standardInputIsTheNullDevice();
    void argumentsArriveAsTheyAre();
    void signalsHaveTheirUsualMeaning();
    void descriptorsAreNotInherited();
    void closedStandardStreams();
    void statusIsKnownWhereChildrenAreIgnored();
    void outlivesTheThreadThatAskedForIt();
    void encoderIsFollowedToItsEnd();

private:
    [[nodiscard]] std::shared_ptr<ChildProcess> shell(const QString& script,
                                                      std::function<void()> onEnd = {}) {
        return processes_->launch(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script},
                                  std::move(onEnd));
    }
    [[nodiscard]] std::shared_ptr<ChildProcess> sleeper(std::function<void()> onEnd = {}) {
        return processes_->launch(QStringLiteral("/bin/sleep"), {QStringLiteral("300")},
                                  std::move(onEnd));
    }

    std::unique_ptr<ChildProcesses> processes_;
};

void TestChildProcess::init() {
    processes_ = std::make_unique<ChildProcesses>();
}

void TestChildProcess::cleanup() {
    processes_.reset();
    // No test leaves a process or a zombie behind.
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

void TestChildProcess::endTellsHow_data() {
    QTest::addColumn<QString>("script");
    QTest::addColumn<How>("how");
    QTest::addColumn<int>("code");
    QTest::newRow("zero") << QStringLiteral("exit 0") << How::Exited << 0;
    QTest::newRow("status") << QStringLiteral("exit 69") << How::Exited << 69;
    QTest::newRow("largest status") << QStringLiteral("exit 255") << How::Exited << 255;
    QTest::newRow("killed") << QStringLiteral("kill -KILL $$") << How::Killed << SIGKILL;
    QTest::newRow("terminated") << QStringLiteral("kill -TERM $$") << How::Killed << SIGTERM;
    QTest::newRow("crashed") << QStringLiteral("kill -SEGV $$") << How::Killed << SIGSEGV;
}

void TestChildProcess::endTellsHow() {
    QFETCH(const QString, script);
    QFETCH(const How, how);
    QFETCH(const int, code);
    const auto child = shell(QStringLiteral("ulimit -c 0; ") + script);
    QVERIFY(child->processIdentifier() > 0);
    const auto end = child->waitForEnd(longEnough);
    QVERIFY(end);
    QCOMPARE(end->how, how);
    QCOMPARE(end->code, code);
    QCOMPARE(end->succeeded(), how == How::Exited && code == 0);
    QVERIFY(child->end());
    QCOMPARE(child->end()->code, code);
    QTRY_COMPARE(processes_->liveCount(), 0);
}

void TestChildProcess::failedStartIsAnEnd_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("code");
    QTest::newRow("missing") << QStringLiteral("missing") << ENOENT;
    QTest::newRow("nothing") << QStringLiteral("nothing") << ENOENT;
    QTest::newRow("not executable") << QStringLiteral("plain") << EACCES;
    QTest::newRow("folder") << QStringLiteral("folder") << EACCES;
    QTest::newRow("no program") << QStringLiteral("text") << ENOEXEC;
    QTest::newRow("interpreter missing") << QStringLiteral("script") << ENOENT;
}

void TestChildProcess::failedStartIsAnEnd() {
    QFETCH(const QString, kind);
    QFETCH(const int, code);
    QTemporaryDir folder;
    const QString program = kind == u"nothing" ? QString() : folder.filePath(kind);
    if (kind == u"folder") {
        QVERIFY(QDir().mkdir(program));
    } else if (kind != u"missing" && kind != u"nothing") {
        QFile file(program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(kind == u"script" ? "#!/no/such/interpreter\n" : "no program\n");
        file.close();
        const auto readable = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(file.setPermissions(kind == u"plain" ? readable : readable | QFile::ExeOwner));
    }
    std::atomic<int> ends = 0;
    const auto child = processes_->launch(program, {}, [&] { ++ends; });
    QCOMPARE(ends.load(), 1);
    const auto end = child->end();
    QVERIFY(end);
    QCOMPARE(end->how, How::FailedToStart);
    QCOMPARE(end->code, code);
    QVERIFY(!end->succeeded());
    QByteArray text;
    QCOMPARE(child->read(text), ChildProcess::Read::Ended);
    QVERIFY(text.isEmpty());
    QVERIFY(!child->suspend());
    QVERIFY(!child->terminate());
    QVERIFY(!child->interrupt());
    QVERIFY(!child->kill());
    child->resume();
    QCOMPARE(processes_->liveCount(), 0);
    QVERIFY(processes_->launch(QStringLiteral("/bin/true"), {})->waitForEnd(longEnough));
    QCOMPARE(ends.load(), 1);
}

void TestChildProcess::endComesExactlyOnce() {
    std::atomic<int> ends = 0;
    {
        const auto child = sleeper([&] { ++ends; });
        QCOMPARE(ends.load(), 0);
        QVERIFY(child->kill());
        QVERIFY(child->waitForEnd(longEnough));
        child->kill();
        child->suspend();
        child->terminate();
        child->resume();
    }
    // Nothing is told any more once the thread has ended.
    processes_.reset();
    QCOMPARE(ends.load(), 1);
}

void TestChildProcess::endCanBeReadInsideItsCallback() {
    std::promise<const ChildProcess*> launched;
    std::promise<std::optional<ProcessEnd>> told;
    const auto child = shell(QStringLiteral("exit 5"),
                             [&] { told.set_value(launched.get_future().get()->end()); });
    launched.set_value(child.get());
    auto end = told.get_future();
    QVERIFY(end.wait_for(longEnough) == std::future_status::ready);
    const auto value = end.get();
    QVERIFY(value);
    QCOMPARE(value->code, 5);
}

void TestChildProcess::callbackMaySignalAndLaunch() {
    const auto other = sleeper();
    std::promise<bool> sent;
    std::promise<std::shared_ptr<ChildProcess>> next;
    const auto child = shell(QStringLiteral("exit 0"), [&] {
        next.set_value(shell(QStringLiteral("exit 6")));
        sent.set_value(other->kill());
    });
    auto result = sent.get_future();
    QVERIFY(result.wait_for(longEnough) == std::future_status::ready);
    QVERIFY(result.get());
    QCOMPARE(other->waitForEnd(longEnough)->code, SIGKILL);
    QCOMPARE(next.get_future().get()->waitForEnd(longEnough)->code, 6);
}

void TestChildProcess::lastReferenceMayGoInsideTheCallback() {
    std::promise<void> ended;
    auto child = sleeper([&] { ended.set_value(); });
    QVERIFY(child->kill());
    child.reset();
    QVERIFY(ended.get_future().wait_for(longEnough) == std::future_status::ready);
}

void TestChildProcess::nothingReachesAnEndedProcess() {
    const auto child = shell(QStringLiteral("exit 0"));
    QVERIFY(child->waitForEnd(longEnough));
    QVERIFY(!child->terminate());
    QVERIFY(!child->interrupt());
    QVERIFY(!child->kill());
    QVERIFY(!child->suspend());
    child->resume();
    QVERIFY(child->end()->succeeded());
}

void TestChildProcess::signalsEndAProcess_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("terminate") << SIGTERM;
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("kill") << SIGKILL;
}

void TestChildProcess::signalsEndAProcess() {
    QFETCH(const int, number);
    const auto child = sleeper();
    QVERIFY(number == SIGTERM  ? child->terminate()
            : number == SIGINT ? child->interrupt()
                               : child->kill());
    const auto end = child->waitForEnd(longEnough);
    QVERIFY(end);
    QCOMPARE(end->how, How::Killed);
    QCOMPARE(end->code, number);
}

void TestChildProcess::waitForEndHasALimit() {
    const auto child = sleeper();
    QVERIFY(!child->waitForEnd(0ms));
    QVERIFY(!child->waitForEnd(30ms));
    QVERIFY(!child->end());
    QCOMPARE(processes_->liveCount(), 1);
    QVERIFY(child->kill());
    QVERIFY(child->waitForEnd(longEnough));
}

void TestChildProcess::suspendStopsAndResumeGoesOn() {
    const auto child = shell(QStringLiteral("while :; do echo x >&2; done"));
    QByteArray text;
    QCOMPARE(child->read(text, longEnough), ChildProcess::Read::Data);
    QVERIFY(child->suspend());
    QCOMPARE(stateOfProcess(child->processIdentifier()), 'T');
    QVERIFY(!child->end());
    while (child->read(text, 0ms) == ChildProcess::Read::Data) {
    }
    // Stopped, it says nothing; resumed, it goes on.
    QCOMPARE(child->read(text, 50ms), ChildProcess::Read::TimedOut);
    child->resume();
    QCOMPARE(child->read(text, longEnough), ChildProcess::Read::Data);
    QVERIFY(stateOfProcess(child->processIdentifier()) != 'T');
    QVERIFY(child->suspend());
    QCOMPARE(stateOfProcess(child->processIdentifier()), 'T');
    QVERIFY(child->kill());
    QCOMPARE(child->waitForEnd(longEnough)->code, SIGKILL);
}

void TestChildProcess::suspendTwiceNeedsOneResume() {
    const auto child = sleeper();
    QVERIFY(child->suspend());
    QVERIFY(child->suspend());
    QCOMPARE(stateOfProcess(child->processIdentifier()), 'T');
    child->resume();
    QTRY_VERIFY(stateOfProcess(child->processIdentifier()) != 'T');
    child->resume();
    QVERIFY(child->terminate());
    QCOMPARE(child->waitForEnd(longEnough)->code, SIGTERM);
}

void TestChildProcess::signalOfASuspendedProcess() {
    const auto child = sleeper();
    QVERIFY(child->suspend());
    QVERIFY(child->terminate());
    // It cannot hear that before it goes on.
    QVERIFY(!child->waitForEnd(50ms));
    QCOMPARE(stateOfProcess(child->processIdentifier()), 'T');
    child->resume();
    QCOMPARE(child->waitForEnd(longEnough)->code, SIGTERM);
}

void TestChildProcess::suspendOfAnEndedProcessFails() {
    for (int i = 0; i < 50; ++i) {
        const auto child = shell(QStringLiteral("exit 0"));
        const pid_t pid = child->processIdentifier();
        // A zombie takes signals: only its life-cycle tells.
        QTRY_VERIFY(isDead(pid));
        QVERIFY(!child->suspend());
        QVERIFY(child->end());
        QVERIFY(child->end()->succeeded());
    }
}

void TestChildProcess::suspendAtTheEndIsOneOrTheOther() {
    for (int i = 0; i < 100; ++i) {
        const auto child = processes_->launch(QStringLiteral("/bin/true"), {});
        if (child->suspend()) {
            QCOMPARE(stateOfProcess(child->processIdentifier()), 'T');
            QVERIFY(!child->end());
            child->resume();
        } else {
            QVERIFY(child->end());
        }
        QVERIFY(child->waitForEnd(longEnough));
        QVERIFY(child->end()->succeeded());
    }
}

void TestChildProcess::standardInputIsTheNullDevice() {
    const auto child =
        shell(QStringLiteral("read line; echo \"$? $(readlink /proc/$$/fd/0)\" >&2"));
    QCOMPARE(everything(*child), QByteArray("1 /dev/null\n"));
}

void TestChildProcess::argumentsArriveAsTheyAre() {
    const QStringList arguments{QStringLiteral("a b"),       QString(),
                                QStringLiteral("new\nline"), QStringLiteral("\u00e9\u4e2d"),
                                QStringLiteral("*"),         QStringLiteral("$HOME 'q\"d"),
                                QStringLiteral("-y"),        QStringLiteral("\\n%s")};
    const auto child = processes_->launch(QStringLiteral("/bin/sh"),
                                          QStringList{QStringLiteral("-c"),
                                                      QStringLiteral("printf '<%s>' \"$@\" >&2"),
                                                      QStringLiteral("name")} +
                                              arguments);
    QCOMPARE(everything(*child),
             QString(u'<' + arguments.join(QStringLiteral("><")) + u'>').toUtf8());
}

void TestChildProcess::signalsHaveTheirUsualMeaning() {
    // What this program blocks or ignores is none of the child's business.
    sigset_t blocked;
    sigset_t before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::sigaddset(&blocked, SIGUSR1);
    QCOMPARE(::pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    processes_ = std::make_unique<ChildProcesses>();
    QCOMPARE(::pthread_sigmask(SIG_SETMASK, &before, nullptr), 0);
    const auto oldHandler = ::signal(SIGPIPE, SIG_IGN);
    const auto child = shell(QStringLiteral("grep -E 'SigBlk' /proc/self/status >&2; "
                                            "kill -PIPE $$; echo ignored >&2"));
    const QByteArray text = everything(*child);
    ::signal(SIGPIPE, oldHandler);
    QCOMPARE(text, QByteArray("SigBlk:\t0000000000000000\n"));
    QCOMPARE(child->end()->code, SIGPIPE);
}

void TestChildProcess::descriptorsAreNotInherited() {
    const auto other = sleeper();
    std::set<int> expected = inheritedDescriptors();
    expected.insert({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO});
    const auto child = sleeper();
    const QDir folder(QStringLiteral("/proc/%1/fd").arg(child->processIdentifier()));
    const auto unexpected = [&] {
        QStringList found;
        const QStringList names = folder.entryList(QDir::Files | QDir::System);
        for (const QString& name : names) {
            if (expected.count(name.toInt()) == 0)
                found += name + u' ' + QFile::symLinkTarget(folder.filePath(name));
        }
        return names.size() < 3 ? QStringList(QStringLiteral("not all of its own")) : found;
    };
    // While it begins the child opens and closes files of its own: seen without once is enough.
    bool isBare = false;
    QTRY_VERIFY2((isBare = isBare || unexpected().isEmpty()), qPrintable(unexpected().join(u'\n')));
    QVERIFY(child->kill());
    QVERIFY(child->waitForEnd(longEnough));
    QVERIFY(other->kill());
    QVERIFY(other->waitForEnd(longEnough));
}

void TestChildProcess::closedStandardStreams() {
    const int input = ::dup(STDIN_FILENO);
    const int errors = ::dup(STDERR_FILENO);
    ::close(STDIN_FILENO);
    ::close(STDERR_FILENO);
    // Its own descriptors take the free numbers, so all of it happens before they are given back.
    auto child = shell(QStringLiteral("echo text >&2; exit 4"));
    auto missing = processes_->launch(QStringLiteral("/no/such/program"), {});
    const QByteArray text = everything(*child);
    const auto end = child->waitForEnd(longEnough);
    const auto missingEnd = missing->end();
    child.reset();
    missing.reset();
    processes_.reset();
    ::dup2(input, STDIN_FILENO);
    ::dup2(errors, STDERR_FILENO);
    ::close(input);
    ::close(errors);
    QCOMPARE(text, QByteArray("text\n"));
    QVERIFY(end);
    QCOMPARE(end->how, How::Exited);
    QCOMPARE(end->code, 4);
    QVERIFY(missingEnd);
    QCOMPARE(missingEnd->how, How::FailedToStart);
}

void TestChildProcess::statusIsKnownWhereChildrenAreIgnored() {
    // As some launchers leave it to what they start: the kernel then reaps by itself.
    processes_.reset();
    const auto before = ::signal(SIGCHLD, SIG_IGN);
    processes_ = std::make_unique<ChildProcesses>();
    const auto child = shell(QStringLiteral("exit 7"));
    const auto end = child->waitForEnd(longEnough);
    ::signal(SIGCHLD, before == SIG_ERR ? SIG_DFL : before);
    QVERIFY(end);
    QCOMPARE(end->how, How::Exited);
    QCOMPARE(end->code, 7);
}

void TestChildProcess::outlivesTheThreadThatAskedForIt() {
    std::shared_ptr<ChildProcess> child;
    std::thread([&] { child = sleeper(); }).join();
    QVERIFY(!child->waitForEnd(50ms));
    QVERIFY(!isDead(child->processIdentifier()));
    QVERIFY(child->kill());
    QVERIFY(child->waitForEnd(longEnough));
}

void TestChildProcess::encoderIsFollowedToItsEnd() {
    QTemporaryDir folder;
    const QString movie = ScriptedMovie(folder.path(), QStringLiteral("a.mp4"))
                              .encode({"create", "progress 2.5", "wait-file go", "summary 8"})
                              .write();
    const auto child = processes_->launch(
        QStringLiteral(REELSHIFT_FAKE_ENCODER),
        {QStringLiteral("-i"), movie, folder.filePath(QStringLiteral("out.mp4"))});
    QByteArray text;
    while (!text.contains("time=00:00:02.50"))
        QCOMPARE(child->read(text, longEnough), ChildProcess::Read::Data);
    QVERIFY(child->suspend());
    QFile go(folder.filePath(QStringLiteral("go")));
    QVERIFY(go.open(QIODevice::WriteOnly));
    QVERIFY(!child->waitForEnd(50ms));
    child->resume();
    text += everything(*child);
    QVERIFY(text.contains("LPSNR="));
    QVERIFY(child->end());
    QVERIFY(child->end()->succeeded());
}

REELSHIFT_TEST(tst_childprocess, TestChildProcess, QCoreApplication)
#include "tst_childprocess.moc"
