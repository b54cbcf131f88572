#include "TestProgram.h"
#include "app/AddChecks.h"
#include "app/ControllerFixture.h"
#include "app/PanelDriver.h"
#include "platform/ChildProcesses.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

namespace {

/// A movie that says when it is looked at and stays until it is let go.
QString waitingMovie(const ControllerFixture& program, const QString& name) {
    const QByteArray seen = "touch " + name.toUtf8() + ".seen";
    const QByteArray go = "wait-file " + name.toUtf8() + ".go";
    return program.movie(name)
        .probeSteps({seen.constData(), go.constData(), "report size=1280x720"})
        .write();
}

bool isSeen(const QString& movie) {
    return QFile::exists(movie + QStringLiteral(".seen"));
}

void letGo(const QString& movie) {
    QFile file(movie + QStringLiteral(".go"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

qsizetype starts(const ControllerFixture& program, const QString& movie) {
    qsizetype found = 0;
    for (const EncoderStart& each : program.starts())
        found += each.arguments.contains(movie) ? 1 : 0;
    return found;
}

QStringList names(ControllerFixture& program) {
    QStringList found;
    for (int row = 0; row < program.files().rowCount(); ++row)
        found += program.files().recordAt(row)->text(key::name);
    return found;
}

const QString nameA = QStringLiteral("a.mp4");
const QString nameB = QStringLiteral("b.mp4");
const QString nameC = QStringLiteral("c.mp4");

} // namespace

/// The next movies are examined while one is being added, and nothing else is different.
class TestAddingAhead final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theNextOneIsExaminedMeanwhile();
    void aFileThatHasChangedIsExaminedAgain();
    void nothingGoesOnAfterAnEarlyEnd();
    void theVolumeIsAskedForOnce();
    void theQuestionComesFirst();
    void theQuestionWasAnsweredForAll();
    void aRefusalForAllIsKnownAhead();
    void aDeadShareHoldsNoOtherMovieUp();
};

void TestAddingAhead::initTestCase() {
    if (QThread::idealThreadCount() < 2)
        QSKIP("one processor: nothing is examined beside the movie at hand");
}

void TestAddingAhead::theNextOneIsExaminedMeanwhile() {
    ControllerFixture program;
    const QString first = waitingMovie(program, nameA);
    const QString second = waitingMovie(program, nameB);
    once([&] { return isSeen(first) && isSeen(second); },
         [&] {
             QCOMPARE(program.files().rowCount(), 1);
             QCOMPARE(program.state().itemId, qint64{1});
             // The later one is ready first, and comes second all the same.
             letGo(second);
         });
    once([&] { return starts(program, second) == 2 && program.processes().liveCount() < 2; },
         [&] { letGo(first); });
    program.add({first, second});
    QCOMPARE(names(program), (QStringList{nameA, nameB}));
    QCOMPARE(program.files().idList, (std::vector<int>{1, 2}));
    QCOMPARE(starts(program, first), 2);
    QCOMPARE(starts(program, second), 2);
    QVERIFY(areInStep(program.files()));
}

void TestAddingAhead::aFileThatHasChangedIsExaminedAgain() {
    ControllerFixture program;
    program.state().probe.duration = QStringLiteral("00:00:01.00"); // one look is enough
    const QString first = waitingMovie(program, nameA);
    const QString second =
        program.movie(nameB).probeSteps({"touch b.mp4.seen", "report size=1280x720"}).write();
    once([&] { return isSeen(second) && program.processes().liveCount() == 1; },
         [&] {
             program.movie(nameB).probeSteps({"report size=1920x1080"}).write();
             letGo(first);
         });
    program.add({first, second});
    QCOMPARE(program.files().recordAt(1)->text(key::resolution), QStringLiteral("1920x1080"));
    QCOMPARE(starts(program, second), 2);
}

void TestAddingAhead::nothingGoesOnAfterAnEarlyEnd() {
    ControllerFixture program;
    const QString bad =
        program.movie(nameA).probeSteps({"wait-file a.mp4.go", "report video=h264"}).write();
    const QString next = waitingMovie(program, nameB);
    once([&] { return isSeen(next); }, [&] { letGo(bad); });
    program.add({bad, next, waitingMovie(program, nameC)});
    QCOMPARE(program.files().rowCount(), 0);
    QTRY_COMPARE(program.processes().liveCount(), 0);
    QCOMPARE(program.state().itemId, qint64{1});
    // Added again it is examined afresh.
    letGo(next);
    program.add({next});
    QCOMPARE(names(program), QStringList{nameB});
}

void TestAddingAhead::theVolumeIsAskedForOnce() {
    ControllerFixture program;
    const QString first = waitingMovie(program, nameA);
    const QString second = waitingMovie(program, nameB);
    once([&] { return isSeen(first) && isSeen(second); },
         [&] {
             letGo(first);
             letGo(second);
         });
    program.add({first, second});
    QCOMPARE(names(program), (QStringList{nameA, nameB}));
    QCOMPARE(program.volumes.asked(), (QList<QString>{program.movies(), program.movies()}));
}

void TestAddingAhead::theQuestionComesFirst() {
    ControllerFixture program;
    const QString card = program.path(QStringLiteral("card"));
    QVERIFY(QDir().mkpath(card));
    program.volumes.table[card].removable = true;
    const QString first = waitingMovie(program, nameA);
    const QString onCard = ScriptedMovie(card, nameB).write();
    const QString behind = program.movie(nameC).write();
    // The thread that looks ahead has been there.
    once([&] { return isSeen(first) && program.volumes.asked().contains(card); },
         [&] { letGo(first); });
    program.boxes.promise(1001, false, [&] {
        QCOMPARE(starts(program, onCard), 0);
        QCOMPARE(starts(program, behind), 0);
    });
    program.add({first, onCard, behind});
    QVERIFY(program.boxes.allKept());
    QCOMPARE(names(program), (QStringList{nameA, nameB, nameC}));
}

void TestAddingAhead::theQuestionWasAnsweredForAll() {
    ControllerFixture program;
    program.volumes.table[program.movies()].removable = true;
    const QString first = waitingMovie(program, nameA);
    const QString second = waitingMovie(program, nameB);
    program.boxes.promise(1001, true);
    once([&] { return isSeen(first) && isSeen(second); },
         [&] {
             letGo(second);
             letGo(first);
         });
    program.add({first, second});
    QVERIFY(program.boxes.allKept());
    QCOMPARE(names(program), (QStringList{nameA, nameB}));
}

void TestAddingAhead::aRefusalForAllIsKnownAhead() {
    ControllerFixture program;
    const QString card = program.path(QStringLiteral("card"));
    QVERIFY(QDir().mkpath(card));
    program.volumes.table[card].removable = true;
    program.state().checkStatusForSdCardDelay = true;
    program.state().resultStoredForSdCardDelay = 1000;
    const QString first = waitingMovie(program, nameA);
    const QString onCard = ScriptedMovie(card, nameB).write();
    once([&] { return isSeen(first) && program.volumes.asked().contains(card); },
         [&] { letGo(first); });
    program.drop({first, onCard});
    QVERIFY(program.boxes.seen.isEmpty());
    QCOMPARE(names(program), QStringList{nameA});
    QCOMPARE(starts(program, onCard), 0);
}

void TestAddingAhead::aDeadShareHoldsNoOtherMovieUp() {
    ControllerFixture program;
    const QString share = program.path(QStringLiteral("share"));
    QVERIFY(QDir().mkpath(share));
    const QString first = program.movie(nameA).write();
    const QString onShare = ScriptedMovie(share, nameB).write();
    program.volumes.hold(share);
    once([&] { return names(program) == (QStringList{nameA}) && program.state().itemId == 2; },
         [&] { program.volumes.release(); });
    program.add({first, onShare});
    QCOMPARE(names(program), (QStringList{nameA, nameB}));
}

REELSHIFT_TEST(tst_adding_ahead, TestAddingAhead, QApplication)
#include "tst_adding_ahead.moc"
