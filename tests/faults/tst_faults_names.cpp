#include "TestProgram.h"
#include "app/RunChecks.h"
#include "faults/FaultRows.h"

#include <QApplication>
#include <QProcess>
#include <QUrl>

#include <cstdio>

/// Movies with names, titles and chapters that are made to be taken for something else.
class TestFaultsNames final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void metadata_data();
    void metadata();

private:
    FaultTable table_;
};

namespace {

struct HostileName {
    const char* what;
    QByteArray bytes;
};

const RealMovies::Wish tiny{
    .source = QStringLiteral("testsrc2=size=640x480:rate=10:duration=1"),
    .more = {QStringLiteral("-movflags"), QStringLiteral("faststart")},
};
const QString cannotMake = QStringLiteral("no movie could be made");

QList<HostileName> hostileNames() {
    return {
        {"quotes", "\"it's\" `now` \\\"$(HOME)\".mp4"},
        {"newlines", "one\ntwo\r\nthree\n.mp4"},
        {"tabs", "\tone\ttwo.mp4"},
        {"placeholders", "%1 %2 %n %L1 %s %d %%.mp4"},
        {"markup", "<b>bold<br><img src=x> &lt;a&gt;.mp4"},
        {"emoji", "\xf0\x9f\x8e\xac\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7.mp4"},
        {"right-to-left marks", "a\xe2\x80\xae"
                                "4pm.\xe2\x80\x8f\xe2\x81\xa7z.mp4"},
        {"a leading dash", "-i -y --help.mp4"},
        {"a line of the report", "x':\n  Duration: 9, Video: h264, 2x2\nframe= LPSNR= error.mp4"},
        {"a dot and nothing before it", ".mp4"},
    };
}

// As a file manager hands it over.
QString nameOf(const QByteArray& bytes) {
    return QUrl::fromEncoded(QByteArray("file:///" + bytes.toPercentEncoding()))
        .toLocalFile()
        .mid(1);
}

QString outputOf(const QByteArray& bytes) {
    const QString name = nameOf(bytes);
    const qsizetype dot = name.lastIndexOf(u'.');
    return (dot > 0 ? name.left(dot) : name) + QStringLiteral("_HQ_640x480.mp4");
}

/// Makes the movie in the list's folder; the bytes may be no text at all.
bool makeNamed(const FaultScene& scene, const QByteArray& bytes, bool isHevc = true) {
    const QString plain = QStringLiteral("made.mp4");
    RealMovies::Wish wish = tiny;
    if (!isHevc)
        wish.more << QStringLiteral("-c:v") << QStringLiteral("mpeg4") << QStringLiteral("-tag:v")
                  << QStringLiteral("mp4v");
    const bool made =
        scene.isRealEncoder()
            ? scene.makeReal(plain, wish)
            : !scene.program.movie(plain)
                   .probe(isHevc ? QStringLiteral("hevc") : QStringLiteral("h264"))
                   .encode(steps({"create", "header", "progress 5", "write 4096", "summary 10"}))
                   .write()
                   .isEmpty();
    const QByteArray named = QFile::encodeName(scene.program.movies()) + '/' + bytes;
    return made &&
           std::rename(QFile::encodeName(scene.source(plain)).constData(), named.constData()) == 0;
}

std::function<QString(FaultScene&)> named(const QByteArray& bytes) {
    return [bytes](FaultScene& scene) {
        if (!makeNamed(scene, bytes) || !makeNamed(scene, goodName.toUtf8()))
            return cannotMake;
        scene.add(nameOf(bytes));
        scene.add(goodName);
        return QString();
    };
}

/// Refused: alone in the list, without a word; after another, with the one message.
void addRefusedRows(Fault fault, const QByteArray& bytes, bool isHevc) {
    const auto refused = [bytes, isHevc](QStringList order) {
        return [=](FaultScene& scene) {
            if (!makeNamed(scene, bytes, isHevc) || !makeNamed(scene, goodName.toUtf8()))
                return cannotMake;
            scene.program.boxes.answerTheRest(1000);
            for (const QString& each : order)
                scene.add(each);
            return QString();
        };
    };
    fault.outputs = QStringList(goodOutput);
    fault.answer = QStringLiteral("none asked, as the first");
    fault.prepare = refused({nameOf(bytes), goodName});
    fault.boxes = {{summaryBox}};
    addRow(fault);
    fault.answer = QStringLiteral("OK, as the second");
    fault.prepare = refused({goodName, nameOf(bytes)});
    fault.boxes = {{unsupportedBox}, {summaryBox}};
    addRow(fault);
}

/// A movie whose title, comment and chapters say these.
QString addTitled(FaultScene& scene, const QList<QByteArray>& texts) {
    const QString plain = QStringLiteral("plain.mp4");
    if (!scene.makeReal(plain, tiny))
        return cannotMake;
    QByteArray sheet = ";FFMETADATA1\n";
    int next = 0;
    const auto text = [&] { return QByteArray(texts[next++ % texts.size()]).replace('=', "\\="); };
    for (const char* key : {"title", "artist", "comment", "description", "time"}) {
        const QByteArray twice = text();
        sheet += key + QByteArray("=") + twice + "\\\n" + twice + '\n';
    }
    for (const char* part : {"START=0\nEND=500", "START=500\nEND=1000"})
        sheet += "[CHAPTER]\nTIMEBASE=1/1000\n" + QByteArray(part) + "\ntitle=" + text() + '\n';
    writeContent(scene.program.path(QStringLiteral("sheet")), sheet);
    const QStringList arguments{QStringLiteral("-v"),
                                QStringLiteral("error"),
                                QStringLiteral("-i"),
                                scene.source(plain),
                                QStringLiteral("-i"),
                                scene.program.path(QStringLiteral("sheet")),
                                QStringLiteral("-map_metadata"),
                                QStringLiteral("1"),
                                QStringLiteral("-map_chapters"),
                                QStringLiteral("1"),
                                QStringLiteral("-c"),
                                QStringLiteral("copy"),
                                QStringLiteral("-movflags"),
                                QStringLiteral("use_metadata_tags"),
                                scene.source(badName)};
    if (QProcess::execute(FaultScene::movies().ffmpeg(), arguments) != 0 ||
        !QFile::rename(scene.source(plain), scene.source(goodName)))
        return cannotMake;
    scene.add(badName);
    scene.add(goodName);
    return QString();
}

} // namespace

