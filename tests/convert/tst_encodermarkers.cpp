#include "TestProgram.h"
#include "convert/EncoderMarkers.h"

#include <QTest>

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

constexpr double biggest = std::numeric_limits<double>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const QString progress = u"frame=   42 fps= 18 q=20.0 PSNR=Y:nan U:nan V:nan *:nan size=     512kB "
                         "time=00:00:01.76 bitrate=2377.1kbits/s speed=0.747x    \r"_s;
const QString summary = u"frame=  200 fps= 16 q=-1.0 LPSNR=Y:inf U:inf V:inf *:inf size=    4864kB "
                        "time=00:00:08.01 bitrate=4974.0kbits/s speed=0.654x    \n"_s;

const QString noPictureYet = u"frame=    0 fps=0.0 q=0.0 size=       0kB time=00:00:03.99 "
                             "bitrate=   0.1kbits/s speed=55.9x    \r"_s;
const QString noPicture =
    u"frame=    0 fps=0.0 q=0.0 LPSNR=Y:-nan U:-nan V:-nan *:-nan "
    "size=      36kB time=00:00:03.99 bitrate=  73.0kbits/s speed= 213x    \n"_s;
// 9.0, through the launcher.
const QString noPictureLater = u"frame=    0 fps=0.0 q=0.0 LPSNR=Y:nan U:nan V:nan *:nan "
                               "size=      36KiB time=00:00:04.00 bitrate=  72.9kbits/s "
                               "speed=63.9x elapsed=0:00:00.06    \n"_s;

} // namespace

/// What a piece of the encoder's output is taken to say.
class TestEncoderMarkers final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsMarks_data();
    void findsMarks();
    void writeFailureWithoutPosition_data();
    void writeFailureWithoutPosition();
    void positionOfAPiece_data();
    void positionOfAPiece();
    void pieceTooShortForAPositionThrows_data();
    void pieceTooShortForAPositionThrows();
    void percentageOfATotal_data();
    void percentageOfATotal();
    void percentageIsShownWithABlank();
};

void TestEncoderMarkers::findsMarks_data() {
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QString>("marks"); // p(osition) e(rror) i(nvalid) w(rite failure) s(ummary)
                                        // n(o picture)
    const auto row = [](const char* name, const QString& piece, const char* marks) {
        QTest::newRow(name) << piece << QString::fromLatin1(marks);
    };
    row("nothing", QString(), "");
    row("progress", progress, "p");
    row("summary", summary, "ps");
    row("progress and summary", progress + summary, "ps");
    row("error", u"Stream error\n"_s, "e");
    row("part of a word", u"terrors\n"_s, "e");
    row("Error is no error", u"Error while decoding stream #0:0\n"_s, "");
    row("ERROR is no error", u"ERROR\n"_s, "");
    row("Invalid", u"Invalid data found\n"_s, "i");
    row("invalid is not Invalid", u"--psnr used with psy on: results will be invalid!\n"_s, "");
    row("Time is no time", u"Time=00:00:01.00\n"_s, "");
    row("time with a blank", u"time =00:00:01.00\n"_s, "");
    row("part of a key", u"creation_time=2020\n"_s, "p");
    row("PSNR is no summary", u"PSNR=Y:nan\n"_s, "");
    row("Lsize is no summary", u"Lsize=  10kB time=00:00:01.00\n"_s, "p");
    row("lower case", u"lpsnr=\n"_s, "");
    row("write failure", u"av_interleaved_write_frame(): No space left on device\n"_s, "w");
    row("write failure alone", u"av_interleaved_write_frame(): Input/output error\n"_s, "ew");
    row("index", u"Error writing trailer of a.mp4: No space left on device\n"_s, "w");
    row("index, other reasons", u"Error writing trailer of a.mp4: File too large\n"_s, "w");
    row("end of the file", u"Error closing file a.mp4: Input/output error\n"_s, "ew");
    row("no space in lower case", u"no space left on device\n"_s, "");
    row("no picture", noPicture, "psn");
    row("no picture, later releases", noPictureLater, "psn");
    row("no picture, no position", u"frame=    0 fps=0.0 q=0.0 LPSNR=Y:nan time=N/A"_s, "psn");
    row("no picture, twice", noPictureYet + noPicture, "psn");
    row("none at first", noPictureYet + summary, "ps");
    row("none yet", noPictureYet, "p");
    row("none yet, and the next line begins", noPictureYet + u"LPSNR="_s, "ps");
    row("other text between", u"frame=    0 fps=0.0\n LPSNR=Y:nan time=N/A"_s, "ps");
    row("one picture", u"frame=    1 fps=0.0 q=-1.0 LPSNR=Y:inf"_s, "s");
    row("ten pictures", u"frame=   10 fps=0.0 q=-1.0 LPSNR=Y:inf"_s, "s");
    row("very many", u"frame=100000 fps=250 q=-1.0 LPSNR=Y:inf"_s, "s");
    row("as many without a rate", u"frame=0LPSNR="_s, "sn");
    row("no count", u"frame=LPSNR="_s, "s");
    row("a count that is none", u"frame= x0 LPSNR="_s, "s");
    row("sound alone", u"size=  18kB LPSNR=Y:nan"_s, "s");
    row("everything", u"error Invalid "_s + summary + u"No space left on device"_s, "peiws");
}

