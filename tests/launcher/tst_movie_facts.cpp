#include "TestProgram.h"
#include "launcher/FileList.h"
#include "launcher/FlatReport.h"
#include "launcher/MovieFacts.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

MovieFacts factsFrom(const QByteArray& lines) {
    return movieFactsFrom(lines.toStdString());
}

TrackFacts onlyTrack(const QByteArray& lines) {
    const MovieFacts facts = factsFrom(lines);
    return facts.tracks.size() == 1 ? facts.tracks[0] : TrackFacts{};
}

bool isUnknown(const Ratio& ratio) {
    return !ratio.isKnown() && ratio.numerator == 0 && ratio.denominator == 0;
}

} // namespace

/// What ffprobe's answer comes to, and which files are no movies.
class TestMovieFacts final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void entries();
    void aPhonesMovie();
    void nonsense_data();
    void nonsense();
    void whichPicture();
    void lightOfTheFirstPicture();
    void phoneTags_data();
    void phoneTags();
    void dates_data();
    void dates();

    void lists_data();
    void lists();
    void listsInFiles();
};

void TestMovieFacts::entries() {
    QStringList found;
    forEachEntry("a=1\nb.c=\"x=\\\"y\\\"\"\nno entry\nd=\"open\ne=\nf=last",
                 [&](std::string_view key, std::string_view value) {
                     found += QString::fromStdString(std::string(key).append("|").append(value));
                 });
    QCOMPARE(found, (QStringList{QStringLiteral("a|1"), QStringLiteral("b.c|x=\\\"y\\\""),
                                 QStringLiteral("e|")}));
}

void TestMovieFacts::aPhonesMovie() {
    const MovieFacts facts = movieFactsFrom(
        "program_version.version=\"7.1\"\n"
        "streams.stream.0.index=0\nstreams.stream.0.codec_name=\"aac\"\n"
        "streams.stream.0.codec_type=\"audio\"\nstreams.stream.0.sample_fmt=\"fltp\"\n"
        "streams.stream.0.sample_rate=\"48000\"\nstreams.stream.0.channels=2\n"
        "streams.stream.1.index=1\nstreams.stream.1.codec_name=\"hevc\"\n"
        "streams.stream.1.codec_type=\"video\"\nstreams.stream.1.width=1280\n"
        "streams.stream.1.height=720\nstreams.stream.1.sample_aspect_ratio=\"4:3\"\n"
        "streams.stream.1.r_frame_rate=\"30000/1001\"\nstreams.stream.1.avg_frame_rate=\"0/0\"\n"
        "streams.stream.1.color_range=\"pc\"\nstreams.stream.1.color_space=\"unknown\"\n"
        "streams.stream.1.color_transfer=\"arib-std-b67\"\n"
        "streams.stream.1.disposition.attached_pic=0\n"
        "streams.stream.1.side_data_list.side_data.0.dv_profile=8\n"
        "streams.stream.2.index=2\nstreams.stream.2.codec_type=\"data\"\n");
    QCOMPARE(facts.tracks.size(), std::size_t{3});
    const TrackFacts& sound = facts.tracks[0];
    QVERIFY(sound.kind == TrackKind::Sound && sound.hasDecoder);
    QCOMPARE(sound.sampleRate, 48000);
    QCOMPARE(sound.channels, 2);
    const TrackFacts& picture = facts.tracks[1];
    QCOMPARE(facts.picture(), &picture);
    QCOMPARE(picture.index, 1);
    QCOMPARE(picture.codec, std::string("hevc"));
    QCOMPARE(picture.width, 1280);
    QCOMPARE(picture.height, 720);
    QCOMPARE(picture.pixelShape.value(), 4.0 / 3);
    QCOMPARE(picture.nominalRate.numerator, 30000);
    QVERIFY(isUnknown(picture.averageRate));
    QCOMPARE(picture.range, std::string("pc"));
    QVERIFY(picture.matrix.empty());
    QCOMPARE(picture.transfer, std::string("arib-std-b67"));
    QCOMPARE(picture.dolbyVisionProfile, 8);
    QVERIFY(!picture.isCoverPicture);
    QVERIFY(facts.tracks[2].kind == TrackKind::Other);
}