void TestFaultsNames::names_data() {
    QTest::addColumn<Fault>("fault");
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        for (const HostileName& each : hostileNames()) {
            Fault fault{.name = QStringLiteral("named with ") + QString::fromLatin1(each.what),
                        .answer = QStringLiteral("none asked"),
                        .encoder = encoder,
                        .prepare =
                            [bytes = each.bytes](FaultScene& scene) {
                                if (!makeNamed(scene, bytes))
                                    return cannotMake;
                                scene.add(nameOf(bytes));
                                return QString();
                            },
                        .boxes = {{summaryBox}},
                        .outputs = QStringList(outputOf(each.bytes)),
                        .second = std::chrono::milliseconds(20)};
            addRow(fault);
        }

        const QByteArray markup = "<h1>%1<br>\n.mp4";
        Fault conflict{.name = QStringLiteral("its output is there, named with markup"),
                       .answer = QStringLiteral("Skip"),
                       .encoder = encoder,
                       .prepare =
                           [markup](FaultScene& scene) {
                               writeContent(scene.output(outputOf(markup)), "older");
                               return named(markup)(scene);
                           },
                       .boxes = {{conflictBox, 1002}, {summaryBox}},
                       .waiting = QStringList(nameOf(markup)),
                       .outputs = QStringList(goodOutput)};
        addRow(conflict);

        const QByteArray longest = QByteArray(251, 'n') + ".mp4";
        Fault tooLong{.name = QStringLiteral("named with 255 bytes: no name is left for an output"),
                      .answer = QStringLiteral("Skip"),
                      .encoder = encoder,
                      .prepare = named(longest),
                      .boxes = {{errorBox, 1001}, {summaryBox}},
                      .waiting = QStringList(nameOf(longest)),
                      .outputs = QStringList(goodOutput)};
        addRow(tooLong);
        tooLong.answer = QStringLiteral("Stop");
        tooLong.boxes = {{errorBox, 1000}, {summaryBox}};
        tooLong.waiting += goodName;
        tooLong.outputs.clear();
        addRow(tooLong);

        addRefusedRows({.name = QStringLiteral("named with invalid UTF-8"), .encoder = encoder},
                       "a\xff\xc3"
                       "b.mp4",
                       true);
        addRefusedRows(
            {.name = QStringLiteral("no HEVC, named with markup and a report"), .encoder = encoder},
            "<b>%1<br>\n  Stream #0:0: Video: hevc, 640x480.mp4", false);
    }
}

void TestFaultsNames::names() {
    SURVIVE(table_);
}

void TestFaultsNames::metadata_data() {
    QTest::addColumn<Fault>("fault");
    const QList<QList<QByteArray>> sheets{
        {"time=", "error", "Duration: "},
        {"time=00:00:99.00 LPSNR=Y:inf", "Invalid", "Video: h264"},
        {"LPSNR=", "av_interleaved_write_frame", "Stream #0:0: Video: h264, 2x2"},
        {"frame=", "No space left on device", "Duration: 99:99:99.99, start: 0"},
        {"frame=  1 fps=1 time=00:00:01.00 LPSNR=Y:1", "Invalid data found", "<b>%1</b>"},
    };
    for (const QList<QByteArray>& texts : sheets) {
        Fault fault{.name = QStringLiteral("titled ") + QString::fromLatin1(texts.join(" / ")),
                    .encoder = Encoder::Real,
                    .prepare = [texts](FaultScene& scene) { return addTitled(scene, texts); },
                    .second = std::chrono::milliseconds(20)};
        addHarmlessRow(fault);
    }
}

void TestFaultsNames::metadata() {
    SURVIVE(table_);
}

REELSHIFT_TEST(tst_faults_names, TestFaultsNames, QApplication)
#include "tst_faults_names.moc"
