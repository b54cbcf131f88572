#include "update/KXPortavoUpdate.h"

#include "update/HttpFetch.h"
#include "update/UpdateLog.h"
#include "update/VersionComparison.h"

#include <QEventLoop>
#include <QTimer>

#include <utility>

namespace {

/// One transfer of the document, waited for.
class DocumentTransfer final {
public:
    explicit DocumentTransfer(const UpdateSettings& settings)
        : fetch_(settings.resolveHost, HttpFetch::Coding::Any, settings.silenceLimit) {
        QObject::connect(&fetch_, &HttpFetch::dataReceived, &loop_,
                         [this](const QByteArray& piece) { take(piece); });
        QObject::connect(&fetch_, &HttpFetch::succeeded, &loop_, &QEventLoop::quit);
        QObject::connect(&fetch_, &HttpFetch::failed, &loop_,
                         [this](const FetchError& error) { end(error.description); });
        QObject::connect(&limit_, &QTimer::timeout, &loop_,
                         [this] { end(QStringLiteral("The document did not come in time")); });
        limit_.setSingleShot(true);
        limit_.start(settings.documentLimit);
    }

    [[nodiscard]] QString error() const { return error_; }

    [[nodiscard]] QByteArray run(const QUrl& url, const std::stop_token& stop) {
        // Posted, so that it also ends a loop that has not begun yet.
        const std::stop_callback onStop(stop, [this] {
            QMetaObject::invokeMethod(
                &loop_, [this] { end(QStringLiteral("Given up")); }, Qt::QueuedConnection);
        });
        fetch_.start(url);
        loop_.exec();
        return body_;
    }

private:
    void take(const QByteArray& piece) {
        body_ += piece;
        if (body_.size() > maximumServerDocumentSize)
            end(QStringLiteral("The document is larger than 1 MB"));
    }

    void end(const QString& error) {
        fetch_.abort();
        body_.clear();
        error_ = error;
        loop_.quit();
    }

    QEventLoop loop_;
    HttpFetch fetch_;
    QTimer limit_;
    QByteArray body_;
    QString error_;
};

} // namespace

KXPortavoUpdate::KXPortavoUpdate(UpdateSettings settings) : settings_(std::move(settings)) {}

bool KXPortavoUpdate::checkPossibleUpdate(const QString& versionElement,
                                          const std::stop_token& stop) const {
    const ServerDocument document = fetchDocument(versionElement, stop);
    return isUpdateAvailable(settings_.version, document.version.value_or(QString()));
}

std::optional<QUrl> KXPortavoUpdate::newerInstaller(const std::stop_token& stop) const {
    const ServerDocument document = fetchDocument(QStringLiteral("version"), stop);
    if (stop.stop_requested())
        return std::nullopt;
    if (!isUpdateAvailable(settings_.version, document.version.value_or(QString())) ||
        !document.url)
        return std::nullopt;
    const QUrl url(document.url->trimmed(), QUrl::TolerantMode);
    if (!HttpFetch::isFetchable(url)) {
        qCWarning(lcUpdate, "The installer's address cannot be used");
        return std::nullopt;
    }
    return url;
}

bool KXPortavoUpdate::isUpdateAvailable(const QString& local, const QString& server) {
    return ::isUpdateAvailable(local, server);
}

QUrl KXPortavoUpdate::documentUrl() const {
    QString base = settings_.baseUrl;
    while (base.endsWith(u'/'))
        base.chop(1);
    return QUrl(base % QStringLiteral("/xmlcontainer/customer/data/reelshift/mac/"
                                      "server_version.xml"),
                QUrl::TolerantMode);
}

ServerDocument KXPortavoUpdate::fetchDocument(const QString& versionElement,
                                              const std::stop_token& stop) const {
    DocumentTransfer transfer(settings_);
    const QByteArray body = transfer.run(documentUrl(), stop);
    ServerDocument document;
    if (transfer.error().isEmpty())
        document = parseServerDocument(body, versionElement);
    else
        document.error = transfer.error();
    if (!document.error.isEmpty() && !stop.stop_requested())
        qCWarning(lcUpdate, "The update server's document was not read: %s",
                  qUtf8Printable(document.error));
    return document;
}
