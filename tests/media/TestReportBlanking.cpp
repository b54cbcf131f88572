#include "TestProgram.h"
#include "media/ReportBlanking.h"
#include "media/Reports.h"
#include "media/ShortReport.h"

#include <QTest>

#include <algorithm>

/// What a movie says about itself must vanish, all else must stay, character for character.
class TestReportBlanking final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void text_data();
    void text();
    void recordedReport_data();
    void recordedReport();
    void unknownPaths_data();
    void unknownPaths();
    void encoderMessagesStay();
    void piecesAtLineEnds_data();
    void piecesAtLineEnds();
    void piecesAnywhere_data();
    void piecesAnywhere();
    void blockGoesOnInTheNextPiece();
    void lineThatNeverEndsIsLetGo();
};

namespace {

QString lines(std::initializer_list<const char*> list) {
    QString text;
    for (const char* line : list)
        text += QString::fromUtf8(line) + u'\n';
    return text;
}

/// Lines of a report that tell nothing but what ffmpeg itself found out.
bool isPlainLine(const QString& line) {
    static const QStringList starts{QStringLiteral("  Duration:"),
                                    QStringLiteral("  Chapters:"),
                                    QStringLiteral("    Chapter #"),
                                    QStringLiteral("    Side data:"),
                                    QStringLiteral("      displaymatr"),
                                    QStringLiteral("      cpb: "),
                                    QStringLiteral("frame="),
                                    QStringLiteral("["),
                                    QStringLiteral("Press [q]"),
                                    QStringLiteral("Stream mapping:"),
                                    QStringLiteral("  Stream #0:0 -> "),
                                    QStringLiteral("  Stream #0:1 -> "),
                                    QStringLiteral("video:"),
                                    QStringLiteral("ffmpeg version"),
                                    QStringLiteral("  configuration:"),
                                    QStringLiteral("  lib"),
                                    QStringLiteral("At least one"),
                                    QStringLiteral("Guessed Channel"),
                                    QStringLiteral("  Metadata:"),
                                    QStringLiteral("    Metadata:"),
                                    QStringLiteral("      Metadata:"),
                                    QStringLiteral("  Stream #0:0[0x100]: Video")};
    return std::any_of(starts.begin(), starts.end(),
                       [&](const QString& start) { return line.startsWith(start); });
}

/// Whether a line may be the later part of a path with line ends in it.
bool isPartOfPath(const QString& line, const QStringList& paths) {
    for (const QString& path : paths) {
        const QStringList parts = path.split(u'\n').mid(1);
        for (const QString& part : parts) {
            if (line.left(10) == part.left(10))
                return true;
        }
    }
    return false;
}

void addReports() {
    QTest::addColumn<QString>("name");
    for (const Reports::Report& report : Reports::all())
        QTest::newRow(report.name) << QString::fromLatin1(report.name);
}

template <typename Row> void addPathRows(const Row& row) {
    row("empty", {});
    row("input header", {"Input #0, mov,mp4, from '⟦/v/Video, 1.mp4⟧':"});
    row("output header", {"Output #0, mp4, to '⟦/v/error.mp4⟧':"});
    row("quote and colon in the path",
        {"Input #0, mov, from '⟦/v/it's': Video.mp4⟧':", "  Duration: 1"});
    row("line end in the path", {"Input #0, mov, from '⟦/v/a", "Video, b⟧':", "  Duration: 1"});
    row("path that closes the quote and goes on",
        {"Input #0, mov, from '⟦/v/a':", "Video, b⟧':", "  Duration: 1"},
        {QStringLiteral("/v/a':\nVideo, b")});
    row("header inside a line", {"see Input #0, mov, from '/v/a':"});
    row("path cut by the end", {"Input #0, mov, from '⟦/v/Vid"});
    row("control characters are printed as question marks", {"x ⟦/v/a??\tVideo.mp4⟧ y"},
        {QStringLiteral("/v/a\x01\x1f\tVideo.mp4")});
    row("a question has them raw", {"File '⟦/v/a\x01Video⟧' already exists."},
        {QStringLiteral("/v/a\x01Video")});
    row("longer path first", {"⟦/v/a.mp4⟧ ⟦/v/a⟧"},
        {QStringLiteral("/v/a"), QStringLiteral("/v/a.mp4")});
    row("path that looks like a unit", {"745 kb/s, ⟦/s⟧"}, {QStringLiteral("/s")});
    row("empty path", {"Video"}, {QString()});
    row("file that cannot be opened",
        {"⟦/v/My: Video, 1.mp4⟧: Invalid data found when processing input"});
    row("known file that cannot be opened behind a block",
        {"    Metadata:", "      ⟦title           : x⟧", "⟦/v/error⟧: No such file"},
        {QStringLiteral("/v/error")});
    row("path later in a line when nobody knows it", {"Error writing trailer of /v/a: No space"});
    row("path later in a line", {"Error writing trailer of ⟦/v/a⟧: No space"},
        {QStringLiteral("/v/a")});
}

template <typename Row> void addMetadataRows(const Row& row) {
    row("metadata", {"  Metadata:", "    ⟦title           : Holiday Video⟧",
                     "  Duration: 00:00:01.00, start", "    Duration: 2"});
    row("metadata keys",
        {"  Metadata:", "    ⟦Video, Audio    : x⟧", "    ⟦a key of many words: x⟧"});
    row("metadata value without words", {"  Metadata:", "    ⟦title           : ⟧", "  Stream"});
    row("continuation",
        {"  Metadata:", "    ⟦comment         : a⟧", "                    ⟦:   Duration: 1⟧"});
    row("carriage return in a key", {"  Metadata:", "    ⟦k\rVideo, x   : v⟧", "  Stream"});
    row("message in the middle of a block",
        {"    Metadata:", "[hevc @ 0x1] Error", "      ⟦title           : error⟧"});
    row("side data ends a block", {"    Metadata:", "      ⟦title           : a⟧", "    Side data:",
                                   "      displaymatrix: rotation of -90.00 degrees"});
    row("chapter title", {"    Chapter #0:0: start 0.000000, end 1.000000",
                          "      Metadata:", "        ⟦title           : Audio, Duration: 00:00⟧",
                          "  Stream #0:0: Video: hevc"});
    row("progress ends a block", {"    Metadata:", "frame= 1 time=1\r      error"});
    row("name of a program",
        {"  Program 1 ⟦Audio, Video⟧", "    Metadata:", "      ⟦service_name    : error⟧"});
}

template <typename Row> void addRemarkRows(const Row& row) {
    row("remark about timestamps",
        {"[mov @ 0x1] ⟦Invalid timestamps stream=0, pts=20, dts=60, size=9⟧",
         "[mov @ 0x1] Invalid"});
    row("remark in the middle of a line",
        {"  Stream #0:0⟦Invalid timestamps stream=0, pts=20, dts=60⟧", ": Video: h264"});
    row("another remark", {"[mov @ 0x1] Invalid timestamps of stream=0"});
}

template <typename Row> void addStreamRows(const Row& row) {
    row("language", {"  Stream #0:0[0x1](⟦und⟧): Video: hevc, 1x1 (default)"});
    row("no language", {"  Stream #0:0[0x1]: Video: hevc (Main), 1x1"});
    row("language like a stream line",
        {"  Stream #0:1(⟦a): Video: hevc, ⟧): Audio: aac (LC), 44100 Hz"});
    row("language of two lines", {"  Stream #0:1(⟦a", "Video, b⟧): Audio: aac, x", "  Duration"});
    row("language without an end", {"  Stream #0:1(⟦a x⟧", "  Stream #0:2(⟦und⟧): Audio: aac"});
    row("language cut by the end", {"  Stream #0:1(⟦Vid⟧"});
    row("stream mapping", {"  Stream #0:0 -> #0:0 (hevc (native) -> h264 (libx264))"});
}

template <typename Row> void addPieceRows(const Row& row) {
    row("piece begins inside a block",
        {"    ⟦title           : Video⟧", "                    ⟦: Audio⟧",
         "    Chapter #0:0: start 1", "    Side data:", "      cpb: bitrate max/min/avg: 0/0/0"});
    row("key of many bytes at the start of a piece",
        {"    ⟦d\u00e9j\u00e0-vu-\u00e9t\u00e9     : Video⟧"});
    row("side data at the start of a piece",
        {"      DOVI configuration record: version: 1.0, profile: 8"});
    row("piece begins inside a path", {"⟦Video, b.mp4⟧':", "  Duration: 1"},
        {QStringLiteral("/v/a\nVideo, b.mp4")});
}

} // namespace

