#include "TestProgram.h"
#include "convert/EncoderMarkers.h"
#include "convert/PieceCutter.h"
#include "convert/Recordings.h"
#include "media/ShortReport.h"

#include <QTest>

namespace {

const QByteArray failure = "av_interleaved_write_frame(): No space left on device\n";
const QByteArray position = "frame=    9 fps=0.0 q=0.0 size=       0kB time=00:00:00.44 speed=1x\r";

void takeAll(PieceCutter& cutter, bool flush, QStringList& pieces) {
    while (const auto piece = cutter.next(flush))
        pieces += piece->text;
}

QStringList piecesOf(PieceCutter& cutter, const QByteArray& bytes, bool flush = false) {
    QStringList pieces;
    cutter.add(bytes);
    takeAll(cutter, flush, pieces);
    return pieces;
}

/// What is left at the end of an encoder.
QStringList restOf(PieceCutter& cutter) {
    QStringList pieces;
    takeAll(cutter, true, pieces);
    if (const auto piece = cutter.last())
        pieces += piece->text;
    return pieces;
}

} // namespace

/// How the encoder's output is cut before it is looked at.
class TestPieceCutter final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsNoPiece();
    void pieceEndsAfterALineEnd_data();
    void pieceEndsAfterALineEnd();
    void everythingThatHasComeIsOnePiece();
    void restIsTakenByAFlush();
    void headerIsAPieceOfItsOwn_data();
    void headerIsAPieceOfItsOwn();
    void headerArrivesInSeveralPieces();
    void middleOfALineIsNoProgress();
    void onlyTheFirstProgressLineIsApart();
    void nameWithALineEndDoesNotEndTheHeader();
    void writeFailureWaitsForAPosition();
    void writeFailureWaitsThroughSeveralPieces();
    void writeFailureWithAnErrorDoesNotWait();
    void writeFailureBeforeTheFirstProgressLine();
    void writeFailureAtTheEnd();
    void complaintsAboutTheMovieAreFound_data();
    void complaintsAboutTheMovieAreFound();
    void complaintIsTheOneOfItsPiece();
    void complaintInAnEndlessLine();
    void charactersAreNotCut_data();
    void charactersAreNotCut();
    void bytesThatAreNoTextPass();
    void endlessLineIsCut();
    void namesAndMetadataAreBlanked_data();
    void namesAndMetadataAreBlanked();
    void cutAnywhereHoldsTheSameText_data();
    void cutAnywhereHoldsTheSameText();
    void flushAnywhereShowsNothingMore_data();
    void flushAnywhereShowsNothingMore();
    void byteByByteHoldsTheSameText_data();
    void byteByByteHoldsTheSameText();
};

void TestPieceCutter::nothingIsNoPiece() {
    PieceCutter cutter({});
    QVERIFY(!cutter.next(false));
    QVERIFY(!cutter.next(true));
    QVERIFY(!cutter.last());
    QVERIFY(!cutter.hasRest());
    cutter.add({});
    QVERIFY(!cutter.next(true));
    QVERIFY(!cutter.hasRest());
}

void TestPieceCutter::pieceEndsAfterALineEnd_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<bool>("rest");
    const auto row = [](const char* name, const char* bytes, const QStringList& pieces, bool rest) {
        QTest::newRow(name) << QByteArray(bytes) << pieces << rest;
    };
    row("no line end", "abc", {}, true);
    row("line feed", "abc\n", {QStringLiteral("abc\n")}, false);
    row("carriage return", "abc\r", {QStringLiteral("abc\r")}, false);
    row("both", "a\rb\nc\rd", {QStringLiteral("a\rb\nc\r")}, true);
    row("line feed last", "a\rb\nc", {QStringLiteral("a\rb\n")}, true);
    row("pair", "a\r\nb", {QStringLiteral("a\r\n")}, true);
    row("only line ends", "\n\r\n", {QStringLiteral("\n\r\n")}, false);
}

void TestPieceCutter::pieceEndsAfterALineEnd() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, rest);
    PieceCutter cutter({});
    QTEST(piecesOf(cutter, bytes), "pieces");
    QCOMPARE(cutter.hasRest(), rest);
}

void TestPieceCutter::everythingThatHasComeIsOnePiece() {
    PieceCutter cutter({});
    cutter.add("a\nb");
    cutter.add("\nc\r");
    cutter.add("d");
    QCOMPARE(piecesOf(cutter, "\n"), QStringList(QStringLiteral("a\nb\nc\rd\n")));
}

