#include "TestProgram.h"
#include "media/ProbeReport.h"
#include "media/ReportText.h"
#include "media/Reports.h"
#include "media/RetryProbeReader.h"
#include "media/ShortReport.h"

#include <QTest>

/// The second probe: every chunk for itself, until one holds a comma.
class TestRetryProbeReader final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void chunk_data();
    void chunk();
    void codecs_data();
    void codecs();
    void valuesOfEarlierMoviesStay();
    void bannerWithACommaEndsTheReading();
    void nothingIsReadAcrossChunks();
    void chunkIsBlankedFirst();
    void reportInWrites();
    void reportCutAtEveryByte_data();
    void reportCutAtEveryByte();
    void reportTextJoinsCutCharacters();
};

namespace {

struct Reading {
    ProbeValues values;
    RetryFindings found;
};

RetryFindings readInto(ProbeValues& values, RetryProbeReader& reader, const QByteArray& chunk) {
    RetryFindings found = reader.read(chunk);
    found.putInto(values);
    return found;
}

Reading readOnce(const QByteArray& chunk, const QStringList& paths = {}) {
    Reading reading;
    RetryProbeReader reader(paths);
    reading.found = readInto(reading.values, reader, chunk);
    return reading;
}

/// Every text that can be taken for a bit rate.
QStringList bitratesIn(const QString& report) {
    QStringList bitrates;
    qsizetype at = -1;
    while ((at = report.indexOf(QLatin1StringView("bitrate"), at + 1)) >= 0)
        bitrates << report.mid(at + 9, 5);
    return bitrates;
}

} // namespace

void TestRetryProbeReader::chunk_data() {
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QString>("duration");
    QTest::addColumn<QString>("bitrate");
    QTest::addColumn<QString>("strWidth");
    QTest::addColumn<QString>("strHeight");
    QTest::addColumn<int>("commonWidth");
    QTest::addColumn<int>("commonHeight");
    QTest::addColumn<bool>("interrupt");
    const auto row = [](const char* name, const char* chunk, const char* duration,
                        const char* bitrate, const char* width, const char* height,
                        bool interrupt) {
        const QString strWidth = QString::fromLatin1(width);
        const QString strHeight = QString::fromLatin1(height);
        QTest::newRow(name) << QByteArray(chunk) << QString::fromLatin1(duration)
                            << QString::fromLatin1(bitrate) << strWidth << strHeight
                            << leadingNumber(strWidth) << leadingNumber(strHeight) << interrupt;
    };
    row("empty", "", "", "", "", "", false);
    row("duration and bit rate", "  Duration: 00:00:02.00, start: 0.0, bitrate: 745 kb/s\n",
        "00:00:02.00", "745 k", "", "", false);
    row("duration cut", "  Duration: 00:00:02.0", "", "", "", "", true);
    row("bit rate cut", "Duration: 00:00:02.00, bitrate: 745 ", "00:00:02.00", "", "", "", true);
    row("duration cut, bit rate whole", "bitrate: Duration: 0", "", "Durat", "", "", true);
    row("bit rate with five", "bitrate: 12345", "", "12345", "", "", false);
    row("size", "Video: hevc (Main) (hvc1 / 0x31637668), yuv420p, 3840x2160 [SAR 1:1], 3 kb/s", "",
        "", "3840", "2160", false);
    row("size with its comma", "Video: hevc, 1920x1080, 25 fps", "", "", "1920", "1080,", false);
    row("the first x counts", "Video: codecx, 640x480", "", "", "codec", ",", false);
    row("two of them", "Video: 640x480x3 ,", "", "", "640", "480", false);
    row("no size", "Video: hevc, none(progressive), 649 kb/s", "", "", "", "", false);
    row("size without the word", "640x480 ,abc,", "", "", "", "", false);
}