void TestMovieFacts::nonsense_data() {
    QTest::addColumn<QByteArray>("value");
    for (const char* value :
         {"-1", "", "x", "1x", "99999999999999999999", "N/A", "0", "1e3", "0x10", "\"", "70000"})
        QTest::newRow(*value ? value : "nothing") << QByteArray(value);
}

void TestMovieFacts::nonsense() {
    QFETCH(const QByteArray, value);
    const QByteArray start = "streams.stream.0.index=0\nstreams.stream.0.";
    QCOMPARE(onlyTrack(start + "width=" + value + '\n').width, 0);
    QVERIFY(isUnknown(onlyTrack(start + "sample_aspect_ratio=\"" + value + ":0\"\n").pixelShape));
    QVERIFY(isUnknown(onlyTrack(start + "r_frame_rate=\"0/" + value + "\"\n").nominalRate));
    QVERIFY(factsFrom("streams.stream." + value + "x.index=0\n").tracks.empty());
}

void TestMovieFacts::whichPicture() {
    const auto track = [](int index, const char* lines) {
        const QByteArray start = "streams.stream." + QByteArray::number(index) + '.';
        QByteArray text = start + "index=" + QByteArray::number(index) + '\n';
        for (const QByteArray& line : QByteArray(lines).split('\n'))
            text += start + line + '\n';
        return text;
    };
    constexpr char video[] = "codec_type=\"video\"\ncodec_name=\"hevc\"\nwidth=64\nheight=48";
    const MovieFacts facts =
        factsFrom(track(0, "codec_type=\"audio\"") +
                  track(1, "codec_type=\"video\"\ncodec_name=\"mjpeg\"\nwidth=9\nheight=9\n"
                           "disposition.attached_pic=1") +
                  track(2, "codec_type=\"video\"\ncodec_name=\"unknown\"\nwidth=9\nheight=9") +
                  track(3, video) + track(4, video));
    QVERIFY(facts.picture());
    QCOMPARE(facts.picture()->index, 3);
    QVERIFY(!movieFactsFrom("").picture());
}

void TestMovieFacts::lightOfTheFirstPicture() {
    constexpr char start[] = "streams.stream.0.index=0\nstreams.stream.0.codec_type=\"video\"\n"
                             "streams.stream.0.codec_name=\"hevc\"\nstreams.stream.0.width=640\n"
                             "streams.stream.0.height=360\nstreams.stream.0.color_transfer=";
    QVERIFY(!mayBeHlg(*movieFactsFrom(std::string(start) + "\"bt709\"\n").picture()));
    MovieFacts facts = movieFactsFrom(std::string(start) + "\"bt2020-10\"\n");
    QVERIFY(mayBeHlg(*facts.picture()));
    for (const char* other : {"", "frames.frame.0.color_transfer=\"bt2020-10\"\n",
                              "frames.frame.0.side=\"arib-std-b67\"\n"}) {
        takeFirstPicture(facts, other);
        QCOMPARE(facts.picture()->transfer, std::string("bt2020-10"));
    }
    takeFirstPicture(facts, "frames.frame.0.color_transfer=\"arib-std-b67\"\n");
    QCOMPARE(facts.picture()->transfer, std::string("arib-std-b67"));
    MovieFacts nothing;
    takeFirstPicture(nothing, "frames.frame.0.color_transfer=\"arib-std-b67\"\n");
    QVERIFY(nothing.tracks.empty());
}

void TestMovieFacts::phoneTags_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<bool>("isOne");
    QTest::newRow("apple") << QByteArray("com_apple_quicktime_make") << true;
    QTest::newRow("android") << QByteArray("com_android_version") << true;
    QTest::newRow("camera") << QByteArray("make") << true;
    QTest::newRow("model") << QByteArray("model") << true;
    QTest::newRow("title") << QByteArray("title") << false;
    QTest::newRow("like one") << QByteArray("x_com_apple") << false;
}

void TestMovieFacts::phoneTags() {
    QFETCH(const QByteArray, key);
    QTEST(factsFrom("format.tags." + key + "=\"x\"\n").hasPhoneTags, "isOne");
    QVERIFY(!factsFrom("streams.stream.0.tags." + key + "=\"x\"\n").hasPhoneTags);
}

