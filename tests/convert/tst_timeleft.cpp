#include "TestProgram.h"
#include "convert/TimeLeft.h"
#include "convert/TimeLeftText.h"
#include "platform/LocalizedStrings.h"

#include <QCoreApplication>
#include <QTest>

#include <limits>

using namespace std::chrono_literals;

namespace {

using Known = std::optional<double>;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
/// Behind the beginning, and no way at all.
constexpr double first = std::numeric_limits<double>::min();

TimeLeft begun(TimeLeft::Moment now, double length) {
    TimeLeft time;
    time.movieBegins(now, length);
    time.reached(now, first);
    return time;
}

} // namespace

Q_DECLARE_METATYPE(Known)

/// The time left, by the speed seen so far.
class TestTimeLeft final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneMovie_data();
    void oneMovie();
    void slowBeginning();
    void pausedTimeCountsForNothing();
    void pausedAtOnce();
    void resumedTwice();
    void nextMovieBeginsWithTheSpeedOfTheRun();
    void failedMovieCountsAsFarAsItCame();
    void speedIsTheWholeRuns();
    void nothingBetweenMovies();
    void clockThatStands();
    void share_data();
    void share();
    void durations_data();
    void durations();
    void bothLinesOrNone();
};

void TestTimeLeft::oneMovie_data() {
    QTest::addColumn<double>("length");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<double>("position");
    QTest::addColumn<Known>("waiting");
    QTest::addColumn<Known>("ofMovie");
    QTest::addColumn<Known>("ofRun");
    const Known none;

    QTest::newRow("halfway") << 100.0 << 10'000 << 50.0 << Known(0) << Known(10) << Known(10);
    QTest::newRow("slow") << 100.0 << 10'000 << 1.0 << Known(0) << Known(990) << Known(990);
    QTest::newRow("others wait") << 100.0 << 10'000 << 50.0 << Known(200) << Known(10) << Known(50);
    QTest::newRow("others of unknown length")
        << 100.0 << 10'000 << 50.0 << none << Known(10) << none;
    QTest::newRow("its end") << 100.0 << 10'000 << 100.0 << Known(0) << Known(0) << Known(0);
    QTest::newRow("past its end") << 100.0 << 10'000 << 105.0 << Known(0) << Known(0) << Known(0);
    QTest::newRow("too early") << 100.0 << 2'999 << 50.0 << Known(0) << none << none;
    QTest::newRow("just not too early")
        << 100.0 << 3'000 << 50.0 << Known(0) << Known(3) << Known(3);
    QTest::newRow("no position yet") << 100.0 << 10'000 << 0.0 << Known(0) << none << none;
    QTest::newRow("unknown length") << 0.0 << 10'000 << 50.0 << Known(0) << none << none;
    QTest::newRow("absurd length") << noNumber << 10'000 << 50.0 << Known(0) << none << none;
    QTest::newRow("endless length") << infinity << 10'000 << 50.0 << Known(0) << none << none;
    QTest::newRow("negative length") << -1.0 << 10'000 << 50.0 << Known(0) << none << none;
    QTest::newRow("negative position") << 100.0 << 10'000 << -5.0 << Known(0) << none << none;
    QTest::newRow("absurd position") << 100.0 << 10'000 << noNumber << Known(0) << none << none;
}

void TestTimeLeft::oneMovie() {
    QFETCH(double, length);
    QFETCH(int, milliseconds);
    QFETCH(double, position);
    QFETCH(Known, waiting);
    TimeLeft time;
    QCOMPARE(time.ofMovie(), Known());
    time.movieBegins(7h, length);
    time.reached(7h, first);
    time.reached(7h + std::chrono::milliseconds(milliseconds), position);
    QTEST(time.ofMovie(), "ofMovie");
    QTEST(time.ofRun(waiting), "ofRun");
}

void TestTimeLeft::slowBeginning() {
    TimeLeft time;
    time.movieBegins(0s, 100);
    time.reached(20s, 0);
    time.reached(21s, 0.5);
    QCOMPARE(time.ofMovie(), Known()); // not: more than an hour
    time.reached(23s, 1);
    QCOMPARE(time.ofMovie(), Known());
    time.reached(26s, 10.5); // 10 s in 5 s
    QCOMPARE(time.ofMovie(), Known(89.5 / 2));
    QCOMPARE(time.ofRun(100), Known(89.5 / 2 + 50));
}

void TestTimeLeft::pausedTimeCountsForNothing() {
    TimeLeft time = begun(0s, 100);
    time.reached(4s, 10);
    time.pause(5s);
    time.resume(1h);
    time.reached(1h + 5s, 25); // 10 s of work
    QCOMPARE(time.ofMovie(), Known(30));
    time.pause(1h + 5s);
    time.resume(2h);
    time.reached(2h + 10s, 50);
    QCOMPARE(time.ofMovie(), Known(20));
    QCOMPARE(time.ofRun(100), Known(60));
}

void TestTimeLeft::pausedAtOnce() {
    TimeLeft time = begun(0s, 100);
    time.pause(0s);
    time.reached(10s, 1); // what was in the pipe
    QCOMPARE(time.ofMovie(), Known());
    time.resume(1h);
    time.reached(1h + 10s, 50);
    QCOMPARE(time.ofMovie(), Known(10));
}

