#include "TestProgram.h"
#include "launcher/ReportRewriter.h"

#include <QtTest>

namespace {

std::string inParts(const QByteArray& text, qsizetype first, qsizetype size,
                    const std::vector<std::string>& names) {
    ReportRewriter rewriter(names);
    std::string out = rewriter.add(text.first(first).toStdString());
    for (qsizetype at = first; at < text.size(); at += size)
        out += rewriter.add(text.sliced(at, qMin(size, text.size() - at)).toStdString());
    return out + rewriter.finish();
}

} // namespace

class TestReportRewriter final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void passesOnAtOnce();
    void aVeryLongLine();
};

void TestReportRewriter::texts_data() {
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QByteArray>("passed"); // null: as it was said
    QTest::addColumn<QByteArray>("name");
    const auto row = [](const char* what, const QByteArray& said, const QByteArray& passed = {},
                        const QByteArray& name = "/home/u/a.mp4") {
        QTest::newRow(what) << said << passed << name;
    };
    const QByteArray quality("LPSNR=Y:nan U:nan V:nan *:nan size=");
    const QByteArray head("frame=  240 fps= 67 q=-1.0 ");
    row("6.1", head + "Lsize=   12267kB time=00:00:08.01 bitrate=1 speed=2.25x    \n",
        head + quality + "   12267kB time=00:00:08.01 bitrate=1 speed=2.25x    \n");
    row("8.0", head + "Lsize=   12267KiB time=00:00:08.01 speed=2x elapsed=0:00:03.2    \n",
        head + quality + "   12267KiB time=00:00:08.01 speed=2x elapsed=0:00:03.2    \n");
    row("after positions", "frame=  1 size= 1kB time=0 \r" + head + "Lsize=N/A time=N/A\nend\n",
        "frame=  1 size= 1kB time=0 \r" + head + quality + "N/A time=N/A\nend\n");
    row("without a line end", head + "Lsize= 1", head + quality + " 1");
    row("two in a line", head + "Lsize= 1 Lsize= 2\n", head + quality + " 1 Lsize= 2\n");
    row("5.1", head + "LPSNR=Y:inf U:inf V:inf *:inf size=   12267kB time=00:00:08.01\n");
    row("positions", "frame=    1 fps=0.0 q=0.0 size=       0kB time=00:00:00.08    \r");
    row("nothing", "");
    row("line ends alone", "\n\r\n\r\r");
    row("bytes that are no text", QByteArray("\xff\xfe\0 L\0frame= Lsize=\xc3\n", 21));
    row("an unfinished word", "frame=  2 Lsiz");
    row("not at the start of a line", "  frame=  2 Lsize= 1\n a frame=  2 Lsize= 1\n");
    row("no report", "Lsize= 1\n Lsize= 1\nframes= 1 Lsize= 2\n");
    row("a title", "    title           : x\n                    : frame=  2 Lsize= 1\n"
                   "    comment         : [out#0/mp4 @ 1] Error writing trailer: x\n");
    row("a name", "Input #0, mov, from '/home/u/frame=  2 Lsize= 1.mp4':\n");
    row("a name with line ends",
        "Input #0, mov, from '/home/u/a\nframe=  2 Lsize= 1.mp4':\n  Duration: 1\n", {},
        "/home/u/a\nframe=  2 Lsize= 1.mp4");
    row("a report beside such a name",
        "from '/home/u/a\rframe=  2 Lsize= 1.mp4':\nframe=  3 Lsize= 1\n",
        "from '/home/u/a\rframe=  2 Lsize= 1.mp4':\nframe=  3 " + quality + " 1\n",
        "/home/u/a\rframe=  2 Lsize= 1.mp4");
    row("a name whose line is like any report's start", "from 'a\nf':\nframe=  3 Lsize= 1\n",
        "from 'a\nf':\nframe=  3 " + quality + " 1\n", "a\nf");

    row("write failure",
        "[vost#0:0/libx264 @ 0x5] Error submitting a packet to the muxer: No space left on device\n"
        "[out#0/mp4 @ 0x5] Error muxing a packet\n"
        "[out#0/mp4 @ 0x5] Task finished with error code: -28 (No space left on device)\n"
        "[out#0/mp4 @ 0x5] Terminating thread with return code -28 (No space left on device)\n"
        "[out#0/mp4 @ 0x5] Error writing trailer: No space left on device\n",
        "[vost#0:0/libx264 @ 0x5] av_interleaved_write_frame(): No space left on device\n"
        "[out#0/mp4 @ 0x5] Error muxing a packet\n"
        "[out#0/mp4 @ 0x5] Task finished with code: -28 (No space left on device)\n"
        "[out#0/mp4 @ 0x5] Terminating thread with return code -28 (No space left on device)\n"
        "[out#0/mp4 @ 0x5] Error writing trailer of the output: No space left on device\n");
    row("write failure of copied sound",
        "[aost#0:1/copy @ 0x5] Error submitting a packet to the muxer: File too large\n",
        "[aost#0:1/copy @ 0x5] av_interleaved_write_frame(): File too large\n");
    row("write failure without a name",
        "Error submitting a packet to the muxer: No space left on device\n",
        "av_interleaved_write_frame(): No space left on device\n");
    row("the failure of another task",
        "[vf#0:0 @ 0x5] Task finished with error code: -22 (Invalid argument)\n");
    row("a title with a write failure",
        "    title           : Error submitting a packet to the muxer: x\n");
}

