#include "TestProgram.h"
#include "launcher/JobAdditions.h"
#include "launcher/PictureAdditions.h"
#include "launcher/Remarks.h"
#include "launcher/SoundAdditions.h"
#include "system/LauncherWords.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList own{QStringLiteral("-psnr"),
                      QStringLiteral("-i"),
                      QStringLiteral("/home/u/-vf.mp4"),
                      QStringLiteral("-codec:v"),
                      QStringLiteral("libx264"),
                      QStringLiteral("-vf"),
                      QStringLiteral("scale=640:360"),
                      QStringLiteral("-crf"),
                      QStringLiteral("15"),
                      QStringLiteral("-pix_fmt"),
                      QStringLiteral("yuv420p"),
                      QStringLiteral("-acodec"),
                      QStringLiteral("copy"),
                      QStringLiteral("/home/u/o.mp4")};

Arguments argumentsOf(const QStringList& texts) {
    Arguments result;
    for (const QString& each : texts)
        result.push_back(each.toStdString());
    return result;
}

QStringList textsOf(const Arguments& arguments) {
    QStringList result;
    for (const std::string& each : arguments)
        result += QString::fromStdString(each);
    return result;
}

TrackFacts picture() {
    TrackFacts track;
    track.index = 0;
    track.kind = TrackKind::Video;
    track.codec = "hevc";
    track.width = 1280;
    track.height = 720;
    track.nominalRate = {30, 1};
    track.averageRate = {30, 1};
    return track;
}

TrackFacts sound(int index, const char* codec, int channels = 2, int rate = 48000,
                 const char* loudspeakers = "") {
    TrackFacts track;
    track.index = index;
    track.kind = TrackKind::Sound;
    track.codec = codec;
    track.channels = channels;
    track.sampleRate = rate;
    track.loudspeakers = loudspeakers;
    track.hasDecoder = true;
    return track;
}

TrackFacts subtitles(int index, const char* codec) {
    TrackFacts track;
    track.index = index;
    track.kind = TrackKind::Subtitle;
    track.codec = codec;
    return track;
}

constexpr EncoderAbilities able{true, true, true};

CompletedJob completed(const std::vector<TrackFacts>& tracks, EncoderAbilities encoder = able,
                       bool phoneTags = false) {
    return completeJob(argumentsOf(own), MovieFacts{tracks, phoneTags, {}}, encoder);
}

/// What stands between the program's last option and the output.
QString added(const std::vector<TrackFacts>& tracks) {
    const QStringList all = textsOf(completed(tracks).arguments);
    return all.mid(all.indexOf(QStringLiteral("copy")) + 1)
        .mid(0, all.size() - all.indexOf(QStringLiteral("copy")) - 2)
        .join(u' ');
}

QString filter(const CompletedJob& job) {
    const QStringList all = textsOf(job.arguments);
    return all[all.lastIndexOf(QStringLiteral("-vf")) + 1];
}

} // namespace

/// What is added to the program's own arguments for which movie.
class TestJobAdditions final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theProgramsOwnStay();
    void nothingKnown_data();
    void nothingKnown();
    void tracks_data();
    void tracks();
    void subtitlesInAnOldEncoding();
    void losses();
    void tags();
    void aDateThatIsToldTwice();
    void shapes_data();
    void shapes();
    void rates_data();
    void rates();
    void colours_data();
    void colours();
    void redGreenAndBlue();
    void foreignWordsStayOut();
    void remarks();
};

void TestJobAdditions::theProgramsOwnStay() {
    QStringList all = textsOf(completed({picture(), sound(1, "pcm_s16le")}).arguments);
    QCOMPARE(all.first(4), (QStringList{QStringLiteral("-psnr"), QStringLiteral("-noautorotate"),
                                        QStringLiteral("-i"), QStringLiteral("/home/u/-vf.mp4")}));
    QCOMPARE(all.last(), own.last());
    QVERIFY(filter(completed({picture()}))
                .startsWith(QStringLiteral("scale=640:360:out_range=tv,setsar=")));
    // Without what was added they are as they were.
    all.removeOne(QStringLiteral("-noautorotate"));
    QStringList begun = own;
    begun[6] = all[6];
    QVERIFY(all[6].startsWith(own[6] + u':'));
    QCOMPARE(all.first(own.size() - 1), begun.first(own.size() - 1));
}

