#include "TestProgram.h"
#include "app/RunChecks.h"
#include "faults/FaultRows.h"

#include <QApplication>
#include <QProcess>

#include <csignal>

#include <signal.h>
#include <unistd.h>

/// Movies that go away, and movies that are not what they were taken for.
class TestFaultsSource final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void source_data();
    void source();

private:
    static void goneBefore();
    static void goneDuring();
    static void goneWhilePaused();
    static void input();

    FaultTable table_;
};

namespace {

QString aside(const FaultScene& scene) {
    return scene.program.path(QStringLiteral("aside.mp4"));
}

void takeAway(FaultScene& scene) {
    scene.expectChange(scene.source(badName));
    QVERIFY(QFile::rename(scene.source(badName), aside(scene)));
}

void putBack(FaultScene& scene) {
    QVERIFY(QFile::rename(aside(scene), scene.source(badName)));
}

// Its first encoder says something again and again, the others convert it.
QString addTalking(FaultScene& scene) {
    scene.program.movie(badName)
        .encodeAt(1, {"create", "header", "write 10", "loop 10000", "progress 1", "wait 20", "end"})
        .write();
    scene.add(badName);
    return scene.addGood(goodName) ? QString() : QStringLiteral("no movie could be made");
}

void killWithoutSource(FaultScene& scene) {
    QVERIFY(scene.waitForProgress());
    takeAway(scene);
    ::kill(static_cast<pid_t>(scene.encoderPid()), SIGKILL);
}

} // namespace

void TestFaultsSource::source_data() {
    QTest::addColumn<Fault>("fault");
    goneBefore();
    goneDuring();
    goneWhilePaused();
    input();
}

void TestFaultsSource::source() {
    SURVIVE(table_);
}

void TestFaultsSource::goneBefore() {
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        Fault fault{.name = QStringLiteral("the source is gone before its turn"),
                    .encoder = encoder,
                    .prepare = [](FaultScene& scene) {
                        const QString problem = addBoth(scene);
                        if (problem.isEmpty())
                            takeAway(scene);
                        return problem;
                    }};
        fault.answer = QStringLiteral("Skip");
        fault.boxes = {{sourceGoneBox, 1000}, {summaryBox}};
        fault.waiting = QStringList(badName);
        fault.outputs = QStringList(goodOutput);
        addRow(fault);
        fault.answer = QStringLiteral("Try again, Skip");
        fault.boxes = {{sourceGoneBox, 1001}, {sourceGoneBox, 1000}, {summaryBox}};
        addRow(fault);
        fault.answer = QStringLiteral("put back, Try again");
        fault.boxes = {{sourceGoneBox, 1001, putBack}, {summaryBox}};
        fault.waiting.clear();
        fault.outputs = QStringList({badOutput, goodOutput});
        addRow(fault);
    }
}

void TestFaultsSource::goneDuring() {
    Fault fault{.name = QStringLiteral("the source goes while it is encoded"),
                .prepare = addTalking,
                .meanwhile = killWithoutSource};
    fault.answer = QStringLiteral("OK");
    fault.boxes = {{sourceWentBox, 1000}, {summaryBox}};
    fault.waiting = QStringList({badName, goodName});
    addRow(fault);
    fault.answer = QStringLiteral("Try again, Skip");
    fault.boxes = {{sourceWentBox, 1001}, {sourceGoneBox, 1000}, {summaryBox}};
    fault.waiting = QStringList(badName);
    fault.outputs = QStringList(goodOutput);
    addRow(fault);
    fault.answer = QStringLiteral("put back, Try again");
    fault.boxes = {{sourceWentBox, 1001, putBack}, {summaryBox}};
    fault.waiting.clear();
    fault.outputs = QStringList({badOutput, goodOutput});
    addRow(fault);

    fault.encoder = Encoder::Real;
    fault.prepare = [](FaultScene& scene) {
        if (!scene.makeLong(badName))
            return QStringLiteral("no movie could be made");
        scene.add(badName);
        return scene.addGood(goodName) ? QString() : QStringLiteral("no movie could be made");
    };
    fault.answer = QStringLiteral("OK");
    fault.boxes = {{sourceWentBox, 1000}, {summaryBox}};
    fault.waiting = QStringList({badName, goodName});
    fault.outputs.clear();
    addRow(fault);
}

