#include "TestProgram.h"
#include "convert/Timecode.h"

#include <QTest>

#include <stdexcept>

/// Positions as the encoder prints them, the odd ones too.
class TestTimecode final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsPlaces_data();
    void readsPlaces();
    void textTooShortForItsPlacesThrows_data();
    void textTooShortForItsPlacesThrows();
    void readsLeadingNumber_data();
    void readsLeadingNumber();
    void substringHasExactlyItsLength();
};

void TestTimecode::readsPlaces_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("seconds");
    const auto row = [](const char* text, double seconds) {
        QTest::newRow(text) << QString::fromUtf8(text) << seconds;
    };
    row("00:00:00.00", 0);
    row("00:00:08.01", 8.01);
    row("01:02:03.45", 3723.45);
    row("99:59:59.99", 359999.99);
    row("00:99:00.00", 5940);
    // The first two characters are the hours, whatever they are.
    row("-577014:32:22.77", -5 * 3600 + 70 * 60 + 4);
    row("-577014:32:", -5 * 3600 + 70 * 60 + 4);
    row("-00:00:00.04", 0);
    row("N/A bitrate", 0);
    row("N/A, start:", 0);
    row("None None None", 0);
    row("  :  :  7.5", 7.5);
    row("00:00:", 0);
    row("\u0660\u0661:00:00.00", 0);
}

void TestTimecode::readsPlaces() {
    QFETCH(const QString, text);
    QFETCH(const double, seconds);
    QVERIFY2(qAbs(secondsOfTimecode(text) - seconds) < 1e-9,
             qPrintable(QString::number(secondsOfTimecode(text))));
}

void TestTimecode::textTooShortForItsPlacesThrows_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "N", "N/A", "00", "00:00", "00:0"})
        QTest::addRow("'%s'", text) << QString::fromUtf8(text);
}

void TestTimecode::textTooShortForItsPlacesThrows() {
    QFETCH(const QString, text);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)secondsOfTimecode(text));
}

void TestTimecode::readsLeadingNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    const auto row = [](const char* text, double number) {
        QTest::addRow("'%s'", text) << QString::fromUtf8(text) << number;
    };
    row("", 0);
    row("12", 12);
    row("12.5", 12.5);
    row(".5", 0.5);
    row("5.", 5);
    row("-1", -1);
    row("+3", 3);
    row("  7 8", 7);
    row("1e3x", 1000);
    row("1e", 1);
    row("12kB", 12);
    row("kB12", 0);
    row("1,5", 1);
    row("nan", 0);
    row("inf", 0);
    row("0x10", 0);
}

void TestTimecode::readsLeadingNumber() {
    QFETCH(const QString, text);
    QTEST(leadingDecimal(text), "number");
}

void TestTimecode::substringHasExactlyItsLength() {
    const QString text = QStringLiteral("frame");
    QCOMPARE(substring(text, 0, 5), text);
    QCOMPARE(substring(text, 1, 2), QStringLiteral("ra"));
    QCOMPARE(substring(text, 5, 0), QString());
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)substring(text, 1, 5));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)substring(text, 6, 0));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)substring(text, -1, 2));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)substring(text, 2, -1));
}

REELSHIFT_TEST(tst_timecode, TestTimecode, NoApplication)
#include "tst_timecode.moc"