void TestRetryProbeReader::chunk() {
    QFETCH(QByteArray, chunk);
    QFETCH(QString, duration);
    QFETCH(QString, bitrate);
    QFETCH(QString, strWidth);
    QFETCH(QString, strHeight);
    QFETCH(int, commonWidth);
    QFETCH(int, commonHeight);
    QFETCH(bool, interrupt);

    const Reading reading = readOnce(chunk);

    QCOMPARE(reading.values.durationMain, duration);
    QCOMPARE(reading.found.duration.value_or(QString()), duration);
    QCOMPARE(reading.values.bitrate, bitrate);
    QCOMPARE(reading.values.strWidth, strWidth);
    QCOMPARE(reading.values.strHeight, strHeight);
    QCOMPARE(reading.values.commonWidth, commonWidth);
    QCOMPARE(reading.values.commonHeight, commonHeight);
    QCOMPARE(reading.found.interrupt, interrupt);
    if (interrupt)
        QVERIFY(!reading.found.log.isEmpty());
    QVERIFY(reading.values.duration.isEmpty());
}

void TestRetryProbeReader::codecs_data() {
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QString>("audioCodec");
    QTest::addColumn<QString>("videoCodec");
    QTest::addColumn<bool>("isAac");
    QTest::addColumn<bool>("isHevc");
    QTest::addColumn<bool>("closePipe");
    QTest::addColumn<bool>("logs");
    QTest::newRow("both") << QByteArray("Video: hevc, 1x1\nAudio: aac, 44100")
                          << QStringLiteral("AAC") << QStringLiteral("HEVC") << true << true << true
                          << false;
    QTest::newRow("neither") << QByteArray("Video: h264, 1x1\nAudio: mp3, 44100")
                             << QStringLiteral("MP3") << QStringLiteral(": H264") << false << false
                             << true << false;
    QTest::newRow("no comma") << QByteArray("Video: hevc 1x1") << QString() << QString() << false
                              << false << false << false;
    QTest::newRow("banner with a comma")
        << QByteArray("0123abc, d") << QString() << QStringLiteral("ABC") << false << false << true
        << false;
    // A codec that is cut off ends this chunk's reading; it is no reason to stop the child.
    QTest::newRow("audio cut") << QByteArray("Video: hevc, 1x1\nAudio: aac") << QString()
                               << QString() << false << false << false << true;
    QTest::newRow("comma too early")
        << QByteArray("0,1") << QString() << QString() << false << false << false << true;
}

void TestRetryProbeReader::codecs() {
    QFETCH(QByteArray, chunk);
    QFETCH(QString, audioCodec);
    QFETCH(QString, videoCodec);
    QFETCH(bool, isAac);
    QFETCH(bool, isHevc);
    QFETCH(bool, closePipe);
    QFETCH(bool, logs);

    const Reading reading = readOnce(chunk);

    QCOMPARE(reading.values.audioCodec, audioCodec);
    QCOMPARE(reading.values.videoCodec, videoCodec);
    QCOMPARE(reading.found.isAac, isAac);
    QCOMPARE(reading.found.isHevc, isHevc);
    QCOMPARE(reading.found.closePipe, closePipe);
    QCOMPARE(!reading.found.log.isEmpty(), logs);
    QVERIFY(!reading.found.interrupt);
}

void TestRetryProbeReader::valuesOfEarlierMoviesStay() {
    ProbeValues values;
    values.durationMain = QStringLiteral("00:00:09.99");
    values.strWidth = QStringLiteral("640");
    values.commonWidth = 640;
    values.duration = QStringLiteral("00:00:01.00");
    RetryProbeReader reader({});
    QVERIFY(!readInto(values, reader, "built with gcc\n").closePipe);
    QCOMPARE(values.durationMain, QStringLiteral("00:00:09.99"));
    QCOMPARE(values.strWidth, QStringLiteral("640"));
    QCOMPARE(values.commonWidth, 640);
    QCOMPARE(values.duration, QStringLiteral("00:00:01.00"));
}

void TestRetryProbeReader::bannerWithACommaEndsTheReading() {
    ProbeValues values;
    RetryProbeReader reader({});
    QVERIFY(readInto(values, reader, "ffmpeg version 9, by others\n").closePipe);
    const RetryFindings later = readInto(
        values, reader, "  Duration: 00:00:02.00, x\n  Stream #0:0: Video: hevc, 640x480, 1\n");
    QVERIFY(!later.duration);
    QVERIFY(!later.isHevc);
    QVERIFY(!later.closePipe);
    QVERIFY(values.durationMain.isEmpty());
    QVERIFY(values.strWidth.isEmpty());
}

