#include "TestProgram.h"
#include "encoder/ScriptedMovie.h"
#include "media/Examiner.h"
#include "platform/ChildProcesses.h"
#include "platform/WorkerThreads.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>

using namespace std::chrono_literals;

namespace {

/// An examiner with the fake encoder. Each movie says when it is looked at ("NAME.seen") and stays
/// until it is let go ("NAME.go").
struct Scene {
    explicit Scene(int atOnce)
        : log(installFakeEncoder(folder.filePath(QStringLiteral("resources")))),
          runner(processes, folder.filePath(QStringLiteral("resources/ffmpeg"))),
          examiner(
              workers, runner, [this] { ++looks; }, atOnce) {}

    [[nodiscard]] QString write(const QString& name) const {
        const QByteArray seen = "touch " + name.toUtf8() + ".seen";
        const QByteArray go = "wait-file " + name.toUtf8() + ".go";
        return ScriptedMovie(folder.path(), name)
            .probeSteps({seen.constData(), go.constData(), "report size=1280x720"})
            .write();
    }
    [[nodiscard]] std::shared_ptr<const Examination>
    examine(const QString& name, bool twice = false,
            Examiner::Place place = Examiner::Place::Last) {
        return examiner.examine(write(name), twice, place);
    }
    [[nodiscard]] bool isSeen(const QString& name) const {
        return QFile::exists(folder.filePath(name + QStringLiteral(".seen")));
    }
    void letGo(const QString& name) const {
        QFile file(folder.filePath(name + QStringLiteral(".go")));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    [[nodiscard]] qsizetype starts() const { return readEncoderStarts(log).size(); }

    QTemporaryDir folder;
    QString log;
    std::atomic<int> looks = 0;
    ChildProcesses processes;
    WorkerThreads workers;
    ProbeRunner runner;
    Examiner examiner;
};

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

} // namespace

/// Several movies examined at a time.
class TestExaminer final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asManyAtOnce_data();
    void asManyAtOnce();
    void whoIsAtHandGoesFirst();
    void theSecondLookBeginsByItself();
    void nobodyWaitsTwiceForASilentOne();
    void stoppedWhenNobodyWantsIt();
    void endsWithTheExaminer();
};

void TestExaminer::asManyAtOnce_data() {
    QTest::addColumn<int>("atOnce");
    QTest::newRow("one processor") << 1;
    QTest::newRow("two processors") << 2;
    QTest::newRow("three processors") << 3;
}

void TestExaminer::asManyAtOnce() {
    QFETCH(int, atOnce);
    Scene scene(atOnce);
    const QStringList names{a, b, c, QStringLiteral("d")};
    std::vector<std::shared_ptr<const Examination>> all;
    for (const QString& name : names)
        all.push_back(scene.examine(name));
    for (qsizetype over = 0; over < names.size(); ++over) {
        const qsizetype expected = qMin(over + atOnce, names.size());
        QTRY_VERIFY(scene.isSeen(names[expected - 1]));
        QTRY_COMPARE(scene.starts(), expected); // those that begin together say so in any order
        QTRY_COMPARE(scene.processes.liveCount(), int(expected - over));
        scene.letGo(names[over]);
        QTRY_VERIFY(all[size_t(over)]->isSecondOver());
        QVERIFY(all[size_t(over)]->first().report.contains(u"1280x720"));
    }
    QTRY_COMPARE(scene.workers.runningCount(), 0);
    QCOMPARE(scene.looks.load(), 2 * int(names.size()));
}

void TestExaminer::whoIsAtHandGoesFirst() {
    Scene scene(1);
    const auto first = scene.examine(a);
    const auto later = scene.examine(b);
    const auto atHand = scene.examine(c, false, Examiner::Place::First);
    scene.letGo(a);
    QTRY_VERIFY(scene.isSeen(c));
    QVERIFY(!scene.isSeen(b));
    scene.letGo(c);
    QTRY_VERIFY(scene.isSeen(b));
    scene.letGo(b);
    QTRY_VERIFY(later->isSecondOver());
}

void TestExaminer::theSecondLookBeginsByItself() {
    Scene scene(1);
    scene.letGo(a);
    const auto examination = scene.examine(a, true);
    QTRY_VERIFY(examination->isSecondOver());
    QCOMPARE(scene.starts(), 2);
    QCOMPARE(examination->second().result, ProbeRunner::Result::Ended);
    ProbeValues values;
    for (const RetryFindings& found : examination->second().found)
        found.putInto(values);
    QVERIFY(!values.videoCodec.isEmpty());
}

void TestExaminer::nobodyWaitsTwiceForASilentOne() {
    Scene scene(1);
    scene.runner.setPatience(200ms);
    const auto examination = scene.examine(a, true);
    QTRY_VERIFY(examination->isSecondOver());
    QCOMPARE(examination->first().result, ProbeRunner::Result::Silent);
    QCOMPARE(scene.starts(), 1);
    QTRY_COMPARE(scene.processes.liveCount(), 0);
}

void TestExaminer::stoppedWhenNobodyWantsIt() {
    Scene scene(1);
    auto running = scene.examine(a, true);
    auto waiting = scene.examine(b);
    auto wanted = scene.examine(c);
    QTRY_VERIFY(scene.isSeen(a));
    waiting.reset();
    running.reset();
    QTRY_VERIFY(scene.isSeen(c));
    QVERIFY(!scene.isSeen(b));
    QCOMPARE(scene.starts(), 2);
    scene.letGo(c);
    QTRY_VERIFY(wanted->isSecondOver());
}

void TestExaminer::endsWithTheExaminer() {
    Scene scene(1);
    WorkerThreads workers;
    std::shared_ptr<const Examination> running;
    std::shared_ptr<const Examination> waiting;
    {
        Examiner examiner(
            workers, scene.runner, [] {}, 1);
        running = examiner.examine(scene.write(a), true, Examiner::Place::Last);
        waiting = examiner.examine(scene.write(b), true, Examiner::Place::Last);
        QTRY_VERIFY(scene.isSeen(a));
    }
    QTRY_COMPARE(scene.processes.liveCount(), 0);
    // It has done its work when the examiner goes, and is a moment yet on its way out.
    QTRY_COMPARE(workers.runningCount(), 0);
    QVERIFY(!scene.isSeen(b));
    // To let go of it afterwards does no harm.
    running.reset();
    waiting.reset();
}

REELSHIFT_TEST(test_examiner, TestExaminer, QCoreApplication)
#include "TestExaminer.moc"