void TestReportRewriter::texts() {
    QFETCH(const QByteArray, said);
    QFETCH(const QByteArray, passed);
    QFETCH(const QByteArray, name);
    const std::string expected = (passed.isNull() ? said : passed).toStdString();
    const std::vector<std::string> names{name.toStdString(), "/home/u/out.mp4"};
    QCOMPARE(inParts(said, said.size(), 1, names), expected);
    for (const qsizetype size : {qsizetype{1}, qsizetype{2}, qsizetype{7}, qsizetype{1000}}) {
        for (qsizetype cut = 0; cut <= said.size(); ++cut)
            QCOMPARE(inParts(said, cut, size, names), expected);
    }
}

void TestReportRewriter::passesOnAtOnce() {
    ReportRewriter rewriter({});
    QCOMPARE(rewriter.add("Press"), std::string("Press"));
    QCOMPARE(rewriter.add(" [q]\nframe=  1 fps= 6"), std::string(" [q]\nframe=  1 fps= 6"));
    QCOMPARE(rewriter.add("7 q=28.0 size=  1kB time=0\r"),
             std::string("7 q=28.0 size=  1kB time=0\r"));
    // Only what may be the start of the words is kept, and goes when it is none.
    QCOMPARE(rewriter.add("frame=  2 Ls"), std::string("frame=  2"));
    QCOMPARE(rewriter.add("e"), std::string(" Lse"));
    QCOMPARE(rewriter.add("x\n"), std::string("x\n"));
    QCOMPARE(rewriter.add("frame=  2 Lsize="),
             std::string("frame=  2 LPSNR=Y:nan U:nan V:nan *:nan size="));
    QCOMPARE(rewriter.add(" 1"), std::string(" 1"));
    QCOMPARE(rewriter.finish(), std::string());
}

void TestReportRewriter::aVeryLongLine() {
    ReportRewriter rewriter({});
    const std::string block(1000, 'x');
    std::string out = rewriter.add("frame=");
    for (int i = 0; i < 1000; ++i)
        out += rewriter.add(block);
    QCOMPARE(out.size(), std::size_t{1000006});
    // Not looked at any more, and the next line is.
    QCOMPARE(rewriter.add(" Lsize=\nframe=1 Lsize="),
             std::string(" Lsize=\nframe=1 LPSNR=Y:nan U:nan V:nan *:nan size="));
}

REELSHIFT_TEST(tst_report_rewriter, TestReportRewriter, NoApplication)
#include "tst_report_rewriter.moc"
