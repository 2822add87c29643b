#pragma once

#include <string>

struct pxProxyFactory_;

namespace glimmerly {

/// The proxy that the desktop's settings or the environment name. For one thread.
class SystemProxy {
public:
    SystemProxy();
    ~SystemProxy();
    SystemProxy(const SystemProxy&) = delete;
    SystemProxy& operator=(const SystemProxy&) = delete;

    /// The proxy to reach `url` by, as a URL; empty: none. May take as long as the network does where the
    /// proxy is told by a script.
    [[nodiscard]] std::string proxyFor(const std::string& url) const;

private:
    pxProxyFactory_* factory_;
};

} // namespace glimmerly
