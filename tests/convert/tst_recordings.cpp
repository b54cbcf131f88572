#include "TestProgram.h"
#include "convert/EncoderLife.h"
#include "convert/EncoderMarkers.h"
#include "convert/PieceCutter.h"
#include "convert/Recordings.h"
#include "launcher/ReportRewriter.h"
#include "media/ProbeReport.h"
#include "media/ReportBlanking.h"

#include <QDir>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString clip = QStringLiteral("/home/u/Videos/clip.mp4");

struct Heard {
    EncoderLife life;
    bool complaint = false; ///< a piece that leads to the conversion error
    bool noPicture = false;
    bool failureAtEnd = false;
    bool failureWithoutPosition = false;
};

bool hasFilter(const QByteArray& release) {
    return !release.startsWith("5.");
}

/// What the window gets of a recording: the later releases speak through the launcher's filter.
QByteArray asPassedOn(const QByteArray& release, const QByteArray& bytes,
                      const QStringList& names) {
    if (!hasFilter(release))
        return bytes;
    std::vector<std::string> texts;
    for (const QString& name : names)
        texts.push_back(name.toStdString());
    ReportRewriter rewriter(texts);
    const std::string passed = rewriter.add(bytes.toStdString()) + rewriter.finish();
    return QByteArray::fromStdString(passed);
}

