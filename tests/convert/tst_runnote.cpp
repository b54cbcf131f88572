#include "TestProgram.h"
#include "convert/RunNote.h"

/// The note of a job as text: what was written is read, and nothing else.
class TestRunNote final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isReadAsItWasWritten_data();
    void isReadAsItWasWritten();
    void cutAtEveryByte();
    void everyOtherByte();
    void otherTexts_data();
    void otherTexts();

private:
    static RunNote sample();
};

RunNote TestRunNote::sample() {
    RunNote note;
    note.boot = "5f0c6e1a-97d3-4f6c-8a43-0c1f0f7f7d11";
    note.launched = 1'700'000'000;
    note.output = "/home/u/Videos/a b\nmade 1_HQ.mp4";
    note.source = "/home/u/%41/\xff\xfe.mp4";
    note.sourceFile = {2049, 12, 7, -5, 999'999'999};
    note.before = RunNote::File{~0ULL, ~0ULL, ~0ULL, 1, 2};
    return note;
}

void TestRunNote::isReadAsItWasWritten_data() {
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("made");
    for (const bool before : {false, true}) {
        for (const bool made : {false, true})
            QTest::addRow("before %d, made %d", before, made) << before << made;
    }
}

void TestRunNote::isReadAsItWasWritten() {
    QFETCH(bool, before);
    QFETCH(bool, made);
    RunNote note = sample();
    if (!before)
        note.before.reset();
    QByteArray text = note.text();
    if (made) {
        note.made = RunNote::File{1, 2, 3, 4, 5};
        text += RunNote::madeText(*note.made);
    }
    const auto read = RunNote::fromText(text);
    QVERIFY(read.has_value());
    QVERIFY(*read == note);
}

// The computer may lose power at any byte.
void TestRunNote::cutAtEveryByte() {
    RunNote note = sample();
    const QByteArray head = note.text();
    const RunNote::File made{1, 2, 3, 4, 5};
    const QByteArray whole = head + RunNote::madeText(made);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const auto read = RunNote::fromText(whole.left(length));
        QCOMPARE(read.has_value(), length >= head.size());
        QVERIFY(!read || *read == note);
    }
    note.made = made;
    QVERIFY(RunNote::fromText(whole) == note);
}

// A byte that is another one is another note, or none.
void TestRunNote::everyOtherByte() {
    const RunNote note = sample();
    const QByteArray text = note.text();
    for (qsizetype at = 0; at < text.size(); ++at) {
        for (const char byte : {'\0', '\n', ' ', '%', '+', '0', '9', 'A', '\xff'}) {
            QByteArray other = text;
            other[at] = byte;
            const auto read = RunNote::fromText(other);
            QVERIFY(!read || (*read == note) == (other == text));
            QVERIFY(!read || read->text() == other);
        }
    }
}

void TestRunNote::otherTexts_data() {
    QTest::addColumn<QByteArray>("text");
    const QByteArray text = sample().text();
    const auto with = [&](const char* before, const QByteArray& after) {
        return QByteArray(text).replace(before, after);
    };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("line ends") << QByteArray(9, '\n');
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("another release") << with("run 1\n", "run 2\n");
    QTest::newRow("relative path") << with("output /home", "output home");
    QTest::newRow("no path") << with("source /home/u/%2541/%FF%FE.mp4", "source ");
    QTest::newRow("path with a zero byte") << with("output /home", "output /%00home");
    QTest::newRow("number with a plus") << with("launched 1", "launched +1");
    QTest::newRow("number that is too large") << with("launched 1", "launched 99999999999991");
    QTest::newRow("one number less") << with("source-file 2049 ", "source-file ");
    QTest::newRow("a line more") << text + "x\n";
    QTest::newRow("made twice") << text + "made 1 2 3 4 5\nmade 1 2 3 4 5\n";
    QTest::newRow("too long") << with("output /", "output /" + QByteArray(40'000, 'a'));
}

void TestRunNote::otherTexts() {
    QFETCH(QByteArray, text);
    QVERIFY(!RunNote::fromText(text));
}

REELSHIFT_TEST(tst_runnote, TestRunNote, NoApplication)
#include "tst_runnote.moc"
