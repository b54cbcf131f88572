#include "update/HttpFetch.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "update/HttpTransfer.h"

#include <utility>

namespace {

constexpr int maximumRedirects = 10;

FetchError unusable(const QUrl& url, const QString& details) {
    return {0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"), url, details};
}

} // namespace

HttpFetch::HttpFetch(const Limits& limits, QString certificates)
    : limits_(limits), certificates_(std::move(certificates)) {}

bool HttpFetch::isFetchable(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty() &&
           (url.scheme() == u"http" || url.scheme() == u"https");
}

bool HttpFetch::mayFollow(const QUrl& from, const QUrl& to) {
    return isFetchable(to) && (from.scheme() != u"https" || to.scheme() == u"https");
}

QUrl HttpFetch::run(const QUrl& url, const Receiver& receiver, const std::stop_token& stop) const {
    if (!isFetchable(url))
        throw unusable(url, QStringLiteral("The address is not one that is fetched"));
    QUrl from = url;
    HttpTransfer transfer(limits_, certificates_, receiver);
    for (int redirects = 0; redirects <= maximumRedirects; ++redirects) {
        const QByteArray location = transfer.run(from, stop);
        if (location.isNull())
            return from;
        const QUrl to = from.resolved(QUrl::fromEncoded(location, QUrl::TolerantMode));
        if (!mayFollow(from, to))
            throw unusable(from, QStringLiteral("The server names another address that is not "
                                                "followed"));
        from = to;
    }
    throw unusable(from, QStringLiteral("The server names one address after the other"));
}