void TestPieceCutter::restIsTakenByAFlush() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, "a\nb"), QStringList(QStringLiteral("a\n")));
    QVERIFY(cutter.hasRest());
    QCOMPARE(restOf(cutter), QStringList(QStringLiteral("b")));
    QVERIFY(!cutter.hasRest());
}

void TestPieceCutter::headerIsAPieceOfItsOwn_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("pieces");
    const auto row = [](const char* name, const char* bytes, const QStringList& pieces) {
        QTest::newRow(name) << QByteArray(bytes) << pieces;
    };
    row("after a line feed", "banner\nInvalid\nframe=1\r",
        {QStringLiteral("banner\nInvalid\n"), QStringLiteral("frame=1\r")});
    row("after a carriage return", "a\rframe=1\r",
        {QStringLiteral("a\r"), QStringLiteral("frame=1\r")});
    row("no header", "frame=1\rb\n", {QStringLiteral("frame=1\rb\n")});
    row("in a line", "the frame=1\n", {QStringLiteral("the frame=1\n")});
    row("in a line and at the start of one", "a frame=1\nframe=2\r",
        {QStringLiteral("a frame=1\n"), QStringLiteral("frame=2\r")});
    row("unfinished progress line", "a\nframe=1", {QStringLiteral("a\n")});
    row("no progress line", "a\nb\n", {QStringLiteral("a\nb\n")});
    row("another case", "a\nFrame=1\n", {QStringLiteral("a\nFrame=1\n")});
}

void TestPieceCutter::headerIsAPieceOfItsOwn() {
    QFETCH(const QByteArray, bytes);
    PieceCutter cutter({});
    QTEST(piecesOf(cutter, bytes), "pieces");
}

void TestPieceCutter::headerArrivesInSeveralPieces() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, "a\nb\n"), QStringList(QStringLiteral("a\nb\n")));
    QCOMPARE(piecesOf(cutter, "c\nfra"), QStringList(QStringLiteral("c\n")));
    QCOMPARE(piecesOf(cutter, "me=1\rframe=2\r"),
             QStringList(QStringLiteral("frame=1\rframe=2\r")));
}

void TestPieceCutter::middleOfALineIsNoProgress() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, "key  ", true), QStringList(QStringLiteral("key  ")));
    QCOMPARE(piecesOf(cutter, "frame=1\nInvalid\nframe=2\r"),
             QStringList({QStringLiteral("frame=1\nInvalid\n"), QStringLiteral("frame=2\r")}));
    // A progress line that was cut by a flush is none any more.
    PieceCutter cut({});
    QCOMPARE(piecesOf(cut, "fra", true), QStringList(QStringLiteral("fra")));
    QCOMPARE(piecesOf(cut, "me=1\rframe=2\r"),
             QStringList({QStringLiteral("me=1\r"), QStringLiteral("frame=2\r")}));
}

void TestPieceCutter::onlyTheFirstProgressLineIsApart() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, "a\nframe=1\rError\nframe=2\r"),
             QStringList({QStringLiteral("a\n"), QStringLiteral("frame=1\rError\nframe=2\r")}));
    QCOMPARE(piecesOf(cutter, "b\nframe=3\r"), QStringList(QStringLiteral("b\nframe=3\r")));
}

void TestPieceCutter::nameWithALineEndDoesNotEndTheHeader() {
    const QString source = QStringLiteral("/home/u/Videos/new\nline 'q' \"dq\" ctl\x01\x1b.mp4");
    const QString output = QStringLiteral("/home/u/Converted/new\nframe= error\x01.mp4");
    PieceCutter cutter({source, output});
    const QStringList pieces = piecesOf(cutter, Recordings::reportBytes("encode-newline"));
    QCOMPARE(pieces.size(), 2);
    QVERIFY(pieces[0].contains(QStringLiteral("Press [q] to stop")));
    QVERIFY(pieces[1].startsWith(QStringLiteral("frame=")));
    QVERIFY(pieces[1].contains(QStringLiteral("time=")));
    QVERIFY(!markersOf(pieces[0]).hasError);
}

void TestPieceCutter::writeFailureWaitsForAPosition() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, position), QStringList(QString::fromUtf8(position)));
    QCOMPARE(piecesOf(cutter, failure), QStringList());
    QVERIFY(!cutter.hasRest());
    QCOMPARE(piecesOf(cutter, position), QStringList(QString::fromUtf8(failure + position)));
    QVERIFY(!cutter.last());
}

