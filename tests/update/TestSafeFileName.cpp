#include "TestProgram.h"
#include "update/SafeFileName.h"

#include <QUrl>
#include <QtTest>

class TestSafeFileName final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void suggests_data();
    void suggests();
    void makesSafe_data();
    void makesSafe();
    void numbers_data();
    void numbers();
};

void TestSafeFileName::suggests_data() {
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("name");

    QTest::newRow("address") << QByteArray() << "http://a/x/setup.run"
                             << "setup.run";
    QTest::newRow("address with query") << QByteArray() << "http://a/setup.run?x=1/2#y"
                                        << "setup.run";
    QTest::newRow("escaped address") << QByteArray() << "http://a/set%20up.run"
                                     << "set up.run";
    QTest::newRow("address without a name") << QByteArray() << "http://a/x/"
                                            << "";
    QTest::newRow("header") << QByteArray("attachment; filename=b.run") << "http://a/c"
                            << "b.run";
    QTest::newRow("quoted header")
        << QByteArray("attachment; a=b; filename=\"b; \\\"c\\\".run\"") << "http://a/c"
        << "b; \"c\".run";
    QTest::newRow("UTF-8 header")
        << QByteArray("attachment; FileName=\"b\"; filename*=utf-8''%c3%a9%20b.run") << "http://a/c"
        << QStringLiteral("\u00e9 b.run");
    QTest::newRow("other character set")
        << QByteArray("a; filename*=KOI8-R''%c3; filename=b") << "http://a/c"
        << "b";
    QTest::newRow("no file name in header") << QByteArray("inline; x; y=z") << "http://a/c"
                                            << "c";
    QTest::newRow("empty file name") << QByteArray("attachment; filename=\"\"") << "http://a/c"
                                     << "c";
    QTest::newRow("quote never closed") << QByteArray("attachment; filename=\"b") << "http://a/c"
                                        << "b";
    QTest::newRow("ends in an escape") << QByteArray("attachment; filename=\"b\\") << "http://a/c"
                                       << "b\\";
    QTest::newRow("nothing after the sign") << QByteArray("attachment; filename=") << "http://a/c"
                                            << "c";
}

void TestSafeFileName::suggests() {
    QFETCH(QByteArray, header);
    QFETCH(QString, url);
    QTEST(suggestedFileName(header, QUrl(url)), "name");
}

void TestSafeFileName::makesSafe_data() {
    QTest::addColumn<QString>("suggested");
    QTest::addColumn<QString>("safe");

    const QString ours = QStringLiteral("reelshift-update");
    QTest::newRow("ordinary") << "Setup 1.2.run"
                              << "Setup 1.2.run";
    QTest::newRow("path") << "/etc/passwd"
                          << "passwd";
    QTest::newRow("way up") << "../../.bashrc"
                            << "bashrc";
    QTest::newRow("other slashes") << "..\\..\\x.exe"
                                   << "x.exe";
    QTest::newRow("up alone") << ".." << ours;
    QTest::newRow("here alone") << "." << ours;
    QTest::newRow("ends in a slash") << "a/" << ours;
    QTest::newRow("ends in the way up") << "a/.." << ours;
    QTest::newRow("hidden") << ".hidden"
                            << "hidden";
    QTest::newRow("dots and spaces before") << " . . a"
                                            << "a";
    QTest::newRow("hidden behind a control character") << QStringLiteral("\u0001.x") << "x";
    QTest::newRow("hidden behind a mark") << QStringLiteral("\u200b.x") << "x";
    QTest::newRow("empty") << "" << ours;
    QTest::newRow("white space") << " \t\n" << ours;
    QTest::newRow("control characters")
        << QStringLiteral("a\u0000b\nc\rd\u001be\u007f\u0085.run") << "abcde.run";
    QTest::newRow("turned round") << QStringLiteral("setup\u202enur.exe") << "setupnur.exe";
    QTest::newRow("half a pair") << QString(QChar(0xd83d)) + QStringLiteral("a")
                                 << QStringLiteral("?a");
    QTest::newRow("leading dash") << "-rf"
                                  << "-rf";
    QTest::newRow("longest") << QString(255, u'a') << QString(255, u'a');
    QTest::newRow("too long") << QString(300, u'a') << QString(255, u'a');
    QTest::newRow("too long with suffix") << QString(QString(300, u'a') % QStringLiteral(".run"))
                                          << QString(QString(251, u'a') % QStringLiteral(".run"));
    QTest::newRow("too long suffix") << QString(QStringLiteral("a.") % QString(300, u'b'))
                                     << QString(QStringLiteral("a.") % QString(253, u'b'));
    QTest::newRow("too long, two bytes each")
        << QString(200, QChar(0xe9)) << QString(127, QChar(0xe9));
    QTest::newRow("too long, pairs")
        << QStringLiteral("\U0001f600").repeated(100) << QStringLiteral("\U0001f600").repeated(63);
    // The 255th byte is the first of four.
    QTest::newRow("too long, a pair at the limit")
        << QString(QString(254, u'a') % QStringLiteral("\U0001f600")) << QString(254, u'a');
    QTest::newRow("too long, a pair at the limit, with suffix")
        << QString(QString(250, u'a') % QStringLiteral("\U0001f600.deb"))
        << QString(QString(250, u'a') % QStringLiteral(".deb"));
    QTest::newRow("too long, a mark at the limit")
        << QString(QString(254, u'a') % QStringLiteral("e\u0301")) << QString(254, u'a');
    QTest::newRow("too long, one character of marks")
        << QString(u'e' + QString(300, QChar(0x301))) << QString(u'e' + QString(127, QChar(0x301)));
    QTest::newRow("too long with two suffixes")
        << QString(QString(300, u'a') % QStringLiteral(".tar.gz"))
        << QString(QString(248, u'a') % QStringLiteral(".tar.gz"));
}

void TestSafeFileName::makesSafe() {
    QFETCH(QString, suggested);
    const QString safe = safeFileName(suggested);
    QTEST(safe, "safe");
    QVERIFY(safe.toUtf8().size() <= 255);
}

void TestSafeFileName::numbers_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("numbered");
    QTest::newRow("ordinary") << "setup.deb" << 1 << "setup (1).deb";
    QTest::newRow("two suffixes") << "setup-1.2.tar.xz" << 12 << "setup-1.2 (12).tar.xz";
    QTest::newRow("no suffix") << "setup" << 2 << "setup (2)";
    QTest::newRow("longest") << QString(QString(251, u'a') % QStringLiteral(".deb")) << 9999
                             << QString(QString(244, u'a') % QStringLiteral(" (9999).deb"));
}

void TestSafeFileName::numbers() {
    QFETCH(QString, name);
    QFETCH(int, number);
    const QString numbered = numberedFileName(name, number);
    QTEST(numbered, "numbered");
    QVERIFY(numbered.toUtf8().size() <= 255);
}

REELSHIFT_TEST(test_safe_file_name, TestSafeFileName, NoApplication)
#include "TestSafeFileName.moc"
