#include "TestProgram.h"
#include "convert/EncoderLife.h"

#include <QTest>

#include <array>
#include <cerrno>

#include <signal.h>

using Life = EncoderLife;
using Phase = Life::Phase;
using Request = Life::Request;
using Verdict = Life::Verdict;

Q_DECLARE_METATYPE(EncoderLife::Request)
Q_DECLARE_METATYPE(EncoderLife::Verdict)

namespace {

constexpr ProcessEnd statusZero{ProcessEnd::How::Exited, 0};
constexpr ProcessEnd statusOne{ProcessEnd::How::Exited, 1};
constexpr ProcessEnd endedBySignal{ProcessEnd::How::Exited, 255};
constexpr ProcessEnd killed{ProcessEnd::How::Killed, SIGKILL};
constexpr ProcessEnd notStarted{ProcessEnd::How::FailedToStart, ENOENT};

Life launchedLife() {
    Life life;
    life.launched();
    return life;
}

EncoderPiece said(const EncoderMarkers& marks) {
    EncoderPiece piece;
    piece.marks = marks;
    return piece;
}

/// Everything that can have happened to one encoder.
struct History {
    Request first;
    Request second;
    bool summary;
    bool writeFailure;
    bool told;
    std::optional<ProcessEnd> end;

    Life lived() const {
        Life life = launchedLife();
        for (const Request request : {first, second}) {
            if (request != Request::None)
                life.ask(request);
        }
        if (summary || writeFailure)
            life.saw(said({.hasWriteFailure = writeFailure, .hasSummary = summary}));
        if (told)
            life.toldToEnd();
        if (end)
            life.ended(*end);
        return life;
    }
    bool asks(Request request) const { return first == request || second == request; }
};

std::vector<History> everyHistory() {
    std::vector<History> all;
    const std::array requests{Request::None, Request::Stop, Request::Remove};
    const std::array<std::optional<ProcessEnd>, 6> ends{std::nullopt,  statusZero, statusOne,
                                                        endedBySignal, killed,     notStarted};
    for (const Request first : requests)
        for (const Request second : requests)
            for (const int flags : {0, 1, 2, 3, 4, 5, 6, 7})
                for (const auto& end : ends)
                    all.push_back(
                        {first, second, (flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, end});
    return all;
}

} // namespace

/// One encoder, one outcome.
class TestEncoderLife final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginsWithoutAnything();
    void goesThroughItsPhases();
    void resumeOfARunningOneChangesNothing();
    void verdictOfAnEnd_data();
    void verdictOfAnEnd();
    void onlyItsOwnSummaryAndStatusZeroConvert();
    void stopAndRemovalAreNeverLost();
    void failuresAreToldApart();
    void removalOutweighsStop();
    void noRequestAfterTheOutcome();
    void removalOfAPausedOneIsRemembered();
    void withoutAPictureNothingIsConverted();
    void whatWasSeenStaysSeen();
    void damageIsNoConversion();
    void pauseThatCameTooLateStillConverts();
    void settlesOnce();
    void settlesOnceFromEveryPhase();
};

void TestEncoderLife::beginsWithoutAnything() {
    const Life life;
    QCOMPARE(life.phase(), Phase::Preparing);
    QCOMPARE(life.request(), Request::None);
    QVERIFY(!life.isSettled());
    QVERIFY(!life.isFinished());
    QVERIFY(!life.isSummarySeen());
    QVERIFY(!life.suspendFailed());
    QVERIFY(!life.wasRemovedWhilePaused());
    // A job whose encoder never came to life is a failed conversion.
    QCOMPARE(life.verdict(), Verdict::Failed);
}

void TestEncoderLife::goesThroughItsPhases() {
    Life life;
    life.launched();
    QCOMPARE(life.phase(), Phase::Running);
    life.suspended();
    QCOMPARE(life.phase(), Phase::Suspended);
    life.resumed();
    QCOMPARE(life.phase(), Phase::Running);
    life.suspended();
    QCOMPARE(life.phase(), Phase::Suspended);
    QVERIFY(life.settle());
    QCOMPARE(life.phase(), Phase::Settled);
    life.resumed();
    QCOMPARE(life.phase(), Phase::Settled);
}

void TestEncoderLife::resumeOfARunningOneChangesNothing() {
    Life life = launchedLife();
    life.resumed();
    QCOMPARE(life.phase(), Phase::Running);
    Life preparing;
    preparing.resumed();
    QCOMPARE(preparing.phase(), Phase::Preparing);
}

