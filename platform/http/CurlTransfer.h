#pragma once

#include "platform/HttpClient.h"
#include "platform/http/CurlHandles.h"
#include "platform/http/CurlRoute.h"

#include <array>
#include <chrono>

namespace glimmerly {

/// A request on its way to the network.
struct HttpJob {
    using Clock = std::chrono::steady_clock;

    HttpRequest request;
    HttpClient::Completion completion;
    Clock::time_point deadline;
};

/// One request under way, as an easy handle of libcurl. Stays where it is: libcurl points into it.
class CurlTransfer {
public:
    CurlTransfer(HttpJob job, const CurlRoute& route);
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    [[nodiscard]] CURL* handle() const { return handle_.get(); }
    /// Tells the request's sender how it went.
    void complete(CURLcode outcome);

private:
    void setRequest();
    static std::size_t receive(const char* data, std::size_t size, std::size_t count, void* transfer);
    [[nodiscard]] Result<HttpResponse> result(CURLcode outcome);

    HttpJob job_;
    std::string received_;
    std::array<char, CURL_ERROR_SIZE> errorText_{};
    CurlList headers_;
    CurlEasy handle_;
};

/// `code` as an error of this program; `detail` says more than the code where it is not empty.
[[nodiscard]] Error curlError(CURLcode code, std::string_view detail = {});

} // namespace glimmerly