/// Reads a recording in reads of `size` bytes, as the reader of an encoder does.
Heard hear(const QByteArray& bytes, const QStringList& names, qsizetype size) {
    Heard heard;
    heard.life.launched();
    PieceCutter cutter(names);
    const auto take = [&](const EncoderPiece& piece) {
        const EncoderMarkers& marks = piece.marks;
        heard.life.saw(piece);
        heard.noPicture = heard.noPicture || marks.hasNoPicture;
        heard.failureAtEnd = heard.failureAtEnd || piece.writeFailureAtEnd;
        if (marks.isWriteFailureAlone() && !piece.writeFailureAtEnd)
            heard.failureWithoutPosition = true;
        if ((marks.hasPosition || marks.hasError || piece.hasDamage) &&
            (marks.hasError || marks.hasInvalid))
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

/// What the rules make of everything that the real encoders wrote, however it arrives.
class TestRecordings final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comeToAnOutcome_data();
    void comeToAnOutcome();
    void allAreLookedAt();
    void filterChangesNothingElse_data();
    void filterChangesNothingElse();
    void examinationsReadAlike_data();
    void examinationsReadAlike();
    void writeFailureIsHandledWithAPosition();
    void lastBytesThatDoNotFitAreToldAtTheEnd();
    void movieWithoutAPicture();

private:
    QSet<QByteArray> lookedAt_;
};

void TestRecordings::comeToAnOutcome_data() {
    using V = EncoderLife::Verdict;
    QTest::addColumn<QByteArray>("release");
    QTest::addColumn<QByteArray>("recording");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<V>("verdict");
    QTest::addColumn<bool>("hasDamage");
    const auto oneRow = [](const QByteArray& release, const QByteArray& recording,
                           const QStringList& names, V verdict, bool hasDamage) {
        const QByteArray name = release + ' ' + recording;
        QTest::newRow(name.constData()) << release << recording << names << verdict << hasDamage;
    };
    const auto row = [&](const char* recording, const QString& source, const QString& output,
                         V verdict, bool hasDamage = false) {
        const QStringList names{QStringLiteral("/home/u/") + source,
                                QStringLiteral("/home/u/") + output};
        for (const QByteArray release : Recordings::releases) {
            // Kept: the earlier ones put no such sound into an MP4 file.
            const bool isRefused = release == "5.1.9" && QByteArray(recording).endsWith("-sound");
            oneRow(release, recording, names, isRefused ? V::Failed : verdict, hasDamage);
        }
    };
    const auto damaged = [&](const QString& name) {
        row(name.toLatin1(), QStringLiteral("Videos/%1.mp4").arg(name),
            QStringLiteral("Converted/%1_Normal_640x480.mp4").arg(name), V::Failed, true);
    };
    const QString movie = QStringLiteral("Videos/clip.mp4");
    const QString output = QStringLiteral("Converted/clip_HQ_1280x720.mp4");
    row("finished", movie, output, V::Converted);
    row("finished-misleading-names", QStringLiteral("Invalid error/time=\u00e9.mp4"),
        QStringLiteral("Invalid error/LPSNR= av_interleaved_write_frame.mp4"), V::Converted);
    row("pcm-sound", QStringLiteral("Videos/pcm.mov"),
        QStringLiteral("Converted/pcm_Normal_640x480.mp4"), V::Converted);
    row("flac-sound", QStringLiteral("Videos/flac.mkv"),
        QStringLiteral("Converted/flac_Normal_640x480.mp4"), V::Converted);
    for (const char* name : {"damaged-begin", "damaged-middle", "damaged-end", "ruined", "cut"})
        damaged(QString::fromLatin1(name));
    row("no-picture", QStringLiteral("Videos/locked.mp4"),
        QStringLiteral("Converted/locked_HQ_1280x720.mp4"), V::Failed, true);
    row("disk-full", movie, QStringLiteral("full/clip_HQ_1280x720.mp4"), V::WriteFailed);
    row("index-full", movie, QStringLiteral("full/clip_HQ_1280x720.mp4"), V::WriteFailed);
    row("terminated", movie, QStringLiteral("Converted/clip_Pro_1280x720.mp4"), V::Failed);
    row("existing-output", movie, output, V::Failed);
    row("odd-size", movie, QStringLiteral("Converted/clip_HQ_641x481.mp4"), V::Failed);
    row("cut-no-index", QStringLiteral("Videos/cut-no-index.mp4"),
        QStringLiteral("Converted/cut-no-index_Normal_640x480.mp4"), V::Failed);
    row("not-a-movie", QStringLiteral("Videos/noise.mp4"),
        QStringLiteral("Converted/noise_HQ_1280x720.mp4"), V::Failed);
    row("no-source", QStringLiteral("Videos/gone.mp4"),
        QStringLiteral("Converted/gone_HQ_1280x720.mp4"), V::Failed);
    row("no-folder", movie, QStringLiteral("gone/clip_HQ_1280x720.mp4"), V::Failed);
    row("with-psnr", QStringLiteral("Videos/gone.mp4"), QString(), V::Failed);
    row("usage", QString(), QString(), V::Failed);
}

void TestRecordings::comeToAnOutcome() {
    QFETCH(const QByteArray, release);
    QFETCH(const QByteArray, recording);
    QFETCH(const QStringList, names);
    QFETCH(const EncoderLife::Verdict, verdict);
    QFETCH(const bool, hasDamage);
    lookedAt_ << recording;
    const int status = Recordings::status(release, recording);
    const QByteArray bytes =
        asPassedOn(release, Recordings::bytes(release + '/' + recording), names);
    for (const qsizetype size : {bytes.size(), qsizetype{4096}, qsizetype{97}, qsizetype{1}}) {
        Heard heard = hear(bytes, names, size);
        QCOMPARE(heard.complaint, heard.life.isDamageSeen());
        // One that fails otherwise may speak of an error as well.
        if (hasDamage || verdict != EncoderLife::Verdict::Failed)
            QCOMPARE(heard.complaint, hasDamage);
        QVERIFY(!heard.failureWithoutPosition);
        heard.life.ended({ProcessEnd::How::Exited, status});
        QCOMPARE(heard.life.verdict(), verdict);
    }
}

void TestRecordings::allAreLookedAt() {
    for (const char* release : Recordings::releases) {
        const QDir folder(QStringLiteral(REELSHIFT_RECORDINGS "/") + QLatin1StringView(release));
        for (const QString& file : folder.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
            const QByteArray name = file.chopped(4).toUtf8();
            QVERIFY2(lookedAt_.contains(name) || name.startsWith("probe"), name.constData());
        }
    }
}

void TestRecordings::filterChangesNothingElse_data() {
    comeToAnOutcome_data();
}

// A line apart from the last report and what the launcher translates is the one that was said.
void TestRecordings::filterChangesNothingElse() {
    QFETCH(const QByteArray, release);
    QFETCH(const QByteArray, recording);
    QFETCH(const QStringList, names);
    const QByteArray bytes = Recordings::bytes(release + '/' + recording);
    const QByteArrayList said = bytes.split('\n');
    const QByteArrayList passed = asPassedOn(release, bytes, names).split('\n');
    QCOMPARE(passed.size(), said.size());
    for (qsizetype i = 0; i < said.size(); ++i) {
        if (said[i] == passed[i])
            continue;
        const bool isReport = said[i].contains(" Lsize=") && passed[i].contains(" LPSNR=Y:nan ");
        const bool isFailure = said[i].contains("No space left on device");
        QVERIFY2(hasFilter(release) && (isReport || isFailure), passed[i].constData());
    }
    if (hasFilter(release))
        QCOMPARE(passed.join('\n').count(" LPSNR=Y:nan U:nan "), said.join('\n').count(" Lsize="));
}

void TestRecordings::examinationsReadAlike_data() {
    QTest::addColumn<int>("unused");
    for (const char* release : Recordings::releases)
        QTest::newRow(release) << 0;
}

void TestRecordings::examinationsReadAlike() {
    const QByteArray release = QTest::currentDataTag();
    const auto report = [&](const char* name, const QString& path) {
        return blankReport(QString::fromUtf8(Recordings::bytes(release + '/' + name)), {path});
    };
    const QString movie = report("probe", clip);
    QCOMPARE(probedDuration(movie), std::optional(QStringLiteral("00:00:04.00")));
    QVERIFY(probedAudio(movie) && probedAudio(movie)->isWanted);
    QVERIFY(probedVideo(movie) && probedVideo(movie)->isWanted);
    QCOMPARE(pictureSize(movie), (PictureSize{640, 480}));
    const QString noMovie = report("probe-no-movie", QStringLiteral("/home/u/Videos/noise.mp4"));
    QVERIFY(!probedDuration(noMovie));
    QVERIFY(!probedVideo(noMovie) || !probedVideo(noMovie)->isWanted);
}

void TestRecordings::writeFailureIsHandledWithAPosition() {
    const QByteArray bytes = Recordings::bytes("5.1.9/disk-full");
    // The failure is a write of its own, some time before the one with the summary.
    const qsizetype start = bytes.lastIndexOf("av_interleaved_write_frame(): ");
    const qsizetype summary = bytes.indexOf("frame=", start);
    QVERIFY(start > 0 && summary > start);
    PieceCutter cutter({clip});
    cutter.add(bytes.first(start));
    while (const auto piece = cutter.next(false))
        QVERIFY(!piece->marks.hasWriteFailure);
    cutter.add(bytes.sliced(start, summary - start));
    QVERIFY(!cutter.next(false));
    cutter.add(bytes.sliced(summary));
    const auto piece = cutter.next(false);
    QVERIFY(piece);
    const EncoderMarkers& marks = piece->marks;
    QVERIFY(marks.hasWriteFailure && marks.hasPosition && marks.hasSummary);
    QVERIFY(!piece->writeFailureAtEnd);
    QVERIFY(positionText(piece->text).startsWith(u"00:00:0"));
}

void TestRecordings::lastBytesThatDoNotFitAreToldAtTheEnd() {
    const Heard heard = hear(Recordings::bytes("close-full"),
                             {clip, QStringLiteral("/home/u/full/clip_HQ_1280x720.mp4")}, 97);
    QVERIFY(heard.failureAtEnd);
    QVERIFY(heard.life.isSummarySeen());
}

void TestRecordings::movieWithoutAPicture() {
    const QStringList names{QStringLiteral("/home/u/Videos/locked.mp4"),
                            QStringLiteral("/home/u/Converted/locked_HQ_1280x720.mp4")};
    for (const QByteArray release : Recordings::releases) {
        const QByteArray bytes =
            asPassedOn(release, Recordings::bytes(release + "/no-picture"), names);
        QVERIFY(hear(bytes, names, 97).noPicture);
    }
    Heard heard = hear(Recordings::bytes("no-picture"), names, 97);
    QVERIFY(heard.noPicture);
    heard.life.ended({ProcessEnd::How::Exited, 0});
    QCOMPARE(heard.life.verdict(), EncoderLife::Verdict::Failed);
    QVERIFY(!hear(Recordings::bytes("5.1.9/finished"), {clip}, 97).noPicture);
}

REELSHIFT_TEST(tst_recordings, TestRecordings, NoApplication)
#include "tst_recordings.moc"