void TestReportBlanking::text_data() {
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QStringList>("paths");
    const auto row = [](const char* name, std::initializer_list<const char*> marked,
                        const QStringList& paths = {}) {
        QTest::newRow(name) << lines(marked) << paths;
    };
    addPathRows(row);
    addMetadataRows(row);
    addRemarkRows(row);
    addStreamRows(row);
    addPieceRows(row);
}

/// What stands between the brackets is to be blanked, all else to stay.
void TestReportBlanking::text() {
    QFETCH(QString, marked);
    QFETCH(QStringList, paths);
    QString report;
    QString expected;
    bool isOwn = false;
    for (const QChar c : std::as_const(marked)) {
        if (c == u'\u27e6' || c == u'\u27e7') {
            isOwn = c == u'\u27e6';
            continue;
        }
        report += c;
        expected += isOwn ? QChar(u' ') : c;
    }

    const QString blanked = blankReport(report, paths);

    QCOMPARE(blanked, expected);
    QCOMPARE(blanked.size(), report.size());
}

void TestReportBlanking::recordedReport_data() {
    addReports();
}

void TestReportBlanking::recordedReport() {
    QFETCH(QString, name);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());
    const QString printed = Reports::text(report.name);

    const QString blanked = blankReport(printed, report.paths);

    QCOMPARE(blanked.size(), printed.size());
    for (const char* own : {"Holiday", "trial", "/home", "(und)", "Handler", "Lavf", "major_brand",
                            "service_name", "dq", "720x576", "99:99"}) {
        QVERIFY2(!blanked.contains(QLatin1StringView(own)), own);
    }
    qsizetype plainLines = 0;
    qsizetype at = 0;
    for (const QString& line : printed.split(u'\n')) {
        if (isPlainLine(line) && !isPartOfPath(line, report.paths)) {
            ++plainLines;
            QCOMPARE(blanked.sliced(at, line.size()), line);
        }
        at += line.size() + 1;
    }
    QVERIFY(plainLines >= 10);
    for (qsizetype i = 0; i < printed.size(); ++i)
        QVERIFY(blanked.at(i) == printed.at(i) || blanked.at(i) == u' ');
}

