#include "platform/http/SystemProxy.h"

#include <proxy.h>

#include <string_view>

namespace glimmerly {

namespace {

/// libproxy's words in libcurl's.
std::string curlProxy(std::string_view proxy) {
    constexpr std::string_view anySocks = "socks://";
    if (proxy.starts_with("direct:"))
        return {};
    if (proxy.starts_with(anySocks)) // the server's name is the proxy's to look up
        return "socks5h://" + std::string(proxy.substr(anySocks.size()));
    return std::string(proxy);
}

} // namespace

SystemProxy::SystemProxy() : factory_(px_proxy_factory_new()) {}

SystemProxy::~SystemProxy() {
    px_proxy_factory_free(factory_);
}

std::string SystemProxy::proxyFor(const std::string& url) const {
    char** proxies = factory_ != nullptr ? px_proxy_factory_get_proxies(factory_, url.c_str()) : nullptr;
    if (proxies == nullptr)
        return {};
    // The first is the one preferred.
    const std::string first = proxies[0] != nullptr ? curlProxy(proxies[0]) : std::string();
    px_proxy_factory_free_proxies(proxies);
    return first;
}

} // namespace glimmerly