void TestRetryProbeReader::nothingIsReadAcrossChunks() {
    ProbeValues values;
    RetryProbeReader reader({});
    QVERIFY(!readInto(values, reader, "Dura").interrupt);
    QVERIFY(!readInto(values, reader, "tion: 00:00:02.00").duration);
    QVERIFY(values.durationMain.isEmpty());
}

void TestRetryProbeReader::chunkIsBlankedFirst() {
    ProbeValues values;
    RetryProbeReader reader({QStringLiteral("/home/u/Videos/1x1, Audio.mp4")});
    QVERIFY(!readInto(values, reader, "Error in /home/u/Videos/1x1, Audio.mp4\n").closePipe);
    QVERIFY(!readInto(values, reader, "  Metadata:\n    title           : ").closePipe);
    QVERIFY(!readInto(values, reader, "Video: hevc, 1x2").closePipe);
    QVERIFY(values.videoCodec.isEmpty());
    QVERIFY(values.strWidth.isEmpty());
}

/// The chunks as ffmpeg writes them: the header comes before the stream lines and holds a comma.
void TestRetryProbeReader::reportInWrites() {
    ProbeValues values;
    RetryProbeReader reader({});
    QVERIFY(!readInto(values, reader, "ffmpeg version 5.1.9-0+deb12u1 Copyright (c)\n").closePipe);
    const RetryFindings found = readInto(
        values, reader, "Input #0, mov,mp4,m4a,3gp,3g2,mj2, from '/home/u/Videos/a.mp4':\n");
    QVERIFY(found.closePipe);
    QVERIFY(!found.isHevc);
    QCOMPARE(values.videoCodec, QStringLiteral("T #0"));
}

void TestRetryProbeReader::reportCutAtEveryByte_data() {
    QTest::addColumn<QString>("name");
    for (const Reports::Report& report : Reports::all())
        QTest::newRow(report.name) << QString::fromLatin1(report.name);
}

/// However the report is cut in two, what is found in it is the movie's own and never its words.
void TestRetryProbeReader::reportCutAtEveryByte() {
    QFETCH(QString, name);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());
    const QByteArray bytes = withShortBanner(Reports::bytes(report.name));
    const Reading whole = readOnce(bytes, report.paths);
    const QStringList bitrates = bitratesIn(blankReport(QString::fromUtf8(bytes), report.paths));

    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        ProbeValues values;
        RetryProbeReader reader(report.paths);
        for (const QByteArray& chunk : {bytes.first(cut), bytes.sliced(cut)}) {
            const RetryFindings found = readInto(values, reader, chunk);
            if (found.duration)
                QCOMPARE(*found.duration, whole.values.durationMain);
            QVERIFY(!found.isAac || whole.found.isAac);
            QVERIFY(!found.isHevc || whole.found.isHevc);
        }
        QVERIFY(values.bitrate.isEmpty() || bitrates.contains(values.bitrate));
        QVERIFY(values.strWidth.isEmpty() || values.strWidth == whole.values.strWidth ||
                whole.values.strWidth.startsWith(values.strWidth) ||
                whole.values.strWidth.endsWith(values.strWidth));
    }
}

void TestRetryProbeReader::reportTextJoinsCutCharacters() {
    const QString text = QStringLiteral("caf\u00e9 \u65e5\u672c \U0001F3AC end");
    const QByteArray bytes = text.toUtf8();
    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        ReportText report;
        QVERIFY(report.text().isEmpty());
        report.append(bytes.first(cut));
        report.append(bytes.sliced(cut));
        QCOMPARE(report.text(), text);
    }
    ReportText byteByByte;
    for (const char byte : bytes)
        byteByByte.append(QByteArray(1, byte));
    QCOMPARE(byteByByte.text(), text);
}

REELSHIFT_TEST(test_retry_probe_reader, TestRetryProbeReader, NoApplication)
#include "TestRetryProbeReader.moc"