void TestPieceCutter::writeFailureWaitsThroughSeveralPieces() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, failure), QStringList());
    QCOMPARE(piecesOf(cutter, "    Last message repeated 17 times\n"), QStringList());
    QCOMPARE(piecesOf(cutter, "Error writing tr", true), QStringList());
    QCOMPARE(piecesOf(cutter, "ailer\n"), QStringList());
    const QStringList joined = piecesOf(cutter, position);
    QCOMPARE(joined.size(), 1);
    QCOMPARE(joined[0], QString::fromUtf8(failure + "    Last message repeated 17 times\n" +
                                          "Error writing trailer\n" + position));
}

void TestPieceCutter::writeFailureWithAnErrorDoesNotWait() {
    PieceCutter cutter({});
    const QByteArray text = "av_interleaved_write_frame(): Input/output error\n";
    QCOMPARE(piecesOf(cutter, text), QStringList(QString::fromUtf8(text)));
}

void TestPieceCutter::writeFailureBeforeTheFirstProgressLine() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, "banner\n" + failure), QStringList());
    QCOMPARE(piecesOf(cutter, position),
             QStringList(QString::fromUtf8("banner\n" + failure + position)));
}

void TestPieceCutter::writeFailureAtTheEnd() {
    PieceCutter cutter({});
    QCOMPARE(piecesOf(cutter, position).size(), 1);
    QCOMPARE(piecesOf(cutter, failure), QStringList());
    const auto piece = cutter.last();
    QVERIFY(piece);
    QCOMPARE(piece->text, QString::fromUtf8(failure));
    QVERIFY(piece->writeFailureAtEnd);
    QVERIFY(!cutter.last());
    // A position that still comes makes it an ordinary piece.
    cutter.add(failure + position);
    const auto joined = cutter.next(true);
    QVERIFY(joined);
    QVERIFY(!joined->writeFailureAtEnd);
}

void TestPieceCutter::complaintsAboutTheMovieAreFound_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("found");
    const QByteArray opened = "Input #0, mov, from '/v/a.mp4':\n";
    const QByteArray begun = opened + "Stream mapping:\n  Stream #0:0 -> #0:0\nPress [q]\n";
    const QByteArray late = "[hevc @ 0x1] Invalid NAL unit size (69857108 > 505).\n";
    QTest::newRow("nothing") << begun << false;
    QTest::newRow("before the first position") << begun + late << true;
    QTest::newRow("and a position follows") << begun + late + position << true;
    QTest::newRow("after a position") << begun + position + late << true;
    QTest::newRow("at the end of a position")
        << begun + "frame=    1 time=00:00:01.00 \rInvalid data\n"
        << true;
    QTest::newRow("without a line end") << begun + "Decoding error" << true;
    QTest::newRow("an error") << begun + "[dec:hevc @ 0x1] Decoding error: invalid data\n" << true;
    QTest::newRow("while the movie is opened") << opened + late + begun + position << false;
    QTest::newRow("nothing was begun") << opened + late << false;
    QTest::newRow("a movie called like the beginning")
        << QByteArray("Input #0, mov, from '/v/a\nStream mapping:\n':\n") + late << false;
    QTest::newRow("inside a line") << QByteArray("the Stream mapping:\n") + late << false;
    QTest::newRow("a title") << begun + "  Metadata:\n    title           : Invalid error\n" +
                                    position
                             << false;
    QTest::newRow("other talk of decoders")
        << begun + "[hevc @ 0x1] Could not find ref with POC 11\n"
                   "[hevc @ 0x1] Error constructing the frame RPS.\n"
                   "[hevc @ 0x1] Skipping invalid undecodable NALU: 1\n"
                   "[hevc @ 0x1] The cu_qp_delta -30 is outside the valid range [-26, 25].\n"
        << false;
    const QByteArray remark = "[mov @ 0x1] Invalid timestamps stream=0, pts=20, dts=60, size=9\n";
    QTest::newRow("the order of good pictures") << begun + remark << false;
    QTest::newRow("the order after a position") << begun + position + remark + position << false;
    QTest::newRow("the order and a complaint") << begun + remark + late << true;
}

