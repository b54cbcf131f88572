#include "TestProgram.h"
#include "media/ProbeReport.h"
#include "media/ReportBlanking.h"
#include "media/Reports.h"

#include <QTest>

#include <limits>
#include <stdexcept>

/// Duration, codecs and picture size, from texts made up for each rule and from real reports.
class TestProbeReport final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void duration_data();
    void duration();
    void audio_data();
    void audio();
    void video_data();
    void video();
    void size_data();
    void size();
    void number_data();
    void number();
    void recordedReport_data();
    void recordedReport();
    void ownWordsOfTheMovieMislead();
    void reportCutAnywhere_data();
    void reportCutAnywhere();
};

namespace {

const QString outOfRange = QStringLiteral("<out of range>");
const QString nothing = QStringLiteral("<nothing>");

/// What a function finds, as text: its value, that it found nothing, or that it went too far.
template <typename Function> QString told(Function function) {
    try {
        return function();
    } catch (const std::out_of_range&) {
        return outOfRange;
    }
}

QString told(const std::optional<CodecText>& codec) {
    if (!codec)
        return nothing;
    return (codec->isWanted ? QStringLiteral("+") : QStringLiteral("-")) + codec->text;
}

QString toldSize(const QString& text) {
    return told([&] {
        const PictureSize size = pictureSize(text);
        return QStringLiteral("%1x%2").arg(size.width).arg(size.height);
    });
}

} // namespace

void TestProbeReport::duration_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("strict");
    QTest::addColumn<QString>("probed");
    const auto row = [](const char* name, const char* text, const QString& strict) {
        QTest::newRow(name) << QString::fromUtf8(text) << strict
                            << (strict == outOfRange ? nothing : strict);
    };
    row("usual", "  Duration: 00:01:02.34, start", QStringLiteral("00:01:02.34"));
    row("ends with the text", "Duration: 00:01:02.34", QStringLiteral("00:01:02.34"));
    row("one character short", "Duration: 00:01:02.3", outOfRange);
    row("only the word", "Duration", outOfRange);
    row("empty", "", nothing);
    row("absent", "duration: 00:01:02.34", nothing);
    row("the first one counts", "Duration: 00:01:02.34, Duration: 11:11:11.11",
        QStringLiteral("00:01:02.34"));
    row("not known to ffmpeg", "Duration: N/A, bitrate: N/A", QStringLiteral("N/A, bitrat"));
}

void TestProbeReport::duration() {
    QFETCH(QString, text);
    QFETCH(QString, strict);
    QFETCH(QString, probed);
    QCOMPARE(told([&] { return durationText(text).value_or(nothing); }), strict);
    QCOMPARE(probedDuration(text).value_or(nothing), probed);
}

void TestProbeReport::audio_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* text, const QString& expected) {
        QTest::newRow(name) << QString::fromUtf8(text) << expected;
    };
    row("aac in lower case", "Audio: aac (LC) (mp4a), 44100 Hz", QStringLiteral("+AAC"));
    row("aac anywhere in it", "Audio: xAaCx, 1", QStringLiteral("+AAC"));
    row("another codec", "Audio: flac, 44100 Hz", QStringLiteral("-FLAC"));
    row("aac only behind the comma", "Audio: mp3, aac", QStringLiteral("-MP3"));
    row("nothing before the comma", "Audio: , x", QStringLiteral("-"));
    row("the first one counts", "Audio: flac, Audio: aac,", QStringLiteral("-FLAC"));
    row("absent", "Video: hevc, x", nothing);
    row("comma only before it", "a, Audio: aac", outOfRange);
    row("ends with the word", "Audio", outOfRange);
    row("ends behind the blank", "Audio: ", outOfRange);
}

void TestProbeReport::audio() {
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(told([&] { return told(probedAudio(text)); }), expected);
}

