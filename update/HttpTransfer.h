#pragma once

#include "update/CurlHandle.h"
#include "update/HttpFetch.h"
#include "update/HttpHead.h"

#include <exception>

/// The requests of one fetch, each by itself; the limits hold for all of them together. Used on one
/// thread.
class HttpTransfer final {
public:
    HttpTransfer(const HttpFetch::Limits& limits, const QString& certificates,
                 const HttpFetch::Receiver& receiver);
    Q_DISABLE_COPY_MOVE(HttpTransfer)

    /// Where the server sends us, or a null array when it gave the body. Throws like HttpFetch.
    [[nodiscard]] QByteArray run(const QUrl& url, const std::stop_token& stop);

private:
    void setOptions(const QString& certificates);
    void takeLine(const QByteArray& line);
    void takeBody(const QByteArray& piece);
    [[nodiscard]] bool isFramingTooLarge() const;
    [[nodiscard]] FetchError failure(CURLcode code) const;
    [[nodiscard]] FetchError refusal() const;
    [[nodiscard]] FetchError nothingButProvisional() const;
    [[nodiscard]] FetchError unusable(const QString& details) const;
    /// Calls `step` for the library, which no exception may cross: 0 ends the transfer.
    template <typename Step> std::size_t guarded(std::size_t size, Step step);

    static std::size_t onLine(char* data, std::size_t one, std::size_t size, void* self);
    static std::size_t onBody(char* data, std::size_t one, std::size_t size, void* self);
    static int onRawBytes(CURL* handle, curl_infotype type, char* data, std::size_t size,
                          void* self);

    const HttpFetch::Limits limits_;
    const HttpFetch::Receiver& receiver_;
    const std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    CurlHandle curl_;
    QUrl url_;
    HttpHead head_;
    std::exception_ptr thrown_;
    qint64 raw_ = 0;  ///< bytes of the body with what frames it
    qint64 body_ = 0; ///< bytes of the body alone
};