void TestTimeLeft::resumedTwice() {
    TimeLeft time = begun(0s, 100);
    time.resume(5s);
    time.reached(10s, 50);
    QCOMPARE(time.ofMovie(), Known(10));
}

void TestTimeLeft::nextMovieBeginsWithTheSpeedOfTheRun() {
    TimeLeft time = begun(0s, 100);
    time.reached(50s, 100);
    time.movieEnds();
    time.movieBegins(60s, 10); // a question in between is no work
    time.reached(60s, first);
    time.reached(61s, 2);
    QCOMPARE(time.ofMovie(), Known());
    QCOMPARE(time.ofRun(0), Known(8 * 51.0 / 102));
    time.reached(64s, 4);
    QCOMPARE(time.ofMovie(), Known(6));
    QCOMPARE(time.ofRun(0), Known(6));
}

void TestTimeLeft::failedMovieCountsAsFarAsItCame() {
    TimeLeft time;
    time.movieBegins(0s, 1000);
    time.reached(20s, 10);
    time.movieEnds();
    time.movieBegins(30s, 10);
    time.reached(30s, 0);
    QCOMPARE(time.ofRun(0), Known(20));
}

void TestTimeLeft::speedIsTheWholeRuns() {
    TimeLeft time;
    time.movieBegins(0s, 10); // slow: 4 s a second
    time.reached(40s, 10);
    time.movieEnds();
    time.movieBegins(40s, 20); // fast: 1 s a second
    time.reached(40s, first);
    time.reached(50s, 10);
    QCOMPARE(time.ofMovie(), Known(10));
    QCOMPARE(time.ofRun(100), Known(10 + 100 * 2.5));
}

void TestTimeLeft::nothingBetweenMovies() {
    TimeLeft time;
    time.movieBegins(0s, 10);
    time.reached(10s, 5);
    time.movieEnds();
    QCOMPARE(time.ofMovie(), Known());
    QCOMPARE(time.ofRun(10), Known());
}

void TestTimeLeft::clockThatStands() {
    TimeLeft time;
    time.movieBegins(10s, 10);
    time.reached(10s, 5);
    QCOMPARE(time.ofMovie(), Known());
    time.reached(9s, 6);
    QCOMPARE(time.ofMovie(), Known());
}

void TestTimeLeft::share_data() {
    QTest::addColumn<double>("done");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("position");
    QTest::addColumn<Known>("waiting");
    QTest::addColumn<double>("share");

    QTest::newRow("one movie") << 0.0 << 10.0 << 5.0 << Known(0) << 0.5;
    QTest::newRow("the first of two") << 0.0 << 10.0 << 5.0 << Known(30) << 0.125;
    QTest::newRow("the last of two") << 30.0 << 10.0 << 5.0 << Known(0) << 0.875;
    QTest::newRow("past its end") << 0.0 << 10.0 << 11.0 << Known(0) << 1.0;
    QTest::newRow("nothing known") << 0.0 << 0.0 << 5.0 << Known() << 0.0;
    QTest::newRow("others of unknown length") << 0.0 << 10.0 << 5.0 << Known() << 0.5;
}

void TestTimeLeft::share() {
    QFETCH(double, done);
    QFETCH(double, length);
    QFETCH(double, position);
    QFETCH(Known, waiting);
    TimeLeft time;
    time.movieIsDone(done);
    time.movieBegins(0s, length);
    time.reached(1s, position);
    QTEST(time.share(waiting), "share");
}

void TestTimeLeft::durations_data() {
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    const auto row = [](double seconds, const char* text) {
        QTest::addRow("%g", seconds) << seconds << QString::fromUtf8(text);
    };
    row(0, "0 s");
    row(0.1, "1 s");
    row(59, "59 s");
    row(59.5, "1 min");
    row(89, "1 min");
    row(90, "2 min");
    row(3569, "59 min");
    row(3570, "1 h 0 min");
    row(7500, "2 h 5 min");
    row(1e6, "277 h 47 min");
    row(3.6e6, "");
    row(1e300, "");
    row(noNumber, "");
    row(infinity, "");
    row(-1, "");
}

void TestTimeLeft::durations() {
    const StringTable strings(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale(QLocale::English));
    QFETCH(double, seconds);
    QTEST(durationText(seconds), "text");
}

void TestTimeLeft::bothLinesOrNone() {
    const StringTable strings(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale(QLocale::English));
    QCOMPARE(timeLeftText(TimeLeft(), 0), QString());
    TimeLeft time = begun(0s, 100);
    time.reached(10s, 50);
    QCOMPARE(timeLeftText(time, 500),
             QStringLiteral("Time left for this movie: 10 s\nTime left for all movies: 2 min"));
    QCOMPARE(timeLeftText(time, {}), QStringLiteral("Time left for this movie: 10 s"));
}

REELSHIFT_TEST(tst_timeleft, TestTimeLeft, QCoreApplication)
#include "tst_timeleft.moc"