void TestJobAdditions::nothingKnown_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("hasPicture");
    QTest::newRow("no picture") << own << false;
    QTest::newRow("nothing to do") << QStringList{} << true;
    QTest::newRow("no output") << QStringList{QStringLiteral("-psnr"), QStringLiteral("-i"),
                                              QStringLiteral("a")}
                               << true;
    QTest::newRow("no filter") << QStringList{QStringLiteral("-psnr"), QStringLiteral("-i"),
                                              QStringLiteral("a"), QStringLiteral("b"),
                                              QStringLiteral("c")}
                               << true;
    for (const char* other : {"scale=640", "scale=640:", "scale=0:360", "scale=-2:360", "null",
                              "scale=640:360,null", "scale=999999999999:1", "scale=iw:ih", ""})
        QTest::newRow(qPrintable(QStringLiteral("filter ") + QLatin1StringView(other)))
            << QStringList{QStringLiteral("-psnr"), QStringLiteral("-i"),       QStringLiteral("a"),
                           QStringLiteral("-vf"),   QString::fromLatin1(other), QStringLiteral("b")}
            << true;
}

void TestJobAdditions::nothingKnown() {
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, hasPicture);
    const MovieFacts movie{
        hasPicture ? std::vector{picture()} : std::vector<TrackFacts>{}, false, {}};
    const CompletedJob job = completeJob(argumentsOf(arguments), movie, able);
    QCOMPARE(textsOf(job.arguments), arguments);
    QCOMPARE(job.losses.size(), std::size_t{1});
}

