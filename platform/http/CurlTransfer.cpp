#include "platform/http/CurlTransfer.h"

#include <algorithm>

namespace glimmerly {

namespace {

/// More than this no answer of a service has; one that does not end must not fill the memory.
constexpr std::size_t maxAnswer = 32u << 20;

long remainingMilliseconds(HttpJob::Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - HttpJob::Clock::now());
    return std::max(1L, static_cast<long>(left.count())); // 0 would mean for ever
}

} // namespace

Error curlError(CURLcode code, std::string_view detail) {
    return {"libcurl", code, detail.empty() ? curl_easy_strerror(code) : std::string(detail)};
}

CurlTransfer::CurlTransfer(HttpJob job, const CurlRoute& route)
    : job_(std::move(job)), handle_(curl_easy_init()) {
    if (!handle_)
        return;
    setRequest();
    setRoute(handle_.get(), route, "http,https");
    setOption(handle_.get(), CURLOPT_FOLLOWLOCATION, 0L);
}

void CurlTransfer::setRequest() {
    for (const std::string& line : {"Content-Type: " + job_.request.contentType, std::string("Expect:")}) {
        if (auto* longer = curl_slist_append(headers_.get(), line.c_str())) {
            (void)headers_.release();
            headers_.reset(longer);
        }
    }
    CURL* curl = handle_.get();
    setOption(curl, CURLOPT_URL, job_.request.url.c_str());
    setOption(curl, CURLOPT_HTTPHEADER, headers_.get());
    setOption(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(job_.request.body.size()));
    setOption(curl, CURLOPT_POSTFIELDS, job_.request.body.data());
    setOption(curl, CURLOPT_TIMEOUT_MS, remainingMilliseconds(job_.deadline));
    setOption(curl, CURLOPT_WRITEFUNCTION, &CurlTransfer::receive);
    setOption(curl, CURLOPT_WRITEDATA, this);
    setOption(curl, CURLOPT_ERRORBUFFER, errorText_.data());
    setOption(curl, CURLOPT_PRIVATE, this);
}

std::size_t CurlTransfer::receive(const char* data, std::size_t size, std::size_t count, void* transfer) {
    auto& received = static_cast<CurlTransfer*>(transfer)->received_;
    const std::size_t length = size * count;
    if (received.size() + length > maxAnswer)
        return CURL_WRITEFUNC_ERROR;
    received.append(data, length);
    return length;
}

void CurlTransfer::complete(CURLcode outcome) {
    job_.completion(result(outcome));
}

Result<HttpResponse> CurlTransfer::result(CURLcode outcome) {
    long sent = 0;
    (void)curl_easy_getinfo(handle_.get(), CURLINFO_REQUEST_SIZE, &sent);
    // With the request sent, this is what libcurl calls an answer without a status line.
    const bool isNoHttp = outcome == CURLE_UNSUPPORTED_PROTOCOL && sent > 0;
    if (isNoHttp || outcome == CURLE_WEIRD_SERVER_REPLY)
        return HttpResponse{};
    if (outcome != CURLE_OK)
        return failure(curlError(outcome, errorText_.data()));
    long status = 0;
    (void)curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
    return HttpResponse{static_cast<int>(status), std::move(received_)};
}

} // namespace glimmerly
