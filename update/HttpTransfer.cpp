#include "update/HttpTransfer.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThreadCalls.h"
#include "widgets/ForeignText.h"

#include <algorithm>

namespace {

/// Bytes a second that a transfer must make, on the average over the silence limit.
constexpr long leastSpeed = 100;
/// Bytes a second that are taken at the most: more costs time that the encoder could use.
constexpr curl_off_t highestSpeed = 8 * 1024 * 1024;
/// Bytes of one piece: fewer of them cost less.
constexpr long bufferSize = 64 * 1024;
/// Bytes that may frame a body beyond its own size: chunks can have any size, and extensions.
constexpr qint64 maximumFraming = 1024 * 1024;

} // namespace

HttpTransfer::HttpTransfer(const HttpFetch::Limits& limits, const QString& certificates,
                           const HttpFetch::Receiver& receiver)
    : limits_(limits), receiver_(receiver) {
    setOptions(certificates);
}

void HttpTransfer::setOptions(const QString& certificates) {
    curl_.set(CURLOPT_PROTOCOLS_STR, "http,https");
    curl_.set(CURLOPT_FOLLOWLOCATION, 0L);
    curl_.set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_.set(CURLOPT_USERAGENT, "reelshift");
    // No proxy, whatever the environment says, and no name or password from anywhere.
    curl_.set(CURLOPT_PROXY, "");
    curl_.set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    curl_.set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    curl_.set(CURLOPT_SSL_VERIFYPEER, 1L);
    curl_.set(CURLOPT_SSL_VERIFYHOST, 2L);
    curl_.set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (!certificates.isEmpty())
        curl_.set(CURLOPT_CAINFO, certificates.toLocal8Bit().constData());
    const auto silence = static_cast<long>(limits_.silence.count());
    curl_.set(CURLOPT_CONNECTTIMEOUT, silence);
    curl_.set(CURLOPT_LOW_SPEED_TIME, silence);
    curl_.set(CURLOPT_LOW_SPEED_LIMIT, leastSpeed);
    curl_.set(CURLOPT_MAX_RECV_SPEED_LARGE, highestSpeed);
    curl_.set(CURLOPT_BUFFERSIZE, bufferSize);
    curl_.set(CURLOPT_HEADERFUNCTION, &HttpTransfer::onLine);
    curl_.set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    curl_.set(CURLOPT_WRITEFUNCTION, &HttpTransfer::onBody);
    curl_.set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    // The one way to hear of bytes that belong to no header and to no body.
    curl_.set(CURLOPT_VERBOSE, 1L);
    curl_.set(CURLOPT_DEBUGFUNCTION, &HttpTransfer::onRawBytes);
    curl_.set(CURLOPT_DEBUGDATA, static_cast<void*>(this));
}

QByteArray HttpTransfer::run(const QUrl& url, const std::stop_token& stop) {
    url_ = url;
    head_.startOver();
    curl_.set(CURLOPT_URL, url.toEncoded().constData());
    if (limits_.total.count() > 0) {
        const auto gone = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - begun_);
        // 0 would mean: no limit.
        const auto rest = std::max(limits_.total - gone, std::chrono::milliseconds(1));
        curl_.set(CURLOPT_TIMEOUT_MS, static_cast<long>(rest.count()));
    }
    const CURLcode code = curl_.perform(stop, [this] { return !isFramingTooLarge(); });
    if (stop.stop_requested())
        throw Cancelled();
    if (thrown_)
        std::rethrow_exception(thrown_);
    if (head_.isTooLarge())
        throw unusable(QStringLiteral("The head of the answer is larger than 64 KB"));
    if (isFramingTooLarge())
        throw unusable(QStringLiteral("More frames the body than it holds"));
    // The transfer of a body that nobody wants was ended by takeLine().
    if (head_.isComplete() && head_.isRedirection() && !head_.location().isEmpty())
        return head_.location();
    if (head_.isComplete() && !head_.isSuccess())
        throw refusal();
    if (code != CURLE_OK)
        throw failure(code);
    if (!head_.isComplete())
        throw nothingButProvisional();
    return {};
}