void TestReportBlanking::unknownPaths_data() {
    addReports();
}

/// Where nobody says which files the report is about, the header still gives the path away.
void TestReportBlanking::unknownPaths() {
    QFETCH(QString, name);
    if (name == QLatin1StringView("path-header-like"))
        QSKIP("only its own name tells such a path's end");
    if (name == QLatin1StringView("encode-exists"))
        QSKIP("a question names a path that no rule finds");
    const QString printed = Reports::text(name.toLatin1().constData());

    const QString blanked = blankReport(printed, {});

    QVERIFY(!blanked.contains(QLatin1StringView("/home")));
    QCOMPARE(blanked, blankReport(printed, Reports::named(name.toLatin1().constData()).paths));
}

/// The markers that decide a conversion's outcome are left where ffmpeg means them, only there.
void TestReportBlanking::encoderMessagesStay() {
    const auto blanked = [](const char* name) {
        return blankReport(Reports::text(name), Reports::named(name).paths);
    };
    for (const char* name : {"encode-mkv", "encode-newline"}) {
        const QString text = blanked(name);
        QCOMPARE(text.count(QLatin1StringView("error")), 0);
        QCOMPARE(text.count(QLatin1StringView("Invalid")), 0);
        QCOMPARE(text.count(QLatin1StringView("LPSNR=")), 1);
        QCOMPARE(text.count(QLatin1StringView("time=")), 2);
        QCOMPARE(text.count(QLatin1StringView("frame=")), 2);
    }
    const QString corrupt = blanked("encode-corrupt");
    const QString printed = Reports::text("encode-corrupt");
    QCOMPARE(corrupt.sliced(corrupt.indexOf(QLatin1StringView("frame="))),
             printed.sliced(printed.indexOf(QLatin1StringView("frame="))));
    QVERIFY(blanked("encode-exists")
                .endsWith(QLatin1StringView(
                    "' already exists. Overwrite? [y/N] Not overwriting - exiting\n")));
    QVERIFY(
        blanked("encode-no-folder").endsWith(QLatin1StringView(": No such file or directory\n")));
}

