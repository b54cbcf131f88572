#include "app/ControllerFixture.h"
#include "filelist/StatusWords.h"

#include <QFile>
#include <QTest>

/// Whole runs with the fake encoder: from the list to the summary.
class TestRun final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoMovies();
};

void TestRun::twoMovies() {
    ControllerFixture program;
    const QString first = program.movie(QStringLiteral("a.mp4")).write();
    const QString second = program.movie(QStringLiteral("b.c.mp4")).write();
    program.add({first, second});
    QCOMPARE(program.files().rowCount(), 2);
    QCOMPARE(program.status(0), status::STATWT);

    program.boxes.promise(1000);
    QVERIFY(program.runToEnd());
    QVERIFY(program.boxes.allKept());
    QCOMPARE(program.boxes.seen.size(), 1);
    QVERIFY(QFile::exists(program.output(QStringLiteral("a_HQ_640x480.mp4"))));
    QVERIFY(QFile::exists(program.output(QStringLiteral("b.c_HQ_640x480.mp4"))));
    QCOMPARE(program.files().rowCount(), 0);
    const QList<EncoderStart> encodes = program.encodes();
    QCOMPARE(encodes.size(), 2);
    const QString output = program.output(QStringLiteral("a_HQ_640x480.mp4"));
    QCOMPARE(encodes[0].arguments.join(u' '),
             QStringLiteral("-psnr -i %1 -codec:v libx264 -preset veryfast -level:v 5.1 -vf "
                            "scale=640:480 -crf 15 -g 15 -pix_fmt yuv420p -acodec copy "
                            "-avoid_negative_ts 1 %2")
                 .arg(first, output));
}

QTEST_MAIN(TestRun)
#include "tst_run.moc"