void TestProbeReport::video_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* text, const QString& expected) {
        QTest::newRow(name) << QString::fromUtf8(text) << expected;
    };
    row("hevc", "Video: hevc (Main) (hvc1 / 0x31637668), yuv420p", QStringLiteral("+HEVC"));
    row("another codec keeps colon and blank", "Video: h264 (High), x",
        QStringLiteral("-: H264 (HIGH)"));
    row("no comma at all", "Video: hevc", nothing);
    row("empty", "", nothing);
    row("comma only before it", "a, Video: hevc", outOfRange);
    row("ends with the word", "a, Video", outOfRange);
    // Kept: the word not found counts as position 4 294 967 295, five further is 4.
    row("without the word", "0123abc, d", QStringLiteral("-ABC"));
    row("without the word, but hevc", "0123x hevc y, d", QStringLiteral("+HEVC"));
    row("without the word, comma at position 4", "0123,", QStringLiteral("-"));
    row("without the word, comma before position 4", "0,23abc", outOfRange);
    row("without the word, shorter than four", "0,", outOfRange);
    row("without the word, four long", "0,23", outOfRange);
}

void TestProbeReport::video() {
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(told([&] { return told(probedVideo(text)); }), expected);
}

void TestProbeReport::size_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* text, const QString& expected) {
        QTest::newRow(name) << QString::fromUtf8(text) << expected;
    };
    row("usual",
        "Video: hevc (Main) (hvc1 / 0x31637668), yuv420p(tv, bt709), 3840x2160 [SAR 1:1 DAR 16:9], "
        "60 kb/s",
        QStringLiteral("3840x2160"));
    row("no aspect ratio", "Video: hevc, yuv420p, 1920x1080, 30 fps", QStringLiteral("1920x1080"));
    row("no blank", "Video: hevc,1280x720,30", QStringLiteral("1280x720"));
    row("more than two numbers", "Video: hevc, 640x480x3", QStringLiteral("640x480"));
    row("height is no number", "Video: hevc, 640xy", QStringLiteral("640x0"));
    row("ends behind the x", "Video: hevc, 640x", QStringLiteral("640x0"));
    row("nothing positive", "Video: hevc, 0x0, -3x4", QStringLiteral("0x0"));
    row("ends with the colon", "Video:", QStringLiteral("0x0"));
    row("number without an x", "Video: hevc, none(progressive), 1729 kb/s, 25 fps", outOfRange);
    row("number behind the colon", "Video: 7, 640x480", QStringLiteral("640x480"));
    row("number in the place of the colon", "Video7, 640x480", outOfRange);
    row("without the word", "0123 abc, 640x480", QStringLiteral("640x480"));
    row("without the word, three long", "0,1", outOfRange);
    row("without the word, four long", "0,12", QStringLiteral("0x0"));
    row("larger than an int", "Video: hevc, 99999999999x99999999999999999999999999",
        QStringLiteral("2147483647x2147483647"));
}

void TestProbeReport::size() {
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(toldSize(text), expected);
}

void TestProbeReport::number_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("blanks") << QStringLiteral(" \t ") << 0;
    QTest::newRow("leading blanks") << QStringLiteral("  42") << 42;
    QTest::newRow("stops at a letter") << QStringLiteral("12ab34") << 12;
    QTest::newRow("stops at a blank") << QStringLiteral("1 2") << 1;
    QTest::newRow("letter first") << QStringLiteral("a1") << 0;
    QTest::newRow("sign is no digit") << QStringLiteral("-5") << 0;
    QTest::newRow("other digits are none") << QStringLiteral("\u0664\u0662") << 0;
    QTest::newRow("largest") << QStringLiteral("2147483647") << std::numeric_limits<int>::max();
    QTest::newRow("too large") << QStringLiteral("2147483648") << std::numeric_limits<int>::max();
}

void TestProbeReport::number() {
    QFETCH(QString, text);
    QFETCH(int, expected);
    QCOMPARE(leadingNumber(text), expected);
}

