#include "TestProgram.h"
#include "update/HttpHead.h"

#include <QtTest>

class TestHttpHead final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsTheLastOfSeveral();
    void countsAllOfThem();
    void ignoresWhatFollowsTheBody();

private:
    static void add(HttpHead& head, const QByteArray& lines) {
        for (const QByteArray& line : lines.split('\n'))
            head.addLine(line + "\r\n");
    }
};

void TestHttpHead::reads_data() {
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("reason");
    QTest::addColumn<qint64>("length");
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<bool>("packed");

    const QByteArray none;
    QTest::newRow("ordinary") << QByteArray("HTTP/1.1 200 OK\nContent-Length: 12\n") << 200
                              << QByteArray("OK") << qint64{12} << none << false;
    QTest::newRow("no reason") << QByteArray("HTTP/1.0 404\n") << 404 << none << qint64{-1} << none
                               << false;
    QTest::newRow("no status") << QByteArray("HTTP/1.1\n") << 0 << none << qint64{-1} << none
                               << false;
    QTest::newRow("letters for a status") << QByteArray("HTTP/1.1 abc def\n") << 0
                                          << QByteArray("def") << qint64{-1} << none << false;
    QTest::newRow("location") << QByteArray("HTTP/1.1 302 Found\nLOCATION:  /a:b \nLocation: /c\n")
                              << 302 << QByteArray("Found") << qint64{-1} << QByteArray("/a:b")
                              << false;
    QTest::newRow("chunked") << QByteArray("HTTP/1.1 200 OK\nContent-Length: 3\n"
                                           "transfer-encoding: Chunked\n")
                             << 200 << QByteArray("OK") << qint64{-1} << none << false;
    QTest::newRow("packed") << QByteArray("HTTP/1.1 200 OK\nContent-Encoding: br\n") << 200
                            << QByteArray("OK") << qint64{-1} << none << true;
    QTest::newRow("packed on the way")
        << QByteArray("HTTP/1.1 200 OK\nTransfer-Encoding: gzip, chunked\n") << 200
        << QByteArray("OK") << qint64{-1} << none << true;
    QTest::newRow("not packed") << QByteArray("HTTP/1.1 200 OK\nContent-Encoding: Identity\n")
                                << 200 << QByteArray("OK") << qint64{-1} << none << false;
    QTest::newRow("negative length") << QByteArray("HTTP/1.1 200 OK\nContent-Length: -5\n") << 200
                                     << QByteArray("OK") << qint64{-1} << none << false;
    QTest::newRow("length beyond every number")
        << QByteArray("HTTP/1.1 200 OK\nContent-Length: 99999999999999999999\n") << 200
        << QByteArray("OK") << qint64{-1} << none << false;
    QTest::newRow("rubbish") << QByteArray("HTTP/1.1 200 OK\n:\nno colon\n: x\n") << 200
                             << QByteArray("OK") << qint64{-1} << none << false;
}

void TestHttpHead::reads() {
    QFETCH(QByteArray, lines);
    HttpHead head;
    add(head, lines.chopped(1));
    QVERIFY(!head.isComplete());
    QTEST(head.status(), "status");
    QTEST(head.reason(), "reason");
    QTEST(head.contentLength(), "length");
    QTEST(head.location(), "location");
    QTEST(head.isPacked(), "packed");
    QCOMPARE(head.isFramed(), head.contentLength() >= 0 || lines.contains("hunked"));
    head.addLine("\r\n");
    QCOMPARE(head.isComplete(), head.status() >= 200);
}

void TestHttpHead::readsTheLastOfSeveral() {
    HttpHead head;
    add(head, "HTTP/1.1 103 Early Hints\nLocation: /a\n");
    QVERIFY(!head.isComplete());
    add(head, "HTTP/1.1 200 OK\n");
    QVERIFY(head.isComplete());
    QVERIFY(head.isSuccess());
    QVERIFY(!head.isRedirection());
    QCOMPARE(head.location(), QByteArray());
}

void TestHttpHead::countsAllOfThem() {
    HttpHead head;
    for (qsizetype size = 0; size + 24 <= HttpHead::maximumSize; size += 24) {
        QVERIFY(!head.isTooLarge());
        head.addLine("HTTP/1.1 103 Early-Hin\r\n");
    }
    head.startOver();
    QVERIFY(!head.isTooLarge());
    head.addLine("HTTP/1.1 200 OK.......\r\n");
    QVERIFY(head.isTooLarge());
    QCOMPARE(head.status(), 0);
}

void TestHttpHead::ignoresWhatFollowsTheBody() {
    HttpHead head;
    add(head, "HTTP/1.1 200 OK\n\nLocation: /a\nContent-Length: 7\n"
              "HTTP/1.1 302 Found\nLocation: /b\n");
    QVERIFY(head.isComplete());
    QCOMPARE(head.status(), 200);
    QCOMPARE(head.location(), QByteArray());
    QCOMPARE(head.contentLength(), -1);
}

REELSHIFT_TEST(test_http_head, TestHttpHead, NoApplication)
#include "TestHttpHead.moc"