void TestEncoderLife::verdictOfAnEnd_data() {
    QTest::addColumn<Request>("request");
    QTest::addColumn<bool>("summary");
    QTest::addColumn<bool>("writeFailure");
    QTest::addColumn<bool>("told");
    QTest::addColumn<int>("status");
    QTest::addColumn<Verdict>("verdict");
    const auto row = [](const char* name, Request request, bool summary, bool writeFailure,
                        bool told, int status, Verdict verdict) {
        QTest::newRow(name) << request << summary << writeFailure << told << status << verdict;
    };
    using R = Request;
    using V = Verdict;
    row("finished", R::None, true, false, false, 0, V::Converted);
    row("summary, bad pictures", R::None, true, false, false, 69, V::Failed);
    row("summary after SIGTERM", R::None, true, false, true, 255, V::Failed);
    row("SIGTERM came too late", R::None, true, false, true, 0, V::Failed);
    row("no summary", R::None, false, false, false, 0, V::Failed);
    row("no summary, status", R::None, false, false, false, 1, V::Failed);
    row("disk full", R::None, true, true, false, 1, V::WriteFailed);
    row("index did not fit", R::None, true, true, false, 0, V::WriteFailed);
    row("write failure alone", R::None, false, true, false, 1, V::WriteFailed);
    row("stopped", R::Stop, true, false, true, 255, V::Stopped);
    row("stopped and silent", R::Stop, false, false, true, 1, V::Stopped);
    row("stop came too late", R::Stop, true, false, false, 0, V::Converted);
    row("stopped, disk full", R::Stop, true, true, true, 1, V::Stopped);
    row("stop of one that fails", R::Stop, false, false, false, 1, V::Stopped);
    row("removed", R::Remove, true, false, true, 255, V::Removed);
    row("removed too late", R::Remove, true, false, false, 0, V::Removed);
    row("removed, disk full", R::Remove, true, true, true, 1, V::Removed);
}

void TestEncoderLife::verdictOfAnEnd() {
    QFETCH(const Request, request);
    QFETCH(const bool, summary);
    QFETCH(const bool, writeFailure);
    QFETCH(const bool, told);
    QFETCH(const int, status);
    const History history{request,      Request::None, summary,
                          writeFailure, told,          ProcessEnd{ProcessEnd::How::Exited, status}};
    QTEST(history.lived().verdict(), "verdict");
}

void TestEncoderLife::onlyItsOwnSummaryAndStatusZeroConvert() {
    int finished = 0;
    for (const History& each : everyHistory()) {
        const Life life = each.lived();
        const bool isFinished = each.summary && !each.writeFailure && !each.told && each.end &&
                                each.end->how == ProcessEnd::How::Exited && each.end->code == 0;
        QCOMPARE(life.isFinished(), isFinished);
        if (life.verdict() == Verdict::Converted)
            QVERIFY(isFinished);
        finished += isFinished ? 1 : 0;
    }
    QCOMPARE(finished, 9); // one for every pair of requests
}

void TestEncoderLife::stopAndRemovalAreNeverLost() {
    for (const History& each : everyHistory()) {
        const Life life = each.lived();
        if (each.asks(Request::Remove)) {
            QCOMPARE(life.verdict(), Verdict::Removed);
        } else if (each.asks(Request::Stop)) {
            QCOMPARE(life.verdict(), life.isFinished() ? Verdict::Converted : Verdict::Stopped);
        } else {
            QVERIFY(life.verdict() != Verdict::Removed);
            QVERIFY(life.verdict() != Verdict::Stopped);
        }
    }
}

void TestEncoderLife::failuresAreToldApart() {
    for (const History& each : everyHistory()) {
        const Life life = each.lived();
        if (life.request() != Request::None || life.isFinished())
            continue;
        QCOMPARE(life.verdict(), each.writeFailure ? Verdict::WriteFailed : Verdict::Failed);
    }
}

void TestEncoderLife::removalOutweighsStop() {
    Life life = launchedLife();
    life.ask(Request::Stop);
    QCOMPARE(life.request(), Request::Stop);
    life.ask(Request::Remove);
    QCOMPARE(life.request(), Request::Remove);
    life.ask(Request::Stop);
    QCOMPARE(life.request(), Request::Remove);
    // The job that has no encoder yet hears it as well.
    Life preparing;
    preparing.ask(Request::Remove);
    preparing.launched();
    QCOMPARE(preparing.verdict(), Verdict::Removed);
}

