#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <stop_token>

#include <curl/curl.h>

/// One transfer of the library, which can be ended at any byte. Used on one thread.
class CurlHandle final {
public:
    /// Throws std::runtime_error where the library cannot be had.
    CurlHandle();
    ~CurlHandle();
    Q_DISABLE_COPY_MOVE(CurlHandle)

    /// Numbers are long or curl_off_t as the option has them. Throws std::runtime_error when the
    /// library does not know the option.
    template <typename T> void set(CURLoption option, T value) {
        check(curl_easy_setopt(easy_.get(), option, value));
    }

    /// Runs the transfer to its end, to a stop (from whatever thread), or until `mayGoOn`, which is
    /// asked after every step, says no; in the last two cases CURLE_ABORTED_BY_CALLBACK.
    [[nodiscard]] CURLcode perform(const std::stop_token& stop,
                                   const std::function<bool()>& mayGoOn);
    /// What the library says about its failure; in English.
    [[nodiscard]] QString errorText(CURLcode code) const;
    /// errno of a connection that was not made; 0 where there is none.
    [[nodiscard]] int systemError() const;

private:
    static void check(CURLcode code);

    template <auto function> struct Free {
        template <typename T> void operator()(T* handle) const { function(handle); }
    };
    // In this order: the transfer goes before what it runs in.
    std::unique_ptr<CURLM, Free<curl_multi_cleanup>> multi_;
    std::unique_ptr<CURL, Free<curl_easy_cleanup>> easy_;
    char errorText_[CURL_ERROR_SIZE] = {};
};
