#include "telemetry/TelemetrySink.h"

#include "base/BundleIdentifier.h"
#include "base/Utf8.h"
#include "base/Uuid.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/HttpClient.h"
#include "platform/Platform.h"
#include "platform/http/endpoint/ServiceEndpoint.h"
#include "platform/threads/Threads.h"
#include "telemetry/FirstCharacters.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <utility>

namespace glimmerly {

namespace {

using namespace std::chrono_literals;

constexpr auto flushDelay = 2s;
constexpr std::size_t maxBatchSize = 50;
constexpr std::size_t maxRequestSize = 500;
constexpr auto terminationLimit = 1500ms;
constexpr int loggedCharacters = 500;
constexpr std::size_t loggedBytes = 64u << 10; // a character may be as long as the answer likes

double secondsSince1970(WallTime time) {
    // In two steps: a double does not hold so many nanoseconds.
    const auto whole = std::chrono::floor<std::chrono::seconds>(time);
    return static_cast<double>(whole.time_since_epoch().count()) +
           std::chrono::duration<double>(time - whole).count();
}

void warn(std::string_view message, GlimmerlyLog::Metadata metadata = {},
          const std::optional<Error>& error = {},
          GlimmerlyLog::Place place = GlimmerlyLog::Place::current()) {
    GlimmerlyLog::warning(log_category::telemetry, message, std::move(metadata), error, place);
}

void logUnlessAccepted(const Result<HttpResponse>& outcome) {
    if (!outcome)
        return warn("Telemetry upload failed", {}, outcome.error());
    if (!outcome->status)
        return warn("Telemetry upload returned a non-HTTP response");
    if (*outcome->status >= 200 && *outcome->status <= 299)
        return;
    GlimmerlyLog::Metadata metadata{{"status", std::to_string(*outcome->status)}};
    if (!outcome->body.empty() && isUtf8(outcome->body))
        metadata["body"] = firstCharacters(
            wellFormedUtf8(std::string_view(outcome->body).substr(0, loggedBytes)), loggedCharacters);
    warn("Telemetry upload rejected", std::move(metadata));
}

} // namespace

TelemetrySink& TelemetrySink::shared() {
    static auto* const sink = [] {
        const Platform& platform = Platform::current();
        const bool isOn = isServiceConfigured(platform.bundle.serviceBaseURL);
        return new TelemetrySink(
            {.http = platform.http, .bundle = platform.bundle, .system = isOn ? systemInfo() : SystemInfo{}});
    }();
    return *sink;
}

TelemetrySink::TelemetrySink(TelemetrySinkServices services)
    : services_(std::move(services)), sessionID_(Uuid::generate().toString()) {
    if (isServiceConfigured(services_.bundle.serviceBaseURL))
        queue_ =
            std::make_unique<SerialQueue>(std::string(bundleIdentifier) + ".telemetry", becomeUtilityThread);
}

void TelemetrySink::track(std::string_view name, TelemetryProperties properties) {
    if (!queue_)
        return;
    const double timestamp = secondsSince1970(services_.clock());
    properties.erase("");
    queue_->async(
        [this, event = PendingTelemetryEvent{std::string(name), timestamp, std::move(properties)}]() mutable {
            append(std::move(event));
        });
}

void TelemetrySink::flushSynchronously() {
    if (queue_)
        queue_->sync([this] { flush(Waiting::forTheAnswer); });
}

void TelemetrySink::append(PendingTelemetryEvent event) {
    pending_.push_back(std::move(event));
    if (pending_.size() >= maxBatchSize)
        flush(Waiting::none);
    else if (!scheduledFlush_)
        scheduledFlush_ = queue_->asyncAfter(flushDelay, [this] { flush(Waiting::none); });
}

void TelemetrySink::flush(Waiting waiting) {
    if (auto scheduled = std::exchange(scheduledFlush_, std::nullopt))
        scheduled->cancel();
    if (pending_.empty())
        return;
    auto request = makeRequest(takeBatch());
    if (!request)
        return;
    std::promise<void> answer;
    const auto answered = answer.get_future();
    services_.http.send(std::move(*request), [answer = std::move(answer)](auto outcome) mutable {
        logUnlessAccepted(outcome);
        answer.set_value();
    });
    if (waiting == Waiting::forTheAnswer)
        answered.wait_for(terminationLimit);
}

std::vector<PendingTelemetryEvent> TelemetrySink::takeBatch() {
    const auto end =
        pending_.begin() + static_cast<std::ptrdiff_t>(std::min(pending_.size(), maxRequestSize));
    std::vector<PendingTelemetryEvent> batch(std::move_iterator(pending_.begin()), std::move_iterator(end));
    pending_.erase(pending_.begin(), end);
    return batch;
}

std::optional<HttpRequest> TelemetrySink::makeRequest(std::vector<PendingTelemetryEvent> events) const {
    auto url = serviceEndpoint(services_.bundle.serviceBaseURL, "api/telemetry");
    if (!url) {
        warn("Telemetry API URL is invalid");
        return std::nullopt;
    }
    const TelemetryBatch batch{.batchID = Uuid::generate().toString(),
                               .sentAt = secondsSince1970(services_.clock()),
                               .applicationName = services_.bundle.applicationName(),
                               .applicationVersion = services_.bundle.versionText(),
                               .osVersion = services_.system.osVersion,
                               .bundleID = services_.bundle.identifier.value_or(""),
                               .architecture = services_.system.architecture,
                               .machineID = services_.system.machineID,
                               .sessionID = sessionID_,
                               .events = std::move(events)};
    if (!isValidJson(batch)) {
        warn("Telemetry payload was not valid JSON");
        return std::nullopt;
    }
    auto body = encodeTelemetryBatch(batch);
    if (!body) {
        warn("Telemetry payload encoding failed", {}, body.error());
        return std::nullopt;
    }
    return HttpRequest{.url = std::move(*url), .contentType = "application/json", .body = std::move(*body)};
}

} // namespace glimmerly