void TestReportBlanking::piecesAtLineEnds_data() {
    addReports();
}

/// Each piece for itself, cut behind any line end, comes out like the whole.
void TestReportBlanking::piecesAtLineEnds() {
    QFETCH(QString, name);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());
    const QString printed = Reports::text(report.name);
    const QString whole = blankReport(printed, report.paths);

    for (qsizetype cut = 1; cut < printed.size(); ++cut) {
        if (printed.at(cut - 1) != u'\n' && printed.at(cut - 1) != u'\r')
            continue;
        const QString pieces = blankReport(printed.first(cut), report.paths) +
                               blankReport(printed.sliced(cut), report.paths);
        QCOMPARE(pieces, whole);
    }
}

void TestReportBlanking::piecesAnywhere_data() {
    addReports();
}

/// Pieces cut anywhere show nothing that the whole does not show, and hide nothing else but in the
/// line that was cut.
void TestReportBlanking::piecesAnywhere() {
    QFETCH(QString, name);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());
    const QString printed = QString::fromUtf8(withShortBanner(Reports::bytes(report.name)));
    const QString whole = blankReport(printed, report.paths);

    for (qsizetype cut = 0; cut <= printed.size(); ++cut) {
        ReportBlanker blanker(report.paths);
        const QString first = blanker.blank(printed.first(cut));
        const QString second = blanker.blank(printed.sliced(cut));
        QCOMPARE(first.size(), cut);
        QCOMPARE(second, whole.sliced(cut));
        for (qsizetype i = 0; i < cut; ++i) {
            if (first.at(i) == whole.at(i))
                continue;
            QVERIFY2(first.at(i) == u' ' && !printed.first(cut).sliced(i).contains(u'\n'),
                     qPrintable(QStringLiteral("cut at %1, character %2").arg(cut).arg(i)));
        }
    }
}

void TestReportBlanking::blockGoesOnInTheNextPiece() {
    ReportBlanker blanker({});
    QCOMPARE(blanker.blank(QStringLiteral("  Metadata:\n    title           : ")),
             QStringLiteral("  Metadata:\n                      "));
    QCOMPARE(blanker.blank(QStringLiteral("Holiday Video")), QString(13, u' '));
    QCOMPARE(blanker.blank(QStringLiteral("\n")), QStringLiteral("\n"));
    QCOMPARE(blanker.blank(QStringLiteral("  Stream #0:0(Vid")),
             QStringLiteral("  Stream #0:0(   "));
    QCOMPARE(blanker.blank(QStringLiteral("eo): Video: hevc")), QStringLiteral("  ): Video: hevc"));
}

void TestReportBlanking::lineThatNeverEndsIsLetGo() {
    ReportBlanker blanker({});
    const QString flood(20000, u'x');
    QCOMPARE(blanker.blank(QStringLiteral("Input #0, mov, from '") + flood).size(), 20021);
    // The header is forgotten: what follows is not part of a path any more.
    QCOMPARE(blanker.blank(QStringLiteral("frame=")), QStringLiteral("frame="));
}

REELSHIFT_TEST(test_report_blanking, TestReportBlanking, NoApplication)
#include "TestReportBlanking.moc"
