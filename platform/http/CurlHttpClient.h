#pragma once

#include "platform/HttpClient.h"

#include <cstddef>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace glimmerly {

class CurlWorker;

struct CurlHttpClientOptions {
    std::string certificateAuthorities{}; ///< a PEM file in place of the system's; empty: the system's
    /// What may wait for its turn; a request beyond that fails. A service that does not answer must not fill
    /// the memory.
    std::size_t maxWaitingBytes = 32u << 20;
};

/// The client over libcurl. A few requests are under way at a time, the others wait in order. Its thread
/// starts with the first request and sleeps without waking up while there is nothing to do.
class CurlHttpClient final : public HttpClient {
public:
    explicit CurlHttpClient(CurlHttpClientOptions options = {});
    ~CurlHttpClient() override;
    CurlHttpClient(const CurlHttpClient&) = delete;
    CurlHttpClient& operator=(const CurlHttpClient&) = delete;

    /// Sets the libraries below up, which the first request does otherwise. What they register to run at exit
    /// then runs after whatever is registered from here on.
    static void prepare();

    void send(HttpRequest request, Completion completion) override;
    void stop() override;

private:
    const std::shared_ptr<CurlWorker> worker_; ///< shared with its thread, which may outlive the client
    std::mutex mutex_;                         ///< guards what follows
    std::thread thread_;
    std::future<void> ended_;
    bool stopped_ = false;
};

} // namespace glimmerly
