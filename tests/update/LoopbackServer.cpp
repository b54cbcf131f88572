#include "update/LoopbackServer.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QVariant>

#include <utility>

namespace {

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("A file of the tests is missing");
    return file.readAll();
}

std::unique_ptr<QTcpServer> secureServer(const QString& certificateFile, const QString& keyFile) {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(contentsOf(certificateFile)));
    configuration.setPrivateKey(QSslKey(contentsOf(keyFile), QSsl::Ec));
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    return server;
}

} // namespace

LoopbackServer::LoopbackServer()
    : LoopbackServer(std::make_unique<QTcpServer>(), QStringLiteral("http")) {}

LoopbackServer::LoopbackServer(const QString& certificateFile, const QString& keyFile)
    : LoopbackServer(secureServer(certificateFile, keyFile), QStringLiteral("https")) {}

LoopbackServer::LoopbackServer(std::unique_ptr<QTcpServer> server, const QString& scheme)
    : server_(std::move(server)), scheme_(scheme) {
    connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this,
            &LoopbackServer::connected);
    if (!server_->listen(QHostAddress::LocalHost))
        qFatal("No port is free on loopback");
}

QString LoopbackServer::baseUrl() const {
    return QStringLiteral("%1://127.0.0.1:%2").arg(scheme_).arg(server_->serverPort());
}

void LoopbackServer::connected() {
    while (QTcpSocket* const socket = server_->nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readRequest(*socket); });
    }
}

void LoopbackServer::readRequest(QTcpSocket& socket) {
    QByteArray request = socket.property("request").toByteArray() + socket.readAll();
    const qsizetype end = request.indexOf("\r\n\r\n");
    if (end < 0) {
        socket.setProperty("request", request);
        return;
    }
    socket.setProperty("request", request.mid(end + 4));
    requests_ << request.left(end + 2);
    connection_ = &socket;
    if (answer_)
        answer_(socket);
}

QByteArray LoopbackServer::head(const QByteArray& status, const QByteArray& headers) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n";
}

LoopbackServer::Answer LoopbackServer::whole(const QByteArray& body, const QByteArray& headers,
                                             const QByteArray& status) {
    return raw(
        head(status, "Content-Length: " + QByteArray::number(body.size()) + "\r\n" + headers) +
        body);
}

LoopbackServer::Answer LoopbackServer::raw(const QByteArray& bytes) {
    return [bytes](QTcpSocket& socket) {
        socket.write(bytes);
        socket.disconnectFromHost();
    };
}

LoopbackServer::Answer LoopbackServer::redirect(const QByteArray& location) {
    return whole({}, "Location: " + location + "\r\n", "302 Found");
}

LoopbackServer::Answer LoopbackServer::silence() {
    return [](QTcpSocket&) {};
}
