#include "TestProgram.h"
#include "convert/LastWords.h"

#include <QTest>

/// The last lines of an encoder, and texts that are fit for a line of a log.
class TestLastWords final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lines_data();
    void lines();
    void cutAnywhere();
    void onlyTheLastLinesAreKept();
    void longLineIsCut();
    void floodIsForgotten();
    void oneLine_data();
    void oneLine();
};

void TestLastWords::lines_data() {
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char* name, const char* said,
                        std::initializer_list<const char*> all) {
        QStringList expected;
        for (const char* each : all)
            expected += QString::fromUtf8(each);
        QTest::newRow(name) << QByteArray(said) << expected;
    };
    row("nothing", "", {});
    row("lines", "one\ntwo\n", {"one", "two"});
    row("without an end", "one\ntwo", {"one", "two"});
    row("empty lines", "\none\n\n \r\ntwo\n", {"one", "two"});
    row("progress is one line", "in\nframe= 1\rframe= 2\rframe= 3\rout\n",
        {"in", "frame= 3", "out"});
    row("the summary too", "frame= 1\rframe= 9 Lsize\nConversion failed!\n",
        {"frame= 9 Lsize", "Conversion failed!"});
    row("progress around an error", "frame= 1\rframe= 2\rerror\nframe= 3\rframe= 4\r",
        {"frame= 2", "error", "frame= 4"});
    row("unfinished progress", "frame= 1\rframe= 2", {"frame= 2"});
    row("other encodings", "a\xff\xc3\xa4\n", {"a\xef\xbf\xbd\xc3\xa4"});
}

void TestLastWords::lines() {
    QFETCH(QByteArray, said);
    LastWords words;
    words.add(said);
    QTEST(words.lines(), "lines");
}

void TestLastWords::cutAnywhere() {
    const QByteArray said = "in \xc3\xa4\nframe= 1\rframe= 2\rerror\r\nout\n";
    LastWords whole;
    whole.add(said);
    QCOMPARE(whole.lines().size(), 4);
    for (qsizetype cut = 0; cut <= said.size(); ++cut) {
        LastWords words;
        words.add(said.first(cut));
        (void)words.lines();
        words.add(said.sliced(cut));
        QCOMPARE(words.lines(), whole.lines());
    }
}

void TestLastWords::onlyTheLastLinesAreKept() {
    LastWords words;
    for (int line = 1; line <= 100; ++line)
        words.add(QByteArray::number(line) + '\n');
    QCOMPARE(words.lines().size(), 40);
    QCOMPARE(words.lines().first(), QStringLiteral("61"));
    words.add("open");
    QCOMPARE(words.lines().size(), 40);
    QCOMPARE(words.lines().first(), QStringLiteral("62"));
    QCOMPARE(words.lines().last(), QStringLiteral("open"));
}

void TestLastWords::longLineIsCut() {
    LastWords words;
    words.add(QByteArray(5000, 'x') + "\nnext\n");
    QCOMPARE(words.lines(), (QStringList{QString(1000, u'x'), QStringLiteral("next")}));
}

void TestLastWords::floodIsForgotten() {
    LastWords words;
    for (int round = 0; round < 100; ++round)
        words.add(QByteArray(100'000, 'x'));
    QCOMPARE(words.lines(), QStringList{QString(1000, u'x')});
}

void TestLastWords::oneLine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, const QString& text, const char* line) {
        QTest::newRow(name) << text << QString::fromUtf8(line);
    };
    row("plain", QString::fromUtf8("Caf\u00e9 \u65e5\u672c \U0001F600.mp4"),
        "Caf\u00e9 \u65e5\u672c \U0001F600.mp4");
    row("line end", QStringLiteral("a\nreelshift.convert: b"), "a\\nreelshift.convert: b");
    row("return, escape, bell", QStringLiteral("a\r\x1b[2J\x07"), "a\\xd\\x1b[2J\\x7");
    row("C1", QString(QChar(0x9b)), "\\x9b");
    row("line and paragraph separators", QString::fromUtf8("a\u2028b\u2029c"), "a\\x2028b\\x2029c");
    row("turned direction", QString::fromUtf8("a\u202e4pm.b\u2066"), "a\\x202e4pm.b\\x2066");
    row("right to left is a language", QString::fromUtf8("\u0645\u0631"), "\u0645\u0631");
    row("lone surrogate", QString(QChar(0xd800)), "\ufffd");
    row("zero", QString(QChar(0)), "\\x0");
}

void TestLastWords::oneLine() {
    QFETCH(QString, text);
    QTEST(onOneLine(text), "line");
}

REELSHIFT_TEST(tst_lastwords, TestLastWords, NoApplication)
#include "tst_lastwords.moc"