void TestEncoderMarkers::findsMarks() {
    QFETCH(const QString, piece);
    const EncoderMarkers marks = markersOf(piece);
    const QString found =
        QString(marks.hasPosition ? u"p"_s : QString()) + (marks.hasError ? u"e"_s : QString()) +
        (marks.hasInvalid ? u"i"_s : QString()) + (marks.hasWriteFailure ? u"w"_s : QString()) +
        (marks.hasSummary ? u"s"_s : QString()) + (marks.hasNoPicture ? u"n"_s : QString());
    QTEST(found, "marks");
}

void TestEncoderMarkers::writeFailureWithoutPosition_data() {
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("alone");
    const QString failure = u"av_interleaved_write_frame(): No space left on device\n"_s;
    QTest::newRow("alone") << failure << true;
    QTest::newRow("with what is harmless") << QString(u"Invalid timestamps\n"_s + failure) << true;
    QTest::newRow("with a position") << QString(failure + progress) << false;
    QTest::newRow("with an error") << QString(failure + u"error\n"_s) << false;
    QTest::newRow("no failure") << u"Conversion failed!\n"_s << false;
    QTest::newRow("nothing") << QString() << false;
}

void TestEncoderMarkers::writeFailureWithoutPosition() {
    QFETCH(const QString, piece);
    QTEST(markersOf(piece).isWriteFailureAlone(), "alone");
}

void TestEncoderMarkers::positionOfAPiece_data() {
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QString>("position");
    const auto row = [](const char* name, const QString& piece, const char* position) {
        QTest::newRow(name) << piece << QString::fromUtf8(position);
    };
    row("progress", progress, "00:00:01.76");
    row("the first of two", progress + summary, "00:00:01.76");
    row("at the start", u"time=01:02:03.45"_s, "01:02:03.45");
    row("absurd", u"time=-577014:32:22.77 bitrate=-0.0kbits/s"_s, "-577014:32:");
    row("N/A", u"size=N/A time=N/A bitrate=N/A"_s, "N/A bitrate");
    // Kept: the place of a missing mark wraps around to character 4.
    row("missing", u"0123456789abcdefgh error"_s, "456789abcde");
    row("missing, just long enough", u"0123456789abcde"_s, "456789abcde");
}

void TestEncoderMarkers::positionOfAPiece() {
    QFETCH(const QString, piece);
    QTEST(positionText(piece), "position");
}

void TestEncoderMarkers::pieceTooShortForAPositionThrows_data() {
    QTest::addColumn<QString>("piece");
    for (const char* piece :
         {"", "error", "0123456789abcd", "time=", "time=00:00:08.0", "size=N/A time=N/A"})
        QTest::addRow("'%s'", piece) << QString::fromUtf8(piece);
}

void TestEncoderMarkers::pieceTooShortForAPositionThrows() {
    QFETCH(const QString, piece);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)positionText(piece));
}

void TestEncoderMarkers::percentageOfATotal_data() {
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("total");
    QTest::addColumn<int>("percent");
    const auto row = [](const char* name, double position, double total, int percent) {
        QTest::newRow(name) << position << total << percent;
    };
    row("start", 0, 10, 0);
    row("cut towards zero", 3.799, 10, 37);
    row("whole", 10, 10, 100);
    row("more than whole", 12, 10, 120);
    row("negative", -13796, 10, 100);
    row("slightly negative", -0.0001, 10, 100);
    row("minus zero", -0.0, 10, 0);
    row("negative total", 5, -10, 100);
    row("total of zero", 5, 0, 0);
    row("nothing of nothing", 0, 0, 0);
    row("negative of nothing", -5, 0, 0);
    row("no number", notANumber, 10, 0);
    row("total is no number", 1, notANumber, 0);
    row("infinite", infinite, 10, 0);
    row("infinite total", 10, infinite, 0);
    row("more than an int holds", 1e12, 1, std::numeric_limits<int>::max());
    row("more than a double holds", biggest, 1, 0);
    row("tiny total", 1, std::numeric_limits<double>::denorm_min(), 0);
}

void TestEncoderMarkers::percentageOfATotal() {
    QFETCH(const double, position);
    QFETCH(const double, total);
    QTEST(percentage(position, total), "percent");
}

void TestEncoderMarkers::percentageIsShownWithABlank() {
    QCOMPARE(percentageText(37), u"37 %"_s);
    QCOMPARE(percentageText(0), u"0 %"_s);
    QCOMPARE(percentageText(2147483647), u"2147483647 %"_s);
}

REELSHIFT_TEST(tst_encodermarkers, TestEncoderMarkers, NoApplication)
#include "tst_encodermarkers.moc"