void TestPieceCutter::complaintsAboutTheMovieAreFound() {
    QFETCH(const QByteArray, text);
    QFETCH(const bool, found);
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        PieceCutter cutter({QStringLiteral("/v/a\nStream mapping:\n")});
        bool hasDamage = false;
        const auto take = [&](bool flush) {
            while (const auto piece = cutter.next(flush))
                hasDamage = hasDamage || piece->hasDamage;
        };
        cutter.add(text.first(cut));
        take(false);
        cutter.add(text.sliced(cut));
        take(false);
        take(true);
        QVERIFY2(hasDamage == found, qPrintable(QString::number(cut)));
    }
}

void TestPieceCutter::complaintIsTheOneOfItsPiece() {
    PieceCutter cutter({});
    cutter.add("Stream mapping:\nInvalid data\n" + position + "frame=    2 time=1\r");
    const auto header = cutter.next(false);
    const auto rest = cutter.next(false);
    QVERIFY(header && header->hasDamage);
    QVERIFY(rest && !rest->hasDamage);
    // One that waits with a write failure is told with it.
    cutter.add("Invalid data\n" + failure);
    QVERIFY(!cutter.next(false));
    cutter.add(position);
    const auto both = cutter.next(false);
    QVERIFY(both && both->hasDamage);
}

void TestPieceCutter::complaintInAnEndlessLine() {
    for (const char* const begin : {"Stream mapping:", "Stream mapping"}) {
        PieceCutter cutter({});
        bool hasDamage = false;
        const auto take = [&](const QByteArray& bytes) {
            cutter.add(bytes);
            while (const auto piece = cutter.next(true))
                hasDamage = hasDamage || piece->hasDamage;
        };
        take(begin);
        take(QByteArray(1000, '.'));
        take("\n" + QByteArray(1000, '.') + "Inv");
        take("al");
        QVERIFY(!hasDamage);
        take("id");
        QCOMPARE(hasDamage, begin == QByteArrayLiteral("Stream mapping:"));
    }
}

void TestPieceCutter::charactersAreNotCut_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("two bytes") << QByteArray("caf\u00e9\n");
    QTest::newRow("three bytes") << QByteArray("\u4e2d\u6587\n");
    QTest::newRow("four bytes") << QByteArray("a\U0001F3AC"
                                              "b\n");
}

void TestPieceCutter::charactersAreNotCut() {
    QFETCH(const QByteArray, text);
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        PieceCutter cutter({});
        QStringList pieces = piecesOf(cutter, text.first(cut), true);
        pieces += piecesOf(cutter, text.sliced(cut), true);
        QCOMPARE(pieces.join(QString()), QString::fromUtf8(text));
        QVERIFY(!pieces.contains(QString()));
    }
}

void TestPieceCutter::bytesThatAreNoTextPass() {
    PieceCutter cutter({});
    const QStringList pieces = piecesOf(cutter, QByteArray("a\xff\xfe\0b\n", 6));
    QCOMPARE(pieces.size(), 1);
    QVERIFY(pieces[0].startsWith(u'a'));
    QVERIFY(pieces[0].endsWith(QStringLiteral("b\n")));
    // The beginning of a character that never comes holds nothing up.
    QCOMPARE(piecesOf(cutter, "\xe4\xb8", true), QStringList());
    QCOMPARE(piecesOf(cutter, position).size(), 1);
}

void TestPieceCutter::endlessLineIsCut() {
    PieceCutter cutter({});
    const QByteArray much(1 << 19, 'x');
    QCOMPARE(piecesOf(cutter, much), QStringList());
    QCOMPARE(piecesOf(cutter, much), QStringList(QString(1 << 20, u'x')));
    QVERIFY(!cutter.hasRest());
}

void TestPieceCutter::namesAndMetadataAreBlanked_data() {
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const char* text) {
        QTest::newRow(name) << QByteArray(text);
    };
    row("source", "Input #0, mov,mp4, from '/Invalid/error/time=1.mp4':\n");
    row("output", "Output #0, mp4, to '/error/LPSNR= av_interleaved_write_frame.mp4':\n");
    row("refused output", "/error/LPSNR= av_interleaved_write_frame.mp4: Permission denied\n");
    row("output elsewhere in a line",
        "Could not write header for /error/LPSNR= av_interleaved_write_frame.mp4: Broken pipe\n");
    row("title", "  Metadata:\n    title           : trial and error\n");
    row("continued", "  Metadata:\n    comment         : Invalid\n                    : No space "
                     "left on device\n");
    row("chapter", "    Chapter #0:0: start 0.000000, end 2.000000\n      Metadata:\n"
                   "        title           : time=99:99:99.99 error\n");
}

