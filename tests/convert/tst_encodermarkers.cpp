#include "TestProgram.h"
#include "convert/EncoderMarkers.h"

#include <QTest>

#include <limits>
#include <stdexcept>

namespace {

constexpr double biggest = std::numeric_limits<double>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const QString progress =
    QStringLiteral("frame=   42 fps= 18 q=20.0 PSNR=Y:nan U:nan V:nan *:nan size=     512kB "
                   "time=00:00:01.76 bitrate=2377.1kbits/s speed=0.747x    \r");
const QString summary =
    QStringLiteral("frame=  200 fps= 16 q=-1.0 LPSNR=Y:inf U:inf V:inf *:inf size=    4864kB "
                   "time=00:00:08.01 bitrate=4974.0kbits/s speed=0.654x    \n");

const QString noPictureYet =
    QStringLiteral("frame=    0 fps=0.0 q=0.0 size=       0kB time=00:00:03.99 "
                   "bitrate=   0.1kbits/s speed=55.9x    \r");
const QString noPicture =
    QStringLiteral("frame=    0 fps=0.0 q=0.0 LPSNR=Y:-nan U:-nan V:-nan *:-nan "
                   "size=      36kB time=00:00:03.99 bitrate=  73.0kbits/s speed= 213x    \n");
// 9.0, through the launcher.
const QString noPictureLater =
    QStringLiteral("frame=    0 fps=0.0 q=0.0 LPSNR=Y:nan U:nan V:nan *:nan "
                   "size=      36KiB time=00:00:04.00 bitrate=  72.9kbits/s "
                   "speed=63.9x elapsed=0:00:00.06    \n");

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
    row("error", QStringLiteral("Stream error\n"), "e");
    row("part of a word", QStringLiteral("terrors\n"), "e");
    row("Error is no error", QStringLiteral("Error while decoding stream #0:0\n"), "");
    row("ERROR is no error", QStringLiteral("ERROR\n"), "");
    row("Invalid", QStringLiteral("Invalid data found\n"), "i");
    row("invalid is not Invalid",
        QStringLiteral("--psnr used with psy on: results will be invalid!\n"), "");
    row("Time is no time", QStringLiteral("Time=00:00:01.00\n"), "");
    row("time with a blank", QStringLiteral("time =00:00:01.00\n"), "");
    row("part of a key", QStringLiteral("creation_time=2020\n"), "p");
    row("PSNR is no summary", QStringLiteral("PSNR=Y:nan\n"), "");
    row("Lsize is no summary", QStringLiteral("Lsize=  10kB time=00:00:01.00\n"), "p");
    row("lower case", QStringLiteral("lpsnr=\n"), "");
    row("write failure", QStringLiteral("av_interleaved_write_frame(): No space left on device\n"),
        "w");
    row("write failure alone", QStringLiteral("av_interleaved_write_frame(): Input/output error\n"),
        "ew");
    row("index", QStringLiteral("Error writing trailer of a.mp4: No space left on device\n"), "w");
    row("index, other reasons", QStringLiteral("Error writing trailer of a.mp4: File too large\n"),
        "w");
    row("end of the file", QStringLiteral("Error closing file a.mp4: Input/output error\n"), "ew");
    row("no space in lower case", QStringLiteral("no space left on device\n"), "");
    row("no picture", noPicture, "psn");
    row("no picture, later releases", noPictureLater, "psn");
    row("no picture, no position", QStringLiteral("frame=    0 fps=0.0 q=0.0 LPSNR=Y:nan time=N/A"),
        "psn");
    row("no picture, twice", noPictureYet + noPicture, "psn");
    row("none at first", noPictureYet + summary, "ps");
    row("none yet", noPictureYet, "p");
    row("none yet, and the next line begins", noPictureYet + QStringLiteral("LPSNR="), "ps");
    row("other text between", QStringLiteral("frame=    0 fps=0.0\n LPSNR=Y:nan time=N/A"), "ps");
    row("one picture", QStringLiteral("frame=    1 fps=0.0 q=-1.0 LPSNR=Y:inf"), "s");
    row("ten pictures", QStringLiteral("frame=   10 fps=0.0 q=-1.0 LPSNR=Y:inf"), "s");
    row("very many", QStringLiteral("frame=100000 fps=250 q=-1.0 LPSNR=Y:inf"), "s");
    row("as many without a rate", QStringLiteral("frame=0LPSNR="), "sn");
    row("no count", QStringLiteral("frame=LPSNR="), "s");
    row("a count that is none", QStringLiteral("frame= x0 LPSNR="), "s");
    row("sound alone", QStringLiteral("size=  18kB LPSNR=Y:nan"), "s");
    row("everything",
        QStringLiteral("error Invalid ") + summary + QStringLiteral("No space left on device"),
        "peiws");
}

void TestEncoderMarkers::findsMarks() {
    QFETCH(const QString, piece);
    const EncoderMarkers marks = markersOf(piece);
    const QString found = QString(marks.hasPosition ? QStringLiteral("p") : QString()) +
                          (marks.hasError ? QStringLiteral("e") : QString()) +
                          (marks.hasInvalid ? QStringLiteral("i") : QString()) +
                          (marks.hasWriteFailure ? QStringLiteral("w") : QString()) +
                          (marks.hasSummary ? QStringLiteral("s") : QString()) +
                          (marks.hasNoPicture ? QStringLiteral("n") : QString());
    QTEST(found, "marks");
}

void TestEncoderMarkers::writeFailureWithoutPosition_data() {
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("alone");
    const QString failure =
        QStringLiteral("av_interleaved_write_frame(): No space left on device\n");
    QTest::newRow("alone") << failure << true;
    QTest::newRow("with what is harmless")
        << QString(QStringLiteral("Invalid timestamps\n") + failure) << true;
    QTest::newRow("with a position") << QString(failure + progress) << false;
    QTest::newRow("with an error") << QString(failure + QStringLiteral("error\n")) << false;
    QTest::newRow("no failure") << QStringLiteral("Conversion failed!\n") << false;
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
    row("at the start", QStringLiteral("time=01:02:03.45"), "01:02:03.45");
    row("absurd", QStringLiteral("time=-577014:32:22.77 bitrate=-0.0kbits/s"), "-577014:32:");
    row("N/A", QStringLiteral("size=N/A time=N/A bitrate=N/A"), "N/A bitrate");
    // Kept: the place of a missing mark wraps around to character 4.
    row("missing", QStringLiteral("0123456789abcdefgh error"), "456789abcde");
    row("missing, just long enough", QStringLiteral("0123456789abcde"), "456789abcde");
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
    QCOMPARE(percentageText(37), QStringLiteral("37 %"));
    QCOMPARE(percentageText(0), QStringLiteral("0 %"));
    QCOMPARE(percentageText(2147483647), QStringLiteral("2147483647 %"));
}

REELSHIFT_TEST(tst_encodermarkers, TestEncoderMarkers, NoApplication)
#include "tst_encodermarkers.moc"
