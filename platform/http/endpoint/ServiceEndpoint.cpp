#include "platform/http/endpoint/ServiceEndpoint.h"

#include "base/Whitespace.h"

#include <curl/curl.h>

#include <memory>

namespace glimmerly {

namespace {

using Url = std::unique_ptr<CURLU, decltype([](CURLU* url) { curl_url_cleanup(url); })>;
using Text = std::unique_ptr<char, decltype([](char* text) { curl_free(text); })>;

std::string partOf(const Url& url, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(url.get(), part, &text, 0) != CURLUE_OK)
        return {};
    const Text owner(text);
    return text;
}

} // namespace

bool isServiceConfigured(std::string_view baseURL) {
    return !trimmedWhitespace(baseURL).empty();
}

std::expected<std::string, ServiceEndpointError> serviceEndpoint(std::string_view baseURL,
                                                                 std::string_view path) {
    const std::string base(trimmedWhitespace(baseURL));
    if (base.empty())
        return std::unexpected(ServiceEndpointError::notConfigured);
    const Url url(curl_url());
    constexpr unsigned flags = CURLU_DEFAULT_SCHEME | CURLU_NON_SUPPORT_SCHEME;
    if (!url || curl_url_set(url.get(), CURLUPART_URL, base.c_str(), flags) != CURLUE_OK)
        return std::unexpected(ServiceEndpointError::invalid);
    std::string whole = partOf(url, CURLUPART_PATH);
    if (!whole.ends_with('/'))
        whole += '/';
    whole += path;
    if (curl_url_set(url.get(), CURLUPART_PATH, whole.c_str(), 0) != CURLUE_OK)
        return std::unexpected(ServiceEndpointError::invalid);
    std::string text = partOf(url, CURLUPART_URL);
    if (text.empty())
        return std::unexpected(ServiceEndpointError::invalid);
    return text;
}

} // namespace glimmerly
