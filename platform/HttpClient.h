#pragma once

#include "base/Result.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace glimmerly {

/// A POST request.
struct HttpRequest {
    std::string url;
    std::string contentType;
    std::string body;
    std::chrono::milliseconds timeout{60'000}; ///< for all of it, from `send` on
};

struct HttpResponse {
    std::optional<int> status; ///< none when what answered does not speak HTTP
    std::string body;
};

/// Sends requests over HTTP and HTTPS, by way of the system's proxy, to servers whose certificates are valid.
/// From any thread. A redirect is an answer like any other: what a request carries goes to its own host
/// alone.
class HttpClient {
public:
    /// Called once, on the client's own thread, unless the client is stopped before.
    using Completion = std::move_only_function<void(Result<HttpResponse>)>;

    virtual ~HttpClient() = default;

    /// Returns at once.
    virtual void send(HttpRequest request, Completion completion) = 0;
    /// Gives up what is under way and whatever is sent from now on, without a word. Returns within a fraction
    /// of a second.
    virtual void stop() = 0;
};

} // namespace glimmerly
