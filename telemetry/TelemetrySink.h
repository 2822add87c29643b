#pragma once

#include "base/SerialQueue.h"
#include "platform/Application.h"
#include "platform/system/SystemInfo.h"
#include "telemetry/Telemetry.h"
#include "telemetry/TelemetryBatch.h"

#include <memory>
#include <optional>
#include <vector>

namespace glimmerly {

class HttpClient;
struct HttpRequest;

/// What the sink works with.
struct TelemetrySinkServices {
    HttpClient& http;
    BundleInfo bundle; ///< an empty `serviceBaseURL` turns the sink off: no event, no request, no thread
    SystemInfo system;
    WallClock clock = systemClock(); ///< read on the tracking thread and on the sink's queue
};

/// Collects usage events and sends them in batches, two seconds after the first or when 50 have come. A batch
/// that cannot be sent is logged and dropped; nothing is retried or kept.
class TelemetrySink final : public Telemetry {
public:
    explicit TelemetrySink(TelemetrySinkServices services);

    [[nodiscard]] static TelemetrySink& shared();

    void track(std::string_view name, TelemetryProperties properties = {}) override;
    /// Sends what is pending and waits for the answer, 1.5 seconds at most. Returns at once when there is
    /// nothing to send.
    void flushSynchronously();

private:
    enum class Waiting { none, forTheAnswer };

    void append(PendingTelemetryEvent event);
    void flush(Waiting waiting);
    [[nodiscard]] std::vector<PendingTelemetryEvent> takeBatch();
    [[nodiscard]] std::optional<HttpRequest> makeRequest(std::vector<PendingTelemetryEvent> events) const;

    const TelemetrySinkServices services_;
    const std::string sessionID_;
    // What follows belongs to the queue.
    std::vector<PendingTelemetryEvent> pending_; ///< oldest first
    std::optional<SerialQueue::Delayed> scheduledFlush_;

    std::unique_ptr<SerialQueue> queue_; // last: it ends before what its tasks use; none when turned off
};

} // namespace glimmerly
