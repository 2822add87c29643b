#include "platform/http/HttpDownload.h"

#include "platform/http/CurlHttpClient.h"
#include "platform/http/CurlTransfer.h"
#include "platform/http/SystemProxy.h"

#include <array>
#include <optional>

namespace glimmerly {

namespace {

constexpr long maxRedirects = 5;
constexpr int waitMilliseconds = 60'000; // libcurl wakes up earlier for whatever happens

Error statusError(long status) {
    return curlError(CURLE_HTTP_RETURNED_ERROR,
                     "The server answered with the status " + std::to_string(status));
}

/// What arrives, on its way to whoever asked for it.
struct Reception {
    const HttpDownload& download;
    const ReceiveBytes& receive;
    CURL* transfer;
    std::uint64_t received = 0;
    std::optional<Error> error{};
    std::array<char, CURL_ERROR_SIZE> errorText{};

    static std::size_t take(const char* data, std::size_t size, std::size_t count, void* reception) {
        auto& self = *static_cast<Reception*>(reception);
        return self.take({data, size * count}) ? size * count : CURL_WRITEFUNC_ERROR;
    }
    bool take(std::span<const char> bytes) {
        long status = 0;
        (void)curl_easy_getinfo(transfer, CURLINFO_RESPONSE_CODE, &status);
        received += bytes.size();
        if (status != httpOk)
            error = statusError(status);
        else if (received > download.largest)
            error = curlError(CURLE_FILESIZE_EXCEEDED, "The server sends more than it said");
        else if (auto taken = receive(std::as_bytes(bytes)); !taken)
            error = taken.error();
        return !error;
    }
    Result<void> outcome(CURLcode code) {
        if (error)
            return failure(*error);
        if (code != CURLE_OK)
            return failure(curlError(code, errorText.data()));
        long status = 0;
        (void)curl_easy_getinfo(transfer, CURLINFO_RESPONSE_CODE, &status);
        if (status != httpOk)
            return failure(statusError(status));
        return {};
    }

    static constexpr long httpOk = 200;
};

void setUp(Reception& reception) {
    CURL* curl = reception.transfer;
    const HttpDownload& download = reception.download;
    const CurlRoute route{SystemProxy().proxyFor(download.url), download.certificateAuthorities};
    setRoute(curl, route, "https");
    setOption(curl, CURLOPT_URL, download.url.c_str());
    setOption(curl, CURLOPT_FOLLOWLOCATION, 1L);
    setOption(curl, CURLOPT_MAXREDIRS, maxRedirects);
    setOption(curl, CURLOPT_CONNECTTIMEOUT, static_cast<long>(download.patience));
    setOption(curl, CURLOPT_TIMEOUT, static_cast<long>(download.longest));
    setOption(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    setOption(curl, CURLOPT_LOW_SPEED_TIME, static_cast<long>(download.patience));
    setOption(curl, CURLOPT_WRITEFUNCTION,
              static_cast<std::size_t (*)(const char*, std::size_t, std::size_t, void*)>(&Reception::take));
    setOption(curl, CURLOPT_WRITEDATA, &reception);
    setOption(curl, CURLOPT_ERRORBUFFER, reception.errorText.data());
}

/// Runs the one transfer of `multi` to its end.
CURLcode run(CURLM* multi, const std::stop_token& stop) {
    const std::stop_callback wakeUp(stop, [multi] { (void)curl_multi_wakeup(multi); });
    int running = 1;
    while (running > 0) {
        if (stop.stop_requested())
            return CURLE_ABORTED_BY_CALLBACK;
        if (curl_multi_perform(multi, &running) != CURLM_OK ||
            (running > 0 && curl_multi_poll(multi, nullptr, 0, waitMilliseconds, nullptr) != CURLM_OK))
            return CURLE_FAILED_INIT;
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi, &left);
    return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
}

} // namespace

Result<void> fetch(const HttpDownload& download, const ReceiveBytes& receive, const std::stop_token& stop) {
    CurlHttpClient::prepare();
    const CurlEasy transfer(curl_easy_init());
    const CurlMulti multi(curl_multi_init());
    if (!transfer || !multi)
        return failure(curlError(CURLE_OUT_OF_MEMORY));
    Reception reception{.download = download, .receive = receive, .transfer = transfer.get()};
    setUp(reception);
    if (curl_multi_add_handle(multi.get(), transfer.get()) != CURLM_OK)
        return failure(curlError(CURLE_FAILED_INIT));
    const CURLcode code = run(multi.get(), stop);
    auto outcome = reception.outcome(code);
    (void)curl_multi_remove_handle(multi.get(), transfer.get());
    return outcome;
}

} // namespace glimmerly
