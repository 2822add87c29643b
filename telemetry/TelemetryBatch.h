#pragma once

#include "base/Result.h"
#include "telemetry/TelemetryValue.h"

#include <string>
#include <vector>

namespace glimmerly {

/// One recorded event.
struct PendingTelemetryEvent {
    std::string name;
    double timestamp; ///< seconds since 1970 when it was tracked
    TelemetryProperties props;
};

/// What one upload says.
struct TelemetryBatch {
    std::string batchID;
    double sentAt; ///< seconds since 1970
    std::string applicationName;
    std::string applicationVersion; ///< with the word: "Version 1.4.2"
    std::string osVersion;
    std::string bundleID; ///< empty without one
    std::string architecture;
    std::string machineID;
    std::string sessionID;
    std::vector<PendingTelemetryEvent> events;
};

/// True when JSON can hold all of `batch`: its texts are UTF-8 and its numbers finite.
[[nodiscard]] bool isValidJson(const TelemetryBatch& batch);

/// The body of the upload: compact JSON, the solidus escaped.
[[nodiscard]] Result<std::string> encodeTelemetryBatch(const TelemetryBatch& batch);

} // namespace glimmerly
