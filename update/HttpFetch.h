#pragma once

#include "update/HostLookup.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>

class QNetworkReply;

/// Why a fetch failed.
struct FetchError {
    int code = 0; ///< a QNetworkReply::NetworkError, 0 for failures of our own, or the one below
    QString description;
    QUrl url;

    /// A download that ended well with no bytes at all.
    static constexpr int zeroByteResource = -1014;
};

/// Gets one http or https address, redirections included, and hands the body over piece by piece.
/// It uses no proxy and never blocks. Lives on the thread of
/// its owner; destroying it ends the transfer without a signal.
class HttpFetch final : public QObject {
    Q_OBJECT

public:
    enum class Coding {
        Any,     ///< the server may compress; the pieces are the plain body
        Identity ///< the body as it is, so that its length can be told beforehand
    };

    HttpFetch(HostResolver resolver, Coding coding, std::chrono::milliseconds silenceLimit,
              QObject* parent = nullptr);
    ~HttpFetch() override;
    Q_DISABLE_COPY_MOVE(HttpFetch)

    /// Whether the address is one that is fetched at all.
    [[nodiscard]] static bool isFetchable(const QUrl& url);

    /// Address that answered, after redirections.
    [[nodiscard]] QUrl url() const { return url_; }
    /// Bytes the server announced, -1 when it did not.
    [[nodiscard]] qint64 expectedLength() const;
    [[nodiscard]] QByteArray header(const QByteArray& name) const;

    /// Exactly one of `succeeded` and `failed` follows, never from inside this call.
    void start(const QUrl& url);
    /// Ends the transfer; no signal follows.
    void abort();

Q_SIGNALS:
    /// The headers of the body are there.
    void responseReceived();
    void dataReceived(const QByteArray& piece);
    void succeeded();
    void failed(const FetchError& error);

private:
    void approve(const QUrl& url);
    void send();
    void redirect(const QUrl& target);
    void announceResponse();
    void readPiece();
    void finish();
    void dropReply();
    void fail(int code, const QString& description);

    const HostResolver resolver_;
    const Coding coding_;
    QNetworkAccessManager manager_;
    QTimer silence_;
    std::unique_ptr<HostLookup> lookup_;
    QNetworkReply* reply_ = nullptr; ///< child of the manager
    QUrl url_;
    qint64 unwanted_ = 0; ///< bytes of redirections and error pages
    int redirects_ = 0;
    bool announced_ = false;
    bool over_ = false;
};
