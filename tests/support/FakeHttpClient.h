#pragma once

#include "platform/HttpClient.h"

#include <mutex>
#include <utility>
#include <vector>

namespace glimmerly {

/// Keeps the requests and answers each at once, on the calling thread, or never. From any thread.
class FakeHttpClient : public HttpClient {
public:
    void send(HttpRequest request, Completion completion) override {
        const std::lock_guard lock(mutex_);
        requests_.push_back(std::move(request));
        if (answer)
            completion(*answer);
        else
            unanswered_.push_back(std::move(completion));
    }
    void stop() override { isStopped = true; }

    [[nodiscard]] std::vector<HttpRequest> requests() const {
        const std::lock_guard lock(mutex_);
        return requests_;
    }

    std::optional<Result<HttpResponse>> answer = HttpResponse{200, {}}; ///< none: no answer comes
    bool isStopped = false;

private:
    mutable std::mutex mutex_;
    std::vector<HttpRequest> requests_;
    std::vector<Completion> unanswered_;
};

} // namespace glimmerly
