#include "update/HttpFetch.h"

#include "platform/LocalizedStrings.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

#include <netdb.h>

namespace {

constexpr qint64 maximumUnwanted = 1024 * 1024;
constexpr int maximumRedirects = 10;

bool isSuccess(const QNetworkReply& reply) {
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 200 && status < 300;
}

} // namespace

HttpFetch::HttpFetch(HostResolver resolver, Coding coding, std::chrono::milliseconds silenceLimit,
                     QObject* parent)
    : QObject(parent), resolver_(std::move(resolver)), coding_(coding) {
    manager_.setProxy(QNetworkProxy::NoProxy);
    silence_.setSingleShot(true);
    silence_.setInterval(silenceLimit);
    connect(&silence_, &QTimer::timeout, this,
            [this] { fail(0, getLocalString("IDS_TXT_UPDATE_TIMEOUT")); });
}

HttpFetch::~HttpFetch() {
    abort();
}

bool HttpFetch::isFetchable(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == u"http" || url.scheme() == u"https");
}

qint64 HttpFetch::expectedLength() const {
    bool isNumber = false;
    const qint64 length =
        reply_ ? reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong(&isNumber) : -1;
    return isNumber ? length : -1;
}

QByteArray HttpFetch::header(const QByteArray& name) const {
    return reply_ ? reply_->rawHeader(name) : QByteArray();
}

void HttpFetch::start(const QUrl& url) {
    silence_.start();
    QMetaObject::invokeMethod(
        this, [this, url] { approve(url); }, Qt::QueuedConnection);
}

void HttpFetch::abort() {
    if (std::exchange(over_, true))
        return;
    silence_.stop();
    if (lookup_)
        lookup_->disconnect(this);
    dropReply();
}

void HttpFetch::dropReply() {
    if (!reply_)
        return;
    reply_->disconnect(this);
    reply_->abort();
    reply_->deleteLater();
    reply_ = nullptr;
}

void HttpFetch::approve(const QUrl& url) {
    if (over_)
        return;
    // Never from a secure address to an open one.
    if (!isFetchable(url) || (url_.scheme() == u"https" && url.scheme() == u"http")) {
        url_ = url;
        fail(0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
        return;
    }
    url_ = url;
    if (!QHostAddress(url.host()).isNull()) {
        send();
        return;
    }
    lookup_ = std::make_unique<HostLookup>(resolver_);
    connect(lookup_.get(), &HostLookup::finished, this, [this](int code) {
        if (code == 0)
            send();
        else
            fail(QNetworkReply::HostNotFoundError, QString::fromLocal8Bit(gai_strerror(code)));
    });
    lookup_->start(url.host());
}

void HttpFetch::send() {
    QNetworkRequest request(url_);
    // Redirections are followed here: Qt asks about the first one only and then loses count.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    if (coding_ == Coding::Identity)
        request.setRawHeader("Accept-Encoding", "identity");
    reply_ = manager_.get(request);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &HttpFetch::announceResponse);
    connect(reply_, &QNetworkReply::readyRead, this, &HttpFetch::readPiece);
    connect(reply_, &QNetworkReply::finished, this, &HttpFetch::finish);
}

void HttpFetch::redirect(const QUrl& target) {
    dropReply();
    silence_.start();
    if (++redirects_ > maximumRedirects)
        fail(0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
    else
        approve(url_.resolved(target));
}

void HttpFetch::announceResponse() {
    silence_.start();
    if (announced_ || over_ || !isSuccess(*reply_))
        return;
    announced_ = true;
    Q_EMIT responseReceived();
}

void HttpFetch::readPiece() {
    announceResponse();
    if (over_)
        return;
    const QByteArray piece = reply_->readAll();
    if (piece.isEmpty())
        return;
    if (announced_) {
        Q_EMIT dataReceived(piece);
        return;
    }
    unwanted_ += piece.size();
    if (unwanted_ > maximumUnwanted)
        fail(0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
}

void HttpFetch::finish() {
    if (over_)
        return;
    if (reply_->error() == QNetworkReply::NoError && reply_->bytesAvailable() > 0)
        readPiece();
    if (over_)
        return;
    if (reply_->error() != QNetworkReply::NoError) {
        fail(reply_->error(), reply_->errorString());
        return;
    }
    const QUrl target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!announced_ && target.isValid()) {
        redirect(target);
        return;
    }
    announceResponse();
    if (over_)
        return;
    if (!announced_) {
        fail(0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
        return;
    }
    abort();
    Q_EMIT succeeded();
}

void HttpFetch::fail(int code, const QString& description) {
    if (over_)
        return;
    abort();
    Q_EMIT failed({code, description, url_});
}
