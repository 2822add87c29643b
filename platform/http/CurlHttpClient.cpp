#include "platform/http/CurlHttpClient.h"

#include "platform/http/CurlWorker.h"
#include "platform/threads/Threads.h"

#include <chrono>

namespace glimmerly {

namespace {

/// How long the end of the program waits for a thread that the network holds up.
constexpr std::chrono::milliseconds patience{200};

} // namespace

CurlHttpClient::CurlHttpClient(CurlHttpClientOptions options)
    : worker_(std::make_shared<CurlWorker>(std::move(options))) {}

CurlHttpClient::~CurlHttpClient() {
    stop();
}

void CurlHttpClient::prepare() {
    static std::once_flag once;
    std::call_once(once, [] { (void)curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void CurlHttpClient::send(HttpRequest request, Completion completion) {
    const std::lock_guard lock(mutex_);
    if (stopped_)
        return;
    if (!thread_.joinable()) {
        prepare();
        std::packaged_task<void()> task([worker = worker_] {
            becomeUtilityThread("http");
            worker->run();
        });
        ended_ = task.get_future();
        thread_ = std::thread(std::move(task));
    }
    const auto deadline = HttpJob::Clock::now() + request.timeout;
    worker_->add({std::move(request), std::move(completion), deadline});
}

void CurlHttpClient::stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    if (!thread_.joinable())
        return;
    worker_->stop();
    if (ended_.wait_for(patience) == std::future_status::ready)
        thread_.join();
    else
        thread_.detach(); // it keeps what it uses
}

} // namespace glimmerly
