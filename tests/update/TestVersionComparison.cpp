#include "TestProgram.h"
#include "update/SystemVersion.h"
#include "update/VersionComparison.h"

#include <QtTest>

#include <stdexcept>

class TestVersionComparison final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void compares_data();
    void compares();
    void refusesFewerThanFourParts_data();
    void refusesFewerThanFourParts();
    void readsTheSystemsRelease_data();
    void readsTheSystemsRelease();
};

void TestVersionComparison::compares_data() {
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("newer");

    QTest::newRow("equal") << "1.0.0.0"
                           << "1.0.0.0" << false;
    QTest::newRow("first part") << "1.9.9.9"
                                << "2.0.0.0" << true;
    QTest::newRow("second part") << "1.0.9.9"
                                 << "1.1.0.0" << true;
    QTest::newRow("third part") << "1.0.0.9"
                                << "1.0.1.0" << true;
    QTest::newRow("fourth part") << "1.0.0.8"
                                 << "1.0.0.9" << true;
    QTest::newRow("older fourth part") << "1.0.0.9"
                                       << "1.0.0.8" << false;
    QTest::newRow("older first part") << "2.0.0.0"
                                      << "1.9.0.0" << false;
    QTest::newRow("numbers, not text") << "1.0.0.9"
                                       << "1.0.0.10" << true;
    QTest::newRow("leading zeros") << "1.0.0.10"
                                   << "1.0.0.009" << false;

    // Kept: only the part just before has to be equal.
    QTest::newRow("older first part, third newer") << "2.1.0.0"
                                                   << "1.1.5.0" << true;
    QTest::newRow("older second part, fourth newer") << "1.2.3.4"
                                                     << "1.1.3.5" << true;
    QTest::newRow("older first part, fourth newer") << "3.0.0.0"
                                                    << "1.0.0.1" << true;
    QTest::newRow("older first part, second newer") << "2.0.0.0"
                                                    << "1.5.0.0" << false;

    QTest::newRow("five parts, fifth newer") << "1.0.0.0.1"
                                             << "1.0.0.0.9" << false;
    QTest::newRow("five parts against four") << "1.0.0.0"
                                             << "1.0.0.1.7" << true;
    QTest::newRow("white space around") << "1.0.0.0"
                                        << "\n  1.0.0.1\t " << true;
    QTest::newRow("white space around parts") << "1.0.0.0"
                                              << " 1 . 0 . 0 . 1 " << true;
    QTest::newRow("letters after digits") << "1.0.0.1"
                                          << "1.0.0.2beta" << true;
    QTest::newRow("letters only are zero") << "1.0.0.1"
                                           << "1.0.0.beta" << false;
    QTest::newRow("empty part is zero") << "1.0.0.0"
                                        << "1..0.1" << true;
    QTest::newRow("empty parts alone") << "1.0.0.0"
                                       << "..." << false;
    QTest::newRow("signs") << "1.0.0.-1"
                           << "1.0.0.+1" << true;
    QTest::newRow("negative first part") << "0.0.0.0"
                                         << "-1.0.0.0" << false;
    QTest::newRow("largest int") << "1.0.0.2147483646"
                                 << "1.0.0.2147483647" << true;
    QTest::newRow("beyond an int") << "1.0.0.2147483647"
                                   << "1.0.0.99999999999999999999" << false;
    QTest::newRow("below an int") << "-99999999999999999999.0.0.0"
                                  << "-2147483648.0.0.0" << false;
    QTest::newRow("other digits are none") << "1.0.0.0" << QStringLiteral("1.0.0.\u0663") << false;
}

void TestVersionComparison::compares() {
    QFETCH(QString, local);
    QFETCH(QString, server);
    QTEST(isUpdateAvailable(local, server), "newer");
}

void TestVersionComparison::refusesFewerThanFourParts_data() {
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("server");

    QTest::newRow("no version on the server") << "1.0.0.0"
                                              << "";
    QTest::newRow("one part, and it is newer") << "1.0.0.0"
                                               << "2";
    QTest::newRow("three parts") << "1.0.0.0"
                                 << "1.0.1";
    QTest::newRow("three local parts") << "1.0.0"
                                       << "1.0.0.1";
    QTest::newRow("both empty") << ""
                                << "";
    QTest::newRow("rubbish") << "1.0.0.0"
                             << "rubbish";
}

void TestVersionComparison::refusesFewerThanFourParts() {
    QFETCH(QString, local);
    QFETCH(QString, server);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)isUpdateAvailable(local, server));
}

void TestVersionComparison::readsTheSystemsRelease_data() {
    QTest::addColumn<QString>("release");
    QTest::addColumn<int>("major"); // -1: unknown
    QTest::addColumn<int>("minor");

    QTest::newRow("two numbers") << "22.04" << 22 << 4;
    QTest::newRow("three numbers") << "10.15.7" << 10 << 15;
    QTest::newRow("no minor number") << "12" << -1 << -1;
    QTest::newRow("empty minor number") << "12." << -1 << -1;
    QTest::newRow("rolling") << "rolling" << -1 << -1;
    QTest::newRow("words") << "a.b" << -1 << -1;
    QTest::newRow("nothing") << "" << -1 << -1;
}

void TestVersionComparison::readsTheSystemsRelease() {
    QFETCH(QString, release);
    QFETCH(int, major);
    QFETCH(int, minor);
    const auto version = parseSystemVersion(release);
    QCOMPARE(version.has_value(), major >= 0);
    if (version) {
        QCOMPARE(version->major, major);
        QCOMPARE(version->minor, minor);
    }
}

REELSHIFT_TEST(test_version_comparison, TestVersionComparison, NoApplication)
#include "TestVersionComparison.moc"