void TestMovieFacts::dates_data() {
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("repeated");
    QTest::newRow("once") << QByteArray("2022-03-04T05:06:07.000000Z") << QByteArray();
    QTest::newRow("twice") << QByteArray("2022-03-04T05:06:07.000000Z;2022-03-04T05:06:07Z")
                           << QByteArray("2022-03-04T05:06:07Z");
    QTest::newRow("hostile") << QByteArray("2022-03-04T05:06:0$;2022-03-04") << QByteArray();
    QTest::newRow("short") << QByteArray("2022;2022") << QByteArray();
    QTest::newRow("nothing") << QByteArray() << QByteArray();
}

void TestMovieFacts::dates() {
    QFETCH(const QByteArray, told);
    QTEST(QByteArray::fromStdString(
              factsFrom("format.tags.creation_time=\"" + told + "\"\n").repeatedDate),
          "repeated");
}

void TestMovieFacts::lists_data() {
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<bool>("isList");
    const QByteArray tag("ID3\4\0\0\0\0\0\3abc", 13);
    QTest::newRow("concat") << QByteArray("ffconcat version 1.0\nfile a.mp4\n") << true;
    QTest::newRow("concat behind a tag") << tag + "ffconcat version 1.0\nfile a.mp4\n" << true;
    QTest::newRow("concat behind two tags") << tag + tag + "ffconcat version 1.0\n" << true;
    QTest::newRow("HLS") << QByteArray("#EXTM3U\n#EXT-X-TARGETDURATION:10\n") << true;
    QTest::newRow("DASH") << QByteArray("<?xml version=\"1.0\"?>\n<mpd profiles=\"\">") << true;
    QTest::newRow("IMF") << QByteArray("<?xml?><CompositionPlaylist xmlns=\"\">") << true;
    QTest::newRow("MP4") << QByteArray("\0\0\0\x18"
                                       "ftypmp42<MPD",
                                       16)
                         << false;
    QTest::newRow("an MP4 that speaks of lists")
        << QByteArray("\0\0\0\x18"
                      "ftypmp42\nffconcat version 1.0\n#EXTM3U",
                      41)
        << false;
    QTest::newRow("stream") << QByteArray("G@\0\x10<MPD", 8) << false;
    QTest::newRow("subtitles") << QByteArray("1\n00:00:01,000 --> 00:00:02,000\nffconcat\n")
                               << false;
    QTest::newRow("a tag that is cut") << tag.first(8) << false;
    QTest::newRow("a tag without an end") << QByteArray("ID3\4\0\0\x7f\x7f\x7f\x7f", 10) << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestMovieFacts::lists() {
    QFETCH(const QByteArray, beginning);
    QTEST(isListOfFiles(beginning.toStdString()), "isList");
}

void TestMovieFacts::listsInFiles() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.mp4"));
    const auto write = [&](const QByteArray& text) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    };
    QVERIFY(write("ffconcat version 1.0\n"));
    QVERIFY(namesOtherFiles(path.toStdString()));
    QVERIFY(write(QByteArray("<!-- ") + QByteArray(100000, 'x') + "--><MPD>"));
    QVERIFY(namesOtherFiles(path.toStdString()));
    QByteArray long_("ID3\4\0\0\0\3\0\0", 10);
    QVERIFY(write(long_ + QByteArray(3 << 14, '\0') + "#EXTM3U\n"));
    QVERIFY(namesOtherFiles(path.toStdString()));
    QVERIFY(write(QByteArray("\0\0\0\x18"
                             "ftyp",
                             8) +
                  QByteArray(100000, 'x') + "<MPD"));
    QVERIFY(!namesOtherFiles(path.toStdString()));
    QVERIFY(!namesOtherFiles(folder.path().toStdString()));
    QVERIFY(!namesOtherFiles("/nowhere"));
    QVERIFY(!namesOtherFiles(""));
    // One that nobody writes to would be waited for.
    const std::string pipe = folder.filePath(QStringLiteral("pipe")).toStdString();
    QCOMPARE(::mkfifo(pipe.c_str(), 0600), 0);
    QVERIFY(!namesOtherFiles(pipe));
}

REELSHIFT_TEST(tst_movie_facts, TestMovieFacts, NoApplication)
#include "tst_movie_facts.moc"
