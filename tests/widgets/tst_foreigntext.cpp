#include "TestProgram.h"
#include "widgets/ForeignText.h"

#include <QElapsedTimer>
#include <QtTest>

class TestForeignText final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isOneLine_data();
    void isOneLine();
    void isShort_data();
    void isShort();
};

void TestForeignText::isOneLine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("ordinary") << "Not Found"
                              << "Not Found";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("lines") << "a\nb\r\nc\vd\fe"
                           << "a b c d e";
    QTest::newRow("lines of other kinds") << QStringLiteral("a\u2028b\u2029c\u0085d") << "a b c d";
    QTest::newRow("controls") << QStringLiteral("a\u0000b\u001b[1mc\u007f") << "a b [1mc ";
    QTest::newRow("spaces of its own") << "a  b "
                                       << "a  b ";
    QTest::newRow("only line ends") << "\n\t\n"
                                    << " ";
    QTest::newRow("other writing")
        << QStringLiteral("\u05d0\u0301 \u4e2d") << QStringLiteral("\u05d0\u0301 \u4e2d");
}

void TestForeignText::isOneLine() {
    QFETCH(QString, text);
    QTEST(foreignLine(text), "line");
}

void TestForeignText::isShort_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("as long as it may be") << QString(10, u'a') << QString(10, u'a');
    QTest::newRow("middle") << "abcdefghijk" << QStringLiteral("abcde\u2026hijk");
    QTest::newRow("huge") << QString(QString(u'a').repeated(4'000'000) % u'b')
                          << QStringLiteral("aaaaa\u2026aaab");
    QTest::newRow("pairs") << QStringLiteral("\U0001f600").repeated(9)
                           << QStringLiteral("\U0001f600\U0001f600\u2026\U0001f600\U0001f600");
    QTest::newRow("marks") << QStringLiteral("abcde\u0301fghijk\u0301")
                           << QStringLiteral("abcd\u2026hijk\u0301");
}

void TestForeignText::isShort() {
    QFETCH(QString, text);
    const QString line = foreignLine(text, 10);
    QTEST(line, "line");
    QVERIFY(line.size() <= 10);
}

REELSHIFT_TEST(tst_foreigntext, TestForeignText, NoApplication)
#include "tst_foreigntext.moc"
