#include "update/KXPortavoUpdate.h"

#include "platform/MainThreadCalls.h"
#include "update/HttpFetch.h"
#include "update/UpdateLog.h"
#include "update/VersionComparison.h"

#include <stdexcept>
#include <utility>

KXPortavoUpdate::KXPortavoUpdate(UpdateSettings settings) : settings_(std::move(settings)) {}

bool KXPortavoUpdate::checkPossibleUpdate(const QString& versionElement,
                                          const std::stop_token& stop) const {
    const ServerDocument document = fetchDocument(versionElement, stop).document;
    return isUpdateAvailable(settings_.version, document.version.value_or(QString()));
}

std::optional<QUrl> KXPortavoUpdate::newerInstaller(const std::stop_token& stop) const {
    const auto [document, from] = fetchDocument(QStringLiteral("version"), stop);
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
    if (!HttpFetch::mayFollow(from, url)) {
        qCWarning(lcUpdate, "The installer is not offered: its address is not secure, although "
                            "the document's was");
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

KXPortavoUpdate::Fetched KXPortavoUpdate::fetchDocument(const QString& versionElement,
                                                        const std::stop_token& stop) const {
    const HttpFetch fetch(
        {maximumServerDocumentSize, settings_.silenceLimit, settings_.documentLimit},
        settings_.certificates);
    Fetched fetched;
    QByteArray body;
    try {
        fetched.url = fetch.run(
            documentUrl(),
            {[](const HttpFetch::Response&) {}, [&](const QByteArray& piece) { body += piece; }},
            stop);
        fetched.document = parseServerDocument(body, versionElement);
    } catch (const FetchError& error) {
        fetched.document.error = error.logged();
    } catch (const Cancelled&) {
        return fetched;
    } catch (const std::runtime_error& error) {
        fetched.document.error = QString::fromUtf8(error.what());
    }
    if (!fetched.document.error.isEmpty())
        qCWarning(lcUpdate, "The update server's document was not read: %s",
                  qUtf8Printable(fetched.document.error));
    return fetched;
}
