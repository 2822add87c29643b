#pragma once

#include "platform/http/CurlHttpClient.h"
#include "platform/http/CurlTransfer.h"
#include "platform/http/SystemProxy.h"

#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace glimmerly {

/// What the client's thread does: takes requests in the order in which they came and sees them through.
class CurlWorker {
public:
    explicit CurlWorker(CurlHttpClientOptions options) : options_(std::move(options)) {}

    /// From any thread, once `run` is about to be called.
    void add(HttpJob job);
    /// From any thread. `run` returns soon, and what is under way is given up.
    void stop();
    /// The thread's own: until `stop`.
    void run();

private:
    /// What is to be done next; none after `stop`.
    struct Turn {
        std::vector<HttpJob> toStart;
        std::vector<HttpJob> expired;
        std::vector<HttpJob> refused;
        int wait = std::numeric_limits<int>::max(); ///< milliseconds until the next waiting request expires
    };
    [[nodiscard]] std::optional<Turn> nextTurn();
    void start(HttpJob job, const SystemProxy& systemProxy);
    bool completeFinished();
    [[nodiscard]] bool isStopped();
    void wakeUp();

    const CurlHttpClientOptions options_;

    std::mutex mutex_; ///< guards what follows up to the next comment
    std::deque<HttpJob> waiting_;
    std::size_t waitingBytes_ = 0;
    std::vector<HttpJob> refused_;
    bool stopped_ = false;
    CurlMulti multi_; ///< others than the thread only wake it up

    // The thread's own.
    std::map<CURL*, std::unique_ptr<CurlTransfer>> transfers_;
};

} // namespace glimmerly