void TestPieceCutter::namesAndMetadataAreBlanked() {
    QFETCH(const QByteArray, text);
    const QStringList names{QStringLiteral("/Invalid/error/time=1.mp4"),
                            QStringLiteral("/error/LPSNR= av_interleaved_write_frame.mp4")};
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        PieceCutter cutter(names);
        QStringList pieces = piecesOf(cutter, text.first(cut));
        pieces += piecesOf(cutter, text.sliced(cut));
        pieces += restOf(cutter);
        const EncoderMarkers marks = markersOf(pieces.join(QString()));
        QVERIFY2(!marks.hasError && !marks.hasInvalid && !marks.hasPosition && !marks.hasSummary &&
                     !marks.hasWriteFailure,
                 qPrintable(QString::number(cut) + u' ' + pieces.join(u'|')));
        QCOMPARE(pieces.join(QString()).size(), text.size());
    }
}

void TestPieceCutter::cutAnywhereHoldsTheSameText_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("disk full") << withShortBanner(Recordings::bytes("5.1.9/disk-full"))
                               << QStringList{QStringLiteral("/home/u/Videos/clip.mp4"),
                                              QStringLiteral("/home/u/full/clip_HQ_1280x720.mp4")};
    QTest::newRow("misleading names")
        << withShortBanner(Recordings::bytes("5.1.9/finished-misleading-names"))
        << QStringList{
               QStringLiteral("/home/u/Invalid error/time=\u00e9.mp4"),
               QStringLiteral("/home/u/Invalid error/LPSNR= av_interleaved_write_frame.mp4")};
    QTest::newRow("line ends in the names")
        << withShortBanner(Recordings::reportBytes("encode-newline"))
        << QStringList{QStringLiteral("/home/u/Videos/new\nline 'q' \"dq\" ctl\x01\x1b.mp4"),
                       QStringLiteral("/home/u/Converted/new\nframe= error\x01.mp4")};
}

void TestPieceCutter::cutAnywhereHoldsTheSameText() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, names);
    const QString whole = blankReport(QString::fromUtf8(bytes), names);
    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        PieceCutter cutter(names);
        QStringList pieces = piecesOf(cutter, bytes.first(cut));
        pieces += piecesOf(cutter, bytes.sliced(cut));
        pieces += restOf(cutter);
        if (pieces.join(QString()) != whole)
            QFAIL(qPrintable(QStringLiteral("cut at %1: ").arg(cut) + pieces.join(u'|')));
    }
}

void TestPieceCutter::flushAnywhereShowsNothingMore_data() {
    cutAnywhereHoldsTheSameText_data();
}

// What could be the beginning of a name is blanked before a flush, whatever follows: more blanks
// than in the whole text, never fewer.
void TestPieceCutter::flushAnywhereShowsNothingMore() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, names);
    const QString whole = blankReport(QString::fromUtf8(bytes), names);
    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        PieceCutter cutter(names);
        QStringList pieces = piecesOf(cutter, bytes.first(cut), true);
        pieces += piecesOf(cutter, bytes.sliced(cut), true);
        pieces += restOf(cutter);
        const QString joined = pieces.join(QString());
        if (joined == whole)
            continue;
        QCOMPARE(joined.size(), whole.size());
        for (qsizetype i = 0; i < whole.size(); ++i) {
            if (joined[i] != u' ' && joined[i] != whole[i])
                QFAIL(qPrintable(
                    QStringLiteral("cut at %1 shows %2").arg(cut).arg(joined.mid(i, 40))));
        }
    }
}

void TestPieceCutter::byteByByteHoldsTheSameText_data() {
    cutAnywhereHoldsTheSameText_data();
}

void TestPieceCutter::byteByByteHoldsTheSameText() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, names);
    PieceCutter cutter(names);
    QStringList pieces;
    for (const char byte : bytes)
        pieces += piecesOf(cutter, QByteArray(1, byte));
    pieces += restOf(cutter);
    QCOMPARE(pieces.join(QString()), blankReport(QString::fromUtf8(bytes), names));
}

REELSHIFT_TEST(tst_piececutter, TestPieceCutter, NoApplication)
#include "tst_piececutter.moc"
