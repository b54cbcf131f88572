#include "TestProgram.h"
#include "convert/EncoderMarkers.h"
#include "convert/JobNews.h"

#include <QTest>

#include <atomic>
#include <future>

using namespace std::chrono_literals;

/// What the threads of a job tell each other, and whom it wakes.
class TestJobNews final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstWishToEndCounts();
    void aSuspendedEncoderIsWaitedFor_data();
    void aSuspendedEncoderIsWaitedFor();
    void aWaitLooksAgainWhenItIsWoken();
    void aWaitEndsWithTheJob_data();
    void aWaitEndsWithTheJob();
    void wholeIsWhatASummarySays_data();
    void wholeIsWhatASummarySays();
    void theLastWordIsWaitedFor();
};

namespace {

constexpr auto longestNews = 20s;

template <typename Result> bool hasCome(const std::future<Result>& result) {
    return result.wait_for(longestNews) == std::future_status::ready;
}

/// Runs on a thread of its own until something happens.
template <typename Wait> auto waiting(Wait wait) {
    return std::async(std::launch::async, std::move(wait));
}

EncoderPiece pieceWith(const EncoderMarkers& marks, bool hasDamage = false) {
    EncoderPiece piece;
    piece.marks = marks;
    piece.hasDamage = hasDamage;
    return piece;
}

} // namespace

void TestJobNews::theFirstWishToEndCounts() {
    JobNews news;
    QVERIFY(!news.endAskedAt());
    news.askForEnd();
    const auto first = news.endAskedAt();
    QVERIFY(first);
    news.askForEnd();
    QVERIFY(news.endAskedAt() == first);
}

void TestJobNews::aSuspendedEncoderIsWaitedFor_data() {
    QTest::addColumn<QString>("until");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("resumed") << QStringLiteral("resumed") << true;
    QTest::newRow("asked to end") << QStringLiteral("ended") << true;
    QTest::newRow("the program closes") << QStringLiteral("closed") << false;
}

void TestJobNews::aSuspendedEncoderIsWaitedFor() {
    QFETCH(const QString, until);
    QFETCH(const bool, goesOn);
    JobNews news;
    QVERIFY(news.waitWhileSuspended()); // it is not
    news.setSuspended(true);
    auto result = waiting([&] { return news.waitWhileSuspended(); });
    QCOMPARE(result.wait_for(20ms), std::future_status::timeout);
    if (until == QStringLiteral("resumed"))
        news.setSuspended(false);
    else if (until == QStringLiteral("ended"))
        news.askForEnd();
    else
        news.close();
    QVERIFY(hasCome(result));
    QCOMPARE(result.get(), goesOn);
}

void TestJobNews::aWaitLooksAgainWhenItIsWoken() {
    JobNews news;
    std::atomic<bool> isDone = false;
    auto result = waiting([&] { news.waitUntil([&] { return isDone.load(); }); });
    news.wake();
    QCOMPARE(result.wait_for(20ms), std::future_status::timeout);
    isDone = true;
    news.wake();
    QVERIFY(hasCome(result));
}

void TestJobNews::aWaitEndsWithTheJob_data() {
    QTest::addColumn<bool>("closes");
    QTest::newRow("asked to end") << false;
    QTest::newRow("the program closes") << true;
}

void TestJobNews::aWaitEndsWithTheJob() {
    QFETCH(const bool, closes);
    JobNews news;
    auto result = waiting([&] { news.waitUntil([] { return false; }); });
    if (closes)
        news.close();
    else
        news.askForEnd();
    QVERIFY(hasCome(result));
}

void TestJobNews::wholeIsWhatASummarySays_data() {
    QTest::addColumn<bool>("summary");
    QTest::addColumn<bool>("failure");
    QTest::addColumn<bool>("damage");
    QTest::addColumn<bool>("isWhole"); // when the last word was read
    QTest::newRow("summary") << true << false << false << true;
    QTest::newRow("no summary") << false << false << false << false;
    QTest::newRow("write failure") << true << true << false << false;
    QTest::newRow("damage") << true << false << true << false;
}

void TestJobNews::wholeIsWhatASummarySays() {
    QFETCH(const bool, summary);
    QFETCH(const bool, failure);
    QFETCH(const bool, damage);
    QFETCH(const bool, isWhole);
    JobNews news;
    QVERIFY(news.allowWholeFile()); // nothing was read yet that speaks against it
    news.noteSaid(pieceWith({.hasWriteFailure = failure}, damage));
    QCOMPARE(news.allowWholeFile(), !failure && !damage);
    news.noteSaid(pieceWith({.hasSummary = summary}));
    news.noteSaid(pieceWith({}));
    news.noteLastWord();
    QCOMPARE(news.allowWholeFile(), isWhole);
}

void TestJobNews::theLastWordIsWaitedFor() {
    JobNews news;
    QVERIFY(!news.waitForLastWord(1ms));
    auto result = waiting([&] { return news.waitForLastWord(longestNews); });
    news.noteLastWord();
    QVERIFY(hasCome(result));
    QVERIFY(result.get());
}

REELSHIFT_TEST(tst_jobnews, TestJobNews, NoApplication)
#include "tst_jobnews.moc"