void TestEncoderLife::noRequestAfterTheOutcome() {
    Life life = launchedLife();
    QVERIFY(life.settle());
    life.ask(Request::Remove);
    QCOMPARE(life.request(), Request::None);
    QCOMPARE(life.verdict(), Verdict::Failed);
}

void TestEncoderLife::removalOfAPausedOneIsRemembered() {
    Life paused = launchedLife();
    paused.suspended();
    paused.ask(Request::Remove);
    QVERIFY(paused.wasRemovedWhilePaused());
    paused.resumed(); // so that it can hear that it must end
    paused.ask(Request::Remove);
    QVERIFY(paused.wasRemovedWhilePaused());

    Life running = launchedLife();
    running.suspended();
    running.resumed();
    running.ask(Request::Remove);
    QVERIFY(!running.wasRemovedWhilePaused());

    Life stopped = launchedLife();
    stopped.suspended();
    stopped.ask(Request::Stop);
    QVERIFY(!stopped.wasRemovedWhilePaused());
    stopped.ask(Request::Remove);
    QVERIFY(stopped.wasRemovedWhilePaused());
}

void TestEncoderLife::withoutAPictureNothingIsConverted() {
    Life life = launchedLife();
    life.saw(said({.hasSummary = true, .hasNoPicture = true}));
    life.ended(statusZero);
    QVERIFY(life.isSummarySeen());
    QVERIFY(!life.isFinished()); // so its output goes, whatever is asked of it
    QCOMPARE(life.verdict(), Verdict::Failed);
    Life stopped = life;
    stopped.ask(Request::Stop);
    QCOMPARE(stopped.verdict(), Verdict::Stopped);
    Life full = life;
    full.saw(said({.hasWriteFailure = true}));
    QCOMPARE(full.verdict(), Verdict::WriteFailed);
}

void TestEncoderLife::whatWasSeenStaysSeen() {
    Life life = launchedLife();
    life.saw(said({.hasSummary = true}));
    life.saw(said({.hasWriteFailure = true}));
    life.saw(said({.hasPosition = true}));
    QVERIFY(life.isSummarySeen());
    life.ended(statusZero);
    QCOMPARE(life.verdict(), Verdict::WriteFailed);
}

// Also where the encoder itself was content with what it could read.
void TestEncoderLife::damageIsNoConversion() {
    for (const Request request : {Request::None, Request::Stop, Request::Remove}) {
        Life life = launchedLife();
        life.saw({.text = {}, .marks = {}, .hasDamage = true});
        life.ask(request);
        life.saw(said({.hasSummary = true}));
        life.ended(statusZero);
        QVERIFY(life.isDamageSeen());
        QVERIFY(!life.isFinished());
        QCOMPARE(life.verdict(), request == Request::None   ? Verdict::Failed
                                 : request == Request::Stop ? Verdict::Stopped
                                                            : Verdict::Removed);
    }
}

void TestEncoderLife::pauseThatCameTooLateStillConverts() {
    Life finished = launchedLife();
    finished.suspendDidFail();
    finished.saw(said({.hasSummary = true}));
    finished.ended(statusZero);
    QVERIFY(finished.suspendFailed());
    QCOMPARE(finished.verdict(), Verdict::Converted);

    Life failed = launchedLife();
    failed.suspendDidFail();
    failed.ended(statusOne);
    QCOMPARE(failed.verdict(), Verdict::Failed);
}

void TestEncoderLife::settlesOnce() {
    Life life = launchedLife();
    life.saw(said({.hasSummary = true}));
    life.ended(statusZero);
    QVERIFY(life.settle());
    QVERIFY(life.isSettled());
    QVERIFY(!life.settle());
    QVERIFY(!life.settle());
}

void TestEncoderLife::settlesOnceFromEveryPhase() {
    Life preparing;
    QVERIFY(preparing.settle());
    QVERIFY(!preparing.settle());
    Life suspended = launchedLife();
    suspended.suspended();
    QVERIFY(suspended.settle());
    QVERIFY(!suspended.settle());
    for (const History& each : everyHistory()) {
        Life life = each.lived();
        QVERIFY(life.settle());
        QVERIFY(!life.settle());
    }
}

REELSHIFT_TEST(tst_encoderlife, TestEncoderLife, NoApplication)
#include "tst_encoderlife.moc"
