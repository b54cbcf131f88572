#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <stop_token>

/// Why a fetch failed.
struct FetchError {
    int code = 0;        ///< of the transfer library, 0 for failures of our own, or the one below
    QString description; ///< for the user; one line
    QUrl url;
    QString details; ///< for the log, one line; empty where the description is all there is

    /// A download that ended well with no bytes at all.
    static constexpr int zeroByteResource = -1014;

    [[nodiscard]] const QString& logged() const {
        return details.isEmpty() ? description : details;
    }
};

/// Gets one http or https address, redirections included, and hands the body over piece by piece,
/// on the thread that asks. The server is not trusted: whatever it sends, the fetch ends within its
/// limits, and a stop ends it at any byte. It uses no proxy, keeps no cookies and tells no
/// passwords. A value; any thread.
class HttpFetch final {
public:
    struct Limits {
        qint64 bodySize;              ///< bytes
        std::chrono::seconds silence; ///< to connect, and between signs of life
        /// From the first address to the last byte; 0: none.
        std::chrono::milliseconds total{0};
    };
    struct Response {
        QUrl url;                   ///< that answered, after redirections
        qint64 expectedLength = -1; ///< -1: the server does not say
        QByteArray contentDisposition;
    };
    /// What is told on the way; what they throw ends the fetch and is thrown by it.
    struct Receiver {
        /// The head of the body is there.
        std::function<void(const Response& response)> response;
        std::function<void(const QByteArray& piece)> data;
    };

    /// `certificates`: a file with the authorities to trust; empty for the system's.
    HttpFetch(const Limits& limits, QString certificates);

    /// Whether the address is one that is fetched at all.
    [[nodiscard]] static bool isFetchable(const QUrl& url);
    /// Never from a secure address to an open one.
    [[nodiscard]] static bool mayFollow(const QUrl& from, const QUrl& to);

    /// Returns when the whole body has been handed over, with the address that it came from.
    /// Throws FetchError, and Cancelled after a stop.
    QUrl run(const QUrl& url, const Receiver& receiver, const std::stop_token& stop) const;

private:
    const Limits limits_;
    const QString certificates_;
};
