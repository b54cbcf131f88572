#include "update/CurlHandle.h"

#include <mutex>
#include <stdexcept>

namespace {

constexpr int longestPoll = 1000; // milliseconds; a stop and the network end it at once

void prepareLibrary() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

} // namespace

CurlHandle::CurlHandle() {
    prepareLibrary();
    multi_.reset(curl_multi_init());
    easy_.reset(curl_easy_init());
    if (!multi_ || !easy_)
        throw std::runtime_error("the transfer library cannot be started");
    set(CURLOPT_ERRORBUFFER, errorText_);
    set(CURLOPT_NOSIGNAL, 1L);
    // A name look-up that nobody answers is left behind.
    set(CURLOPT_QUICK_EXIT, 1L);
#if LIBCURL_VERSION_NUM >= 0x081400
    // By the multi handle, since its threads look names up.
    curl_multi_setopt(multi_.get(), CURLMOPT_QUICK_EXIT, 1L);
#endif
}

CurlHandle::~CurlHandle() = default;

CURLcode CurlHandle::perform(const std::stop_token& stop, const std::function<bool()>& mayGoOn) {
    const std::stop_callback wake(stop, [this] { curl_multi_wakeup(multi_.get()); });
    CURLcode result = CURLE_ABORTED_BY_CALLBACK;
    if (curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK)
        return CURLE_FAILED_INIT;
    int running = 1;
    while (running > 0 && !stop.stop_requested() && mayGoOn()) {
        if (curl_multi_perform(multi_.get(), &running) != CURLM_OK)
            break;
        if (running > 0 &&
            curl_multi_poll(multi_.get(), nullptr, 0, longestPoll, nullptr) != CURLM_OK)
            break;
    }
    int rest = 0;
    while (const CURLMsg* const message = curl_multi_info_read(multi_.get(), &rest)) {
        if (message->msg == CURLMSG_DONE)
            result = message->data.result;
    }
    curl_multi_remove_handle(multi_.get(), easy_.get());
    return result;
}

QString CurlHandle::errorText(CURLcode code) const {
    return QString::fromUtf8(errorText_[0] != '\0' ? errorText_ : curl_easy_strerror(code));
}

int CurlHandle::systemError() const {
    long error = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &error);
    return static_cast<int>(error);
}

void CurlHandle::check(CURLcode code) {
    if (code != CURLE_OK)
        throw std::runtime_error(curl_easy_strerror(code));
}
