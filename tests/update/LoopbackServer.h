#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>

/// A web server on 127.0.0.1 whose every answer is what the test says. Lives on the thread of the
/// test; answers come while its event loop runs.
class LoopbackServer final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(QTcpSocket& socket)>;

    LoopbackServer();
    /// A secure one, with a certificate and key of the PEM files.
    LoopbackServer(const QString& certificateFile, const QString& keyFile);

    /// With the address 127.0.0.1.
    [[nodiscard]] QString baseUrl() const;
    /// Heads of the requests in the order in which they came.
    [[nodiscard]] const QList<QByteArray>& requests() const { return requests_; }
    /// The connection of the last request; nullptr when it is gone.
    [[nodiscard]] QTcpSocket* connection() const { return connection_; }

    void setAnswer(Answer answer) { answer_ = std::move(answer); }
    /// Stops listening; nobody is there any more.
    void close() { server_->close(); }

    [[nodiscard]] static QByteArray head(const QByteArray& status, const QByteArray& headers);
    /// A whole answer with its length, closed after it.
    [[nodiscard]] static Answer whole(const QByteArray& body, const QByteArray& headers = {},
                                      const QByteArray& status = "200 OK");
    /// Sends `bytes` as they are and closes.
    [[nodiscard]] static Answer raw(const QByteArray& bytes);
    [[nodiscard]] static Answer redirect(const QByteArray& location);
    /// Takes the request and never says anything.
    [[nodiscard]] static Answer silence();

private:
    LoopbackServer(std::unique_ptr<QTcpServer> server, const QString& scheme);
    void connected();
    void readRequest(QTcpSocket& socket);

    std::unique_ptr<QTcpServer> server_;
    QString scheme_;
    Answer answer_;
    QList<QByteArray> requests_;
    QPointer<QTcpSocket> connection_;
};
