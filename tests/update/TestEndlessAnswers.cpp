#include "TestProgram.h"
#include "platform/LocalizedStrings.h"
#include "update/HttpFetch.h"
#include "update/LoopbackServer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QtTest>

#include <optional>
#include <thread>

using namespace std::chrono_literals;

namespace {

const QByteArray ok = "HTTP/1.1 200 OK\r\n";
const QByteArray chunks = ok + "Transfer-Encoding: chunked\r\n\r\n";

} // namespace

/// Answers that would go on for ever are given up after what they may have, whatever part of them
/// it is that has no end.
class TestEndlessAnswers final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areGivenUp_data();
    void areGivenUp();
    void areGivenUpWhenSlow_data();
    void areGivenUpWhenSlow();

private:
    /// Fetches on a thread of its own, so that the server of this one can answer.
    static std::optional<FetchError> failure(const LoopbackServer& server,
                                             const HttpFetch::Limits& limits);
};

std::optional<FetchError> TestEndlessAnswers::failure(const LoopbackServer& server,
                                                      const HttpFetch::Limits& limits) {
    std::optional<FetchError> error;
    QEventLoop loop;
    {
        const std::jthread asking([&] {
            try {
                const HttpFetch fetch(limits, QString());
                (void)fetch.run(QUrl(server.baseUrl()),
                                {[](const HttpFetch::Response&) {}, [](const QByteArray&) {}},
                                std::stop_token());
            } catch (const FetchError& thrown) {
                error = thrown;
            }
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
    }
    return error;
}

void TestEndlessAnswers::areGivenUp_data() {
    QTest::addColumn<QByteArray>("once");
    QTest::addColumn<QByteArray>("again");
    const QByteArray much(16 * 1024, 'x');
    const QByteArray field = "X-More: " + QByteArray(1000, 'x') + "\r\n";
    QTest::newRow("fields") << ok << field;
    QTest::newRow("one field") << QByteArray(ok + "X-More: ") << much;
    QTest::newRow("reason") << QByteArray("HTTP/1.1 200 ") << much;
    QTest::newRow("provisional answers")
        << QByteArray() << QByteArray("HTTP/1.1 103 Early Hints\r\n\r\n").repeated(100);
    QTest::newRow("chunk extension") << QByteArray(chunks + "1\r\n \r\n1;more=") << much;
    QTest::newRow("size of a chunk") << chunks << QByteArray(16 * 1024, '0');
    QTest::newRow("tiny chunks")
        << chunks << QByteArray("1;" + QByteArray(60, 'x') + "\r\n \r\n").repeated(100);
    QTest::newRow("trailers") << QByteArray(chunks + "0\r\n") << field;
    QTest::newRow("body") << QByteArray(ok + "\r\n") << much;
}

void TestEndlessAnswers::areGivenUp() {
    QFETCH(QByteArray, once);
    QFETCH(QByteArray, again);
    qint64 sent = 0;
    LoopbackServer server;
    server.setAnswer([&](QTcpSocket& socket) {
        socket.write(once);
        const auto sendMore = [&socket, &sent, again] {
            while (socket.bytesToWrite() < 128 * 1024)
                sent += socket.write(again);
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, sendMore);
        sendMore();
    });
    const auto error = failure(server, {1024 * 1024, 20s, 20s});
    QVERIFY(error);
    QVERIFY(error->description != getLocalString("IDS_TXT_UPDATE_TIMEOUT"));
    QTRY_VERIFY(!server.connection());
    // What the two ends of a connection buffer comes on top.
    QVERIFY2(sent < 32 * 1024 * 1024, qPrintable(QString::number(sent)));
}

void TestEndlessAnswers::areGivenUpWhenSlow_data() {
    QTest::addColumn<QByteArray>("once");
    QTest::addColumn<QByteArray>("again");
    QTest::newRow("fields") << ok << QByteArray("X: y\r\n");
    QTest::newRow("one field") << QByteArray(ok + "X-More: ") << QByteArray("x");
    QTest::newRow("chunk extension") << QByteArray(chunks + "1;more=") << QByteArray("x");
    QTest::newRow("trailers") << QByteArray(chunks + "0\r\n") << QByteArray("X: y\r\n");
    QTest::newRow("body") << QByteArray(ok + "\r\n") << QByteArray("x");
}

// Without a limit for all of it, as an installer's download has none.
void TestEndlessAnswers::areGivenUpWhenSlow() {
    QFETCH(QByteArray, once);
    QFETCH(QByteArray, again);
    LoopbackServer server;
    server.setAnswer([&](QTcpSocket& socket) {
        socket.write(once);
        auto* const drip = new QTimer(&socket);
        QObject::connect(drip, &QTimer::timeout, &socket,
                         [&socket, again] { socket.write(again); });
        drip->start(50ms);
    });
    const auto error = failure(server, {1024 * 1024, 1s, 0s});
    QVERIFY(error);
    QCOMPARE(error->description, getLocalString("IDS_TXT_UPDATE_TIMEOUT"));
    QTRY_VERIFY(!server.connection());
}

REELSHIFT_TEST(test_endless_answers, TestEndlessAnswers, QCoreApplication)
#include "TestEndlessAnswers.moc"
