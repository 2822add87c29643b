#include "platform/http/CurlWorker.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace glimmerly {

namespace {

constexpr std::size_t maxTransfers = 6;

int millisecondsUntil(HttpJob::Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - HttpJob::Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

void fail(std::vector<HttpJob>& jobs, CURLcode code, std::string_view why) {
    for (auto& job : jobs)
        job.completion(failure(curlError(code, why)));
}

} // namespace

void CurlWorker::add(HttpJob job) {
    const std::lock_guard lock(mutex_);
    if (waitingBytes_ + job.request.body.size() > options_.maxWaitingBytes) {
        job.request = {};
        refused_.push_back(std::move(job));
    } else {
        waitingBytes_ += job.request.body.size();
        waiting_.push_back(std::move(job));
    }
    wakeUp();
}

void CurlWorker::stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    wakeUp();
}

bool CurlWorker::isStopped() {
    const std::lock_guard lock(mutex_);
    return stopped_;
}

/// With the mutex held.
void CurlWorker::wakeUp() {
    if (multi_)
        (void)curl_multi_wakeup(multi_.get());
}

void CurlWorker::run() {
    {
        const std::lock_guard lock(mutex_);
        multi_.reset(curl_multi_init());
    }
    const SystemProxy systemProxy;
    while (auto turn = nextTurn()) {
        fail(turn->refused, CURLE_OUT_OF_MEMORY, "Too many requests are waiting");
        fail(turn->expired, CURLE_OPERATION_TIMEDOUT, {});
        for (auto& job : turn->toStart)
            start(std::move(job), systemProxy);
        if (isStopped())
            break; // while a proxy was looked for: whom the answers are for may be gone
        int running = 0;
        (void)curl_multi_perform(multi_.get(), &running);
        const bool hasRoomAgain = completeFinished();
        (void)curl_multi_poll(multi_.get(), nullptr, 0, hasRoomAgain ? 0 : turn->wait, nullptr);
    }
    for (const auto& [handle, transfer] : transfers_)
        (void)curl_multi_remove_handle(multi_.get(), handle);
    transfers_.clear();
    const std::lock_guard lock(mutex_);
    multi_.reset();
}

std::optional<CurlWorker::Turn> CurlWorker::nextTurn() {
    const std::lock_guard lock(mutex_);
    if (stopped_ || !multi_)
        return std::nullopt;
    Turn turn;
    turn.refused = std::exchange(refused_, {});
    const auto now = HttpJob::Clock::now();
    while (!waiting_.empty()) {
        HttpJob& next = waiting_.front();
        const bool isExpired = next.deadline <= now;
        if (!isExpired && transfers_.size() + turn.toStart.size() >= maxTransfers) {
            turn.wait = millisecondsUntil(next.deadline);
            break;
        }
        waitingBytes_ -= next.request.body.size();
        (isExpired ? turn.expired : turn.toStart).push_back(std::move(next));
        waiting_.pop_front();
    }
    return turn;
}

void CurlWorker::start(HttpJob job, const SystemProxy& systemProxy) {
    const CurlRoute route{systemProxy.proxyFor(job.request.url), options_.certificateAuthorities};
    auto transfer = std::make_unique<CurlTransfer>(std::move(job), route);
    CURL* handle = transfer->handle();
    if (handle == nullptr || curl_multi_add_handle(multi_.get(), handle) != CURLM_OK) {
        if (!isStopped())
            transfer->complete(CURLE_FAILED_INIT);
        return;
    }
    transfers_.emplace(handle, std::move(transfer));
}

/// True when there were any.
bool CurlWorker::completeFinished() {
    bool any = false;
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const CURLcode outcome = message->data.result;
        auto finished = transfers_.extract(message->easy_handle);
        (void)curl_multi_remove_handle(multi_.get(), finished.key()); // invalidates the message
        finished.mapped()->complete(outcome);
        any = true;
    }
    return any;
}

} // namespace glimmerly