void HttpTransfer::takeLine(const QByteArray& line) {
    const bool wasComplete = head_.isComplete();
    head_.addLine(line);
    if (head_.isTooLarge())
        throw unusable(QStringLiteral("The head of the answer is larger than 64 KB"));
    if (wasComplete || !head_.isComplete() || !head_.isSuccess())
        return;
    if (head_.isPacked())
        throw unusable(QStringLiteral("The answer is packed"));
    // The end of a connection can be anybody's, also of a secure one.
    if (url_.scheme() == u"https" && !head_.isFramed())
        throw unusable(QStringLiteral("It cannot be told where the answer ends"));
    if (head_.contentLength() > limits_.bodySize)
        throw unusable(QStringLiteral("The answer is too large"));
    receiver_.response({url_, head_.contentLength(), head_.contentDisposition()});
}

void HttpTransfer::takeBody(const QByteArray& piece) {
    // The library takes what follows a change of protocols (101) for a body.
    if (!head_.isComplete())
        throw nothingButProvisional();
    body_ += piece.size();
    if (body_ > limits_.bodySize)
        throw unusable(QStringLiteral("The answer is too large"));
    receiver_.data(piece);
}

bool HttpTransfer::isFramingTooLarge() const {
    return raw_ - body_ > body_ + maximumFraming;
}

FetchError HttpTransfer::failure(CURLcode code) const {
    const auto error = [this, code](const QString& description) {
        return FetchError{static_cast<int>(code), foreignLine(description), url_,
                          foreignLine(curl_.errorText(code))};
    };
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return error(getLocalString("IDS_TXT_UPDATE_TIMEOUT"));
    case CURLE_COULDNT_RESOLVE_HOST:
        return error(getLocalString("IDS_TXT_UPDATE_NO_HOST"));
    case CURLE_COULDNT_CONNECT:
        return error(curl_.systemError() != 0 ? qt_error_string(curl_.systemError())
                                              : getLocalString("IDS_TXT_UPDATE_TIMEOUT"));
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return error(getLocalString("IDS_TXT_UPDATE_CUT"));
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
        return error(getLocalString("IDS_TXT_UPDATE_NOT_SECURE"));
    default:
        return error(getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
    }
}

FetchError HttpTransfer::refusal() const {
    const QString answer =
        QString::number(head_.status()) % u' ' % QString::fromUtf8(head_.reason());
    return {0, foreignLine(getLocalString("IDS_TXT_UPDATE_REFUSED") % u' ' % answer), url_,
            foreignLine(QStringLiteral("The server answers: ") % answer)};
}

FetchError HttpTransfer::nothingButProvisional() const {
    return unusable(QStringLiteral("There is no answer but a provisional one"));
}

FetchError HttpTransfer::unusable(const QString& details) const {
    return {0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"), url_, details};
}

template <typename Step> std::size_t HttpTransfer::guarded(std::size_t size, Step step) {
    try {
        step();
        return size;
    } catch (...) {
        thrown_ = std::current_exception();
        return 0;
    }
}

std::size_t HttpTransfer::onLine(char* data, std::size_t one, std::size_t size, void* self) {
    auto& transfer = *static_cast<HttpTransfer*>(self);
    const QByteArray line(data, static_cast<qsizetype>(one * size));
    const std::size_t taken = transfer.guarded(one * size, [&] { transfer.takeLine(line); });
    // What is not the body asked for is not waited for.
    const HttpHead& head = transfer.head_;
    return head.isComplete() && !head.isSuccess() ? 0 : taken;
}

std::size_t HttpTransfer::onBody(char* data, std::size_t one, std::size_t size, void* self) {
    auto& transfer = *static_cast<HttpTransfer*>(self);
    return transfer.guarded(one * size, [&] {
        transfer.takeBody(QByteArray(data, static_cast<qsizetype>(one * size)));
    });
}

int HttpTransfer::onRawBytes(CURL*, curl_infotype type, char*, std::size_t size, void* self) {
    if (type == CURLINFO_DATA_IN)
        static_cast<HttpTransfer*>(self)->raw_ += static_cast<qint64>(size);
    return 0;
}