void TestJobAdditions::tracks_data() {
    QTest::addColumn<std::vector<TrackFacts>>("tracks");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* what, const std::vector<TrackFacts>& tracks,
                        const char* expected) {
        QTest::newRow(what) << tracks << QString::fromLatin1(expected);
    };
    TrackFacts second = picture();
    second.index = 1;
    second.width = 4000;
    TrackFacts undecodable = sound(1, "ac4");
    undecodable.hasDecoder = false;
    row("silent", {picture()}, "-map 0:0 -map_metadata 0");
    row("the first picture", {picture(), second}, "-map 0:0 -map_metadata 0");
    row("copied", {picture(), sound(1, "aac"), sound(2, "eac3", 6)},
        "-map 0:0 -map 0:1 -map 0:2 -map_metadata 0");
    row("converted", {picture(), sound(1, "pcm_s24be")},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 256k -map_metadata 0");
    row("mixed", {picture(), sound(1, "aac"), sound(2, "flac", 1, 96000)},
        "-map 0:0 -map 0:1 -map 0:2 -codec:a:1 aac -b:a:1 128k -ar:a:1 48000 -map_metadata 0");
    row("surround", {picture(), sound(1, "dts", 6, 48000, "5.1(side)")},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 512k -filter:a:0 "
        "aformat=channel_layouts=5.1 -map_metadata 0");
    row("surround as AAC has it", {picture(), sound(1, "dts", 6, 48000, "5.1")},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 512k -map_metadata 0");
    row("in another order", {picture(), sound(1, "pcm_s24le", 3, 48000, "3 channels (FC+FL+FR)")},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 320k -filter:a:0 "
        "channelmap=map=FL-FL|FR-FR|FC-FC:channel_layout=3.0 -map_metadata 0");
    row("an arrangement of its own",
        {picture(), sound(1, "pcm_s24le", 4, 48000, "4 channels (FC+TFL+TFR+x'y)")},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 384k -filter:a:0 "
        "channelmap=map=0|1|2|3:channel_layout=4.0 -map_metadata 0");
    row("many microphones", {picture(), sound(1, "pcm_s24le", 16)},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 640k -filter:a:0 "
        "channelmap=map=0|1|2|3|4|5|6|7:channel_layout=7.1 -map_metadata 0");
    row("slow MP3", {picture(), sound(1, "mp3", 1, 8000)},
        "-map 0:0 -map 0:1 -codec:a:0 aac -b:a:0 128k -map_metadata 0");
    row("unknown sound before a known one",
        {picture(), sound(1, ""), sound(2, "aac", 0), sound(3, "pcm_s16le", 2, 0),
         sound(4, "opus")},
        "-map 0:0 -map 0:4 -codec:a:0 aac -b:a:0 256k -map_metadata 0");
    row("without a decoder", {picture(), undecodable}, "-map 0:0 -map_metadata 0");
    row("subtitles", {picture(), subtitles(1, "subrip"), subtitles(2, "hdmv_pgs_subtitle")},
        "-map 0:0 -map 0:1 -codec:s mov_text -map_metadata 0");
}

void TestJobAdditions::tracks() {
    QFETCH(const std::vector<TrackFacts>, tracks);
    QTEST(added(tracks), "expected");
}

void TestJobAdditions::subtitlesInAnOldEncoding() {
    const auto asked = [](const char* codec) {
        return textsOf(completed({picture(), subtitles(1, codec)}).arguments).join(u' ');
    };
    QVERIFY(asked("subrip").contains(QStringLiteral(" -sub_charenc_mode:s ignore -i ")));
    QVERIFY(!asked("hdmv_pgs_subtitle").contains(QStringLiteral("charenc")));
}

void TestJobAdditions::losses() {
    QVERIFY(completed({picture(), sound(1, "aac")}).losses.empty());
    QCOMPARE(completed({picture(), sound(1, ""), subtitles(2, "dvd_subtitle")}).losses.size(),
             std::size_t{2});
}

void TestJobAdditions::tags() {
    QVERIFY(textsOf(completed({picture()}, able, true).arguments)
                .join(u' ')
                .contains(QStringLiteral("-map_metadata 0 -movflags use_metadata_tags /")));
}

void TestJobAdditions::aDateThatIsToldTwice() {
    MovieFacts movie{{picture()}, false, "2022-03-04T05:06:07Z"};
    const CompletedJob job = completeJob(argumentsOf(own), movie, able);
    QVERIFY(textsOf(job.arguments).contains(QStringLiteral("creation_time=2022-03-04T05:06:07Z")));
    const QByteArray said = QByteArray::fromStdString(remarksAbout(job));
    QVERIFY(said.contains(" -metadata creation_time''=2022-03-04T05:06:07Z "));
    QVERIFY(!said.contains("time="));
}

void TestJobAdditions::shapes_data() {
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSize>("pixel");
    QTest::addColumn<QSize>("output");
    QTest::addColumn<QSize>("expected");
    const auto row = [](const char* what, QSize source, QSize pixel, QSize output, QSize expected) {
        QTest::newRow(what) << source << pixel << output << expected;
    };
    const QSize square(1, 1);
    row("same", {1920, 1080}, square, {1920, 1080}, square);
    row("half", {1920, 1080}, square, {960, 540}, square);
    row("nothing said", {1280, 720}, {0, 0}, {640, 360}, square);
    row("another shape", {1280, 720}, {0, 0}, {640, 480}, {4, 3});
    row("odd", {321, 241}, square, {320, 240}, square);
    row("within a hundredth", {854, 480}, square, {640, 360}, square);
    row("upright", {1080, 1920}, square, {640, 480}, {27, 64});
    row("wide pixels", {1440, 1080}, {4, 3}, {1440, 1080}, {4, 3});
    row("wide pixels made square", {1440, 1080}, {4, 3}, {1920, 1080}, square);
    row("large numbers", {1000, 999}, {65521, 65519}, {333, 777}, {23357, 10000});
}

void TestJobAdditions::shapes() {
    QFETCH(const QSize, source);
    QFETCH(const QSize, pixel);
    QFETCH(const QSize, output);
    QFETCH(const QSize, expected);
    TrackFacts track = picture();
    track.width = source.width();
    track.height = source.height();
    track.pixelShape = {pixel.width(), pixel.height()};
    const Ratio shape = outputPixelShape(track, output.width(), output.height());
    QVERIFY(shape.numerator <= 65535 && shape.denominator <= 65535);
    const double wanted = static_cast<double>(expected.width()) / expected.height();
    QVERIFY2(qAbs(shape.value() / wanted - 1) < 0.0001, qPrintable(QString::number(shape.value())));
}

void TestJobAdditions::rates_data() {
    QTest::addColumn<QSize>("nominal");
    QTest::addColumn<QSize>("average");
    QTest::addColumn<QSize>("expected");
    const auto row = [](const char* what, QSize nominal, QSize average, QSize expected) {
        QTest::newRow(what) << nominal << average << expected;
    };
    const QSize unknown(0, 0);
    row("even", {30000, 1001}, {30000, 1001}, {30000, 1001});
    row("nearly", {30, 1}, {140000, 5087}, {30, 1});
    row("slow motion", {240, 1}, {240, 1}, {240, 1});
    row("a photo that moves", {120, 1}, {580000, 21007}, {30000, 1001});
    row("steps of the clock", {90000, 1}, {25, 1}, {25, 1});
    row("average alone", unknown, {2398, 100}, {24000, 1001});
    row("nominal alone", {25, 1}, unknown, {25, 1});
    row("nothing", unknown, unknown, unknown);
    row("nothing sensible", {90000, 1}, unknown, unknown);
    row("nothing sensible twice", {90000, 1}, {90000, 1}, unknown);
    row("a slow one", {60, 1}, {5, 1}, {24000, 1001});
}

void TestJobAdditions::rates() {
    QFETCH(const QSize, nominal);
    QFETCH(const QSize, average);
    QFETCH(const QSize, expected);
    TrackFacts track = picture();
    track.nominalRate = {nominal.width(), nominal.height()};
    track.averageRate = {average.width(), average.height()};
    const Ratio rate = outputRate(track);
    QCOMPARE(QSize(static_cast<int>(rate.numerator), static_cast<int>(rate.denominator)), expected);
    QCOMPARE(filter(completed({track})).contains(QStringLiteral(",fps=")), expected.width() > 0);
}

void TestJobAdditions::colours_data() {
    QTest::addColumn<QByteArray>("transfer");
    QTest::addColumn<QByteArray>("matrix");
    QTest::addColumn<bool>("hasZscale");
    QTest::addColumn<int>("dolbyVision");
    QTest::addColumn<QString>("expected"); // empty: left as they are
    QTest::newRow("HLG") << QByteArray("arib-std-b67") << QByteArray("bt2020nc") << true << 8
                         << QStringLiteral(
                                "zscale=tin=arib-std-b67:min=bt2020nc:pin=bt2020:rin=limited:");
    QTest::newRow("PQ") << QByteArray("smpte2084") << QByteArray("bt709") << true << 0
                        << QStringLiteral("zscale=tin=smpte2084:min=bt709:pin=bt2020:rin=limited:");
    QTest::newRow("matrix unknown")
        << QByteArray("smpte2084") << QByteArray("") << true << 0
        << QStringLiteral("zscale=tin=smpte2084:min=bt2020nc:pin=bt2020:");
    QTest::newRow("without zscale")
        << QByteArray("arib-std-b67") << QByteArray("bt2020nc") << false << 0 << QString();
    QTest::newRow("Dolby Vision 5")
        << QByteArray("smpte2084") << QByteArray("") << true << 5 << QString();
    for (const char* ordinary : {"bt709", "smpte170m", "bt2020-10", "iec61966-2-1", ""})
        QTest::newRow(*ordinary ? ordinary : "unknown")
            << QByteArray(ordinary) << QByteArray("bt709") << true << 0 << QString();
}

void TestJobAdditions::colours() {
    QFETCH(const QByteArray, transfer);
    QFETCH(const QByteArray, matrix);
    QFETCH(const bool, hasZscale);
    QFETCH(const int, dolbyVision);
    QFETCH(const QString, expected);
    TrackFacts track = picture();
    track.transfer = transfer.toStdString();
    track.matrix = matrix.toStdString();
    track.dolbyVisionProfile = dolbyVision;
    const QString found = filter(completed({track}, {true, true, hasZscale}));
    QVERIFY(found.startsWith(QStringLiteral("scale=640:360:out_range=tv,")));
    QCOMPARE(found.contains(QStringLiteral("zscale")), !expected.isEmpty());
    QVERIFY2(found.contains(expected), qPrintable(found));
    QCOMPARE(found.contains(QStringLiteral("sidedata=delete:CONTENT_LIGHT_LEVEL,")),
             !expected.isEmpty());
}

void TestJobAdditions::redGreenAndBlue() {
    TrackFacts track = picture();
    track.matrix = "gbr";
    QVERIFY(filter(completed({track}))
                .startsWith(QStringLiteral(
                    "scale=640:360:out_range=tv:out_color_matrix=bt709,setparams=")));
}

void TestJobAdditions::foreignWordsStayOut() {
    constexpr char foreign[] = "x,movie=/etc/passwd;$(id)'\"\n error time=";
    TrackFacts track = picture();
    track.matrix = track.primaries = track.range = foreign;
    TrackFacts voice = sound(1, foreign);
    for (const char* transfer : {foreign, "smpte2084"}) {
        track.transfer = transfer;
        const CompletedJob job = completed({track, voice, subtitles(2, foreign)});
        for (const std::string& each : job.arguments)
            QVERIFY(each.find("passwd") == std::string::npos);
        for (const std::string& each : job.losses)
            QVERIFY(each.find("passwd") == std::string::npos);
    }
}

void TestJobAdditions::remarks() {
    TrackFacts track = picture();
    track.transfer = "smpte2084";
    const CompletedJob job = completed({track, sound(1, ""), sound(2, "pcm_s16le", 12)});
    const QByteArray said = QByteArray::fromStdString(remarksAbout(job));
    QCOMPARE(said.count('\n'), 2);
    QVERIFY(said.startsWith("reelshift: for the log: ffmpeg -psnr -noautorotate -i INPUT "));
    QVERIFY(said.contains(" OUTPUT\n"));
    QVERIFY(said.contains(" scale=640:360:out_range=tv,zscale="));
    QVERIFY(said.contains(" 'channelmap=map=0|1|2"));
    QVERIFY(!said.contains("/home/u"));
    // Neither what the window looks for in an encoder's words nor what begins its report.
    for (const char* marker : {"time=", "error", "Invalid", "LPSNR=", "frame=", "No space",
                               "av_interleaved_write_frame", "Duration", "Stream mapping"})
        QVERIFY2(!said.contains(marker), marker);
}

REELSHIFT_TEST(tst_job_additions, TestJobAdditions, NoApplication)
#include "tst_job_additions.moc"
