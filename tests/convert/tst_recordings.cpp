#include "TestProgram.h"
#include "convert/EncoderLife.h"
#include "convert/EncoderMarkers.h"
#include "convert/PieceCutter.h"
#include "convert/Recordings.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(EncoderLife::Verdict)

namespace {

struct Heard {
    EncoderLife life;
    bool complaint = false; ///< a piece that leads to the conversion error
    bool failureAtEnd = false;
    bool failureWithoutPosition = false;
};

/// Reads a recording in reads of `size` bytes, as the reader of an encoder does.
Heard hear(const QByteArray& bytes, const QStringList& names, qsizetype size) {
    Heard heard;
    heard.life.launched();
    PieceCutter cutter(names);
    const auto take = [&](const EncoderPiece& piece) {
        const EncoderMarkers marks = markersOf(piece.text);
        heard.life.saw(marks.hasSummary, marks.finalPosition, marks.hasWriteFailure,
                       marks.hasNoPicture);
        heard.failureAtEnd = heard.failureAtEnd || piece.writeFailureAtEnd;
        if (isWriteFailureWithoutPosition(piece.text) && !piece.writeFailureAtEnd)
            heard.failureWithoutPosition = true;
        if ((marks.hasPosition || marks.hasError) && (marks.hasError || marks.hasInvalid))
            heard.complaint = true;
    };
    for (qsizetype at = 0; at < bytes.size(); at += size) {
        cutter.add(bytes.sliced(at, qMin(size, bytes.size() - at)));
        while (const auto piece = cutter.next(false))
            take(*piece);
    }
    while (const auto piece = cutter.next(true))
        take(*piece);
    if (const auto piece = cutter.last())
        take(*piece);
    return heard;
}

} // namespace

/// What the rules make of everything that a real encoder wrote, however it arrives.
class TestRecordings final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comeToAnOutcome_data();
    void comeToAnOutcome();
    void undecodablePicturesAreAComplaint();
    void writeFailureIsHandledWithAPosition();
    void lastBytesThatDoNotFitAreToldAtTheEnd();
};

void TestRecordings::comeToAnOutcome_data() {
    using V = EncoderLife::Verdict;
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<V>("verdict");
    QTest::addColumn<double>("position"); // -1: no summary
    const QString clip = u"/home/u/Videos/clip.mp4"_s;
    const auto row = [](const char* name, int status, const QStringList& names, V verdict,
                        double position) {
        QTest::newRow(name) << status << names << verdict << position;
    };
    row("finished", 0, {clip, u"/home/u/Converted/clip_HQ_1280x720.mp4"_s}, V::Converted, 8.01);
    row("finished-misleading-names", 0,
        {u"/home/u/Invalid error/time=\u00e9.mp4"_s,
         u"/home/u/Invalid error/LPSNR= av_interleaved_write_frame.mp4"_s},
        V::Converted, 8.01);
    row("disk-full", 1, {clip, u"/home/u/full/clip_Pro_1280x720.mp4"_s}, V::WriteFailed, 1.64);
    row("trailer-full", 0, {clip, u"/home/u/full/clip_HQ_1280x720.mp4"_s}, V::WriteFailed, 8.01);
    row("close-full", 0, {clip, u"/home/u/full/clip_HQ_1280x720.mp4"_s}, V::WriteFailed, 8.01);
    row("no-picture", 0,
        {u"/home/u/Videos/locked.mp4"_s, u"/home/u/Converted/locked_HQ_1280x720.mp4"_s}, V::Failed,
        3.99);
    row("terminated", 255, {clip, u"/home/u/Converted/clip_Pro_1280x720.mp4"_s}, V::Failed, -2);
    row("no-such-sound", 1,
        {u"/home/u/Videos/pcm.mkv"_s, u"/home/u/Converted/pcm_HQ_1280x720.mp4"_s}, V::Failed, -1);
    row("not-a-movie", 1,
        {u"/home/u/Videos/noise.mp4"_s, u"/home/u/Converted/noise_HQ_1280x720.mp4"_s}, V::Failed,
        -1);
    row("usage", 1, {}, V::Failed, -1);
}

void TestRecordings::comeToAnOutcome() {
    QFETCH(const int, status);
    QFETCH(const QStringList, names);
    QFETCH(const EncoderLife::Verdict, verdict);
    QFETCH(const double, position);
    const QByteArray bytes = Recordings::bytes(QTest::currentDataTag());
    for (const qsizetype size : {bytes.size(), qsizetype{4096}, qsizetype{97}, qsizetype{1}}) {
        Heard heard = hear(bytes, names, size);
        QVERIFY(!heard.complaint);
        QVERIFY(!heard.failureWithoutPosition);
        QCOMPARE(heard.life.isSummarySeen(), position != -1);
        if (position >= 0)
            QCOMPARE(heard.life.finalPosition(), std::optional(position));
        heard.life.ended({ProcessEnd::How::Exited, status});
        QCOMPARE(heard.life.verdict(), verdict);
    }
}

void TestRecordings::undecodablePicturesAreAComplaint() {
    const QByteArray bytes = Recordings::bytes("damaged");
    const Heard heard = hear(
        bytes, {u"/home/u/Videos/damaged.mp4"_s, u"/home/u/Converted/damaged_HQ_1280x720.mp4"_s},
        bytes.size());
    QVERIFY(heard.complaint);
    QVERIFY(heard.life.isSummarySeen());
}

void TestRecordings::writeFailureIsHandledWithAPosition() {
    const QByteArray bytes = Recordings::bytes("disk-full");
    // The failure is a write of its own, some time before the one with the summary.
    const qsizetype start = bytes.lastIndexOf("av_interleaved_write_frame");
    const qsizetype summary = bytes.indexOf("frame=   40");
    QVERIFY(start > 0 && summary > start);
    PieceCutter cutter({});
    cutter.add(bytes.first(start));
    while (const auto piece = cutter.next(false))
        QVERIFY(!markersOf(piece->text).hasWriteFailure);
    cutter.add(bytes.sliced(start, summary - start));
    QVERIFY(!cutter.next(false));
    cutter.add(bytes.sliced(summary));
    const auto piece = cutter.next(false);
    QVERIFY(piece);
    const EncoderMarkers marks = markersOf(piece->text);
    QVERIFY(marks.hasWriteFailure && marks.hasPosition && marks.hasSummary);
    QVERIFY(!piece->writeFailureAtEnd);
    QCOMPARE(positionText(piece->text), u"00:00:01.64"_s);
}

void TestRecordings::lastBytesThatDoNotFitAreToldAtTheEnd() {
    const QByteArray bytes = Recordings::bytes("close-full");
    const Heard heard =
        hear(bytes, {u"/home/u/Videos/clip.mp4"_s, u"/home/u/full/clip_HQ_1280x720.mp4"_s}, 97);
    QVERIFY(heard.failureAtEnd);
    QVERIFY(heard.life.isSummarySeen());
}

REELSHIFT_TEST(tst_recordings, TestRecordings, NoApplication)
#include "tst_recordings.moc"