void TestFaultsSource::goneWhilePaused() {
    Fault fault{.name = QStringLiteral("the source goes while it is paused, resumed"),
                .prepare = addTalking,
                .meanwhile = [](FaultScene& scene) {
                    QVERIFY(scene.pause());
                    takeAway(scene);
                    scene.program.clickRowButton(0);
                }};
    fault.answer = QStringLiteral("Skip");
    fault.boxes = {{sourceGoneBox, 1000}, {summaryBox}};
    fault.waiting = QStringList(badName);
    fault.outputs = QStringList(goodOutput);
    addRow(fault);
    fault.answer = QStringLiteral("put back, Try again");
    fault.boxes = {{sourceGoneBox, 1001, putBack}, {summaryBox}};
    fault.waiting.clear();
    fault.outputs = QStringList({badOutput, goodOutput});
    addRow(fault);
}

void TestFaultsSource::input() {
    for (const Encoder encoder : {Encoder::Scripted, Encoder::Real}) {
        addErrorRows({.name = QStringLiteral("a folder in the source's place"),
                      .encoder = encoder,
                      .prepare = [](FaultScene& scene) {
                          const QString problem = addBoth(scene);
                          if (problem.isEmpty()) {
                              takeAway(scene);
                              QDir().mkpath(scene.source(badName));
                          }
                          return problem;
                      }});
        addErrorRows({.name = QStringLiteral("the source may not be read any more"),
                      .encoder = encoder,
                      .prepare = [](FaultScene& scene) {
                          if (::geteuid() == 0)
                              return QStringLiteral("root may read everything");
                          const QString problem = addBoth(scene);
                          scene.expectChange(scene.source(badName));
                          QFile::setPermissions(scene.source(badName), {});
                          return problem;
                      }});
    }
    const auto made = [](const RealMovies::Wish& wish,
                         const std::function<QByteArray(QByteArray)>& change = {}) {
        return [wish, change](FaultScene& scene) {
            if (!scene.makeReal(badName, wish))
                return QStringLiteral("this ffmpeg does not make such a movie");
            if (change)
                writeContent(scene.source(badName), change(contentOf(scene.source(badName))));
            scene.add(badName);
            if (!scene.addGood(goodName))
                return QStringLiteral("no movie could be made");
            return scene.program.files().rowCount() == 2 ? QString()
                                                         : QStringLiteral("refused when added");
        };
    };
    const auto noise = [](QByteArray bytes) {
        const auto from = bytes.size() / 3;
        for (qsizetype i = from; i < 2 * from; ++i)
            bytes[i] = static_cast<char>(i * 37);
        return bytes;
    };
    const QStringList fast{QStringLiteral("-movflags"), QStringLiteral("faststart")};
    const QStringList matroska{QStringLiteral("-f"), QStringLiteral("matroska")};
    const QStringList encrypted{
        QStringLiteral("-encryption_scheme"), QStringLiteral("cenc-aes-ctr"),
        QStringLiteral("-encryption_key"),    QStringLiteral("76a6c65c5ea762046bd749a2e632ccbb"),
        QStringLiteral("-encryption_kid"),    QStringLiteral("a7e61c373e219033c21091fa607bf3b8")};
    addErrorRows({.name = QStringLiteral("a third of the movie is noise"),
                  .encoder = Encoder::Real,
                  .prepare = made({.more = fast}, noise)});
    addErrorRows({.name = QStringLiteral("encrypted (cenc-aes-ctr)"),
                  .encoder = Encoder::Real,
                  .prepare = made({.more = encrypted})});
    for (const char* codec : {"pcm_s16le", "flac"}) {
        addHarmlessRow(
            {.name = QStringLiteral("sound that MP4 cannot take, ") + QString::fromLatin1(codec),
             .encoder = Encoder::Real,
             .prepare = made({.audio = QString::fromLatin1(codec), .more = matroska})});
    }
    addErrorRows({.name = QStringLiteral("truncated, with its index at the front"),
                  .encoder = Encoder::Real,
                  .prepare = made({.more = fast}, [](const QByteArray& bytes) {
                      return bytes.left(bytes.size() * 2 / 3);
                  })});
    addRow({.name = QStringLiteral("truncated, with its index at the end"),
            .answer = QStringLiteral("OK"),
            .encoder = Encoder::Real,
            .prepare =
                [](FaultScene& scene) {
                    if (!scene.addGood(goodName) || !scene.makeReal(badName))
                        return QStringLiteral("no movie could be made");
                    const QByteArray bytes = contentOf(scene.source(badName));
                    writeContent(scene.source(badName), bytes.left(bytes.size() * 2 / 3));
                    scene.program.boxes.answerTheRest(1000);
                    scene.add(badName);
                    return QString();
                },
            .boxes = {{unsupportedBox}, {summaryBox}},
            .outputs = QStringList(goodOutput)});
}

REELSHIFT_TEST(tst_faults_source, TestFaultsSource, QApplication)
#include "tst_faults_source.moc"