void TestProbeReport::recordedReport_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("duration");
    QTest::addColumn<QString>("audio");
    QTest::addColumn<QString>("video");
    QTest::addColumn<QString>("size");
    const auto row = [](const char* name, const char* duration, const char* audio,
                        const QString& video, const QString& size) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(duration)
                            << QString::fromLatin1(audio) << video << size;
    };
    const QString hevc = QStringLiteral("+HEVC");
    const QString vga = QStringLiteral("640x480");
    row("plain", "00:00:02.00", "+AAC", hevc, vga);
    row("chapters-mp4", "00:00:02.00", "+AAC", hevc, vga);
    row("free-text-mkv", "00:00:02.02", "+AAC", hevc, vga);
    row("hostile-folder", "00:00:02.04", "+AAC", hevc, vga);
    row("path-newline", "00:00:02.00", "+AAC", hevc, vga);
    row("path-header-like", "00:00:02.00", "+AAC", hevc, vga);
    row("path-invalid-utf8", "00:00:02.00", "+AAC", hevc, vga);
    row("rotated", "00:00:02.00", "+AAC", hevc, vga);
    row("service-ts", "00:00:02.02", "+AAC", hevc, vga);
    row("uhd-flac-mkv", "00:00:01.00", "-FLAC", hevc, QStringLiteral("3840x2160"));
    row("no-size", "00:00:02.00", "+AAC", hevc, outOfRange);
    row("avc", "00:00:01.00", "<nothing>", QStringLiteral("-: H264 (HIGH) (AVC1 / 0X31637661)"),
        QStringLiteral("320x240"));
    // The banner of Debian's ffmpeg holds no comma, so such a movie has no video at all.
    row("missing", "<nothing>", "<nothing>", nothing, QStringLiteral("0x0"));
}

void TestProbeReport::recordedReport() {
    QFETCH(QString, name);
    QFETCH(QString, duration);
    QFETCH(QString, audio);
    QFETCH(QString, video);
    QFETCH(QString, size);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());

    const QString text = blankReport(Reports::text(report.name), report.paths);

    QCOMPARE(probedDuration(text).value_or(nothing), duration);
    QCOMPARE(told([&] { return told(probedAudio(text)); }), audio);
    QCOMPARE(told([&] { return told(probedVideo(text)); }), video);
    QCOMPARE(toldSize(text), size);
}

/// The rules alone take the movie's own words for ffmpeg's: what the blanking is for.
void TestProbeReport::ownWordsOfTheMovieMislead() {
    const QString text = Reports::text("plain");
    QVERIFY(!probedVideo(text)->isWanted); // "/home/u/Videos/plain.mp4"
    QVERIFY(probedVideo(blankReport(text, {}))->isWanted);
}

void TestProbeReport::reportCutAnywhere_data() {
    QTest::addColumn<QString>("name");
    for (const Reports::Report& report : Reports::all())
        QTest::newRow(report.name) << QString::fromLatin1(report.name);
}

/// Half a report gives the same values, none, or ends in out-of-range; never anything else.
void TestProbeReport::reportCutAnywhere() {
    QFETCH(QString, name);
    const Reports::Report& report = Reports::named(name.toLatin1().constData());
    const QByteArray bytes = Reports::bytes(report.name);
    const QString whole = blankReport(QString::fromUtf8(bytes), report.paths);
    const QString duration = probedDuration(whole).value_or(nothing);

    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        const QString text = blankReport(QString::fromUtf8(bytes.first(cut)), report.paths);
        const QString cutDuration = probedDuration(text).value_or(nothing);
        QVERIFY(cutDuration == nothing || cutDuration == duration);
        const QString audio = told([&] { return told(probedAudio(text)); });
        QVERIFY(audio == nothing || audio == outOfRange ||
                audio == told([&] { return told(probedAudio(whole)); }));
        told([&] { return told(probedVideo(text)); });
        toldSize(text);
    }
}

REELSHIFT_TEST(test_probe_report, TestProbeReport, NoApplication)
#include "TestProbeReport.moc"
