#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>

namespace glimmerly {

enum class ServiceEndpointError {
    notConfigured, ///< the base URL is empty
    invalid,       ///< it is no URL
};

/// True unless `baseURL` is empty or nothing but white space and line breaks.
[[nodiscard]] bool isServiceConfigured(std::string_view baseURL);

/// The URL of `path`, which has no solidus at its ends, on the service at `baseURL`, which is trimmed and
/// means "https" when it has no scheme.
[[nodiscard]] std::expected<std::string, ServiceEndpointError> serviceEndpoint(std::string_view baseURL,
                                                                               std::string_view path);

} // namespace glimmerly
