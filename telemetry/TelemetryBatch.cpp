#include "telemetry/TelemetryBatch.h"

#include "base/JsonText.h"
#include "base/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

using Json = nlohmann::json;

/// Of `schema_version` 1, which was made for another system: what runs here is in "os_version".
constexpr auto osOfSchema = "macOS";

Json jsonOf(const TelemetryProperties& properties) {
    Json object = Json::object();
    for (const auto& [key, value] : properties)
        object[key] = std::visit([](const auto& plain) { return Json(plain); }, value.json());
    return object;
}

Json jsonOf(const std::vector<PendingTelemetryEvent>& events) {
    Json array = Json::array();
    for (const auto& event : events)
        array.push_back({{"seq", array.size()},
                         {"name", event.name},
                         {"ts", event.timestamp},
                         {"props", jsonOf(event.props)}});
    return array;
}

bool isValidJson(const PendingTelemetryEvent& event) {
    // Values are valid from the start.
    return isUtf8(event.name) && std::isfinite(event.timestamp) &&
           std::ranges::all_of(event.props, [](const auto& entry) { return isUtf8(entry.first); });
}

} // namespace

bool isValidJson(const TelemetryBatch& batch) {
    const auto texts = {&batch.batchID,  &batch.applicationName, &batch.applicationVersion, &batch.osVersion,
                        &batch.bundleID, &batch.architecture,    &batch.machineID,          &batch.sessionID};
    return std::isfinite(batch.sentAt) &&
           std::ranges::all_of(texts, [](const std::string* text) { return isUtf8(*text); }) &&
           std::ranges::all_of(batch.events, [](const auto& event) { return isValidJson(event); });
}

Result<std::string> encodeTelemetryBatch(const TelemetryBatch& batch) {
    const Json object{{"schema_version", 1},
                      {"batch_id", batch.batchID},
                      {"sent_at", batch.sentAt},
                      {"app", {{"name", batch.applicationName}, {"version", batch.applicationVersion}}},
                      {"client",
                       {{"os", osOfSchema},
                        {"os_version", batch.osVersion},
                        {"bundle_id", batch.bundleID},
                        {"architecture", batch.architecture}}},
                      {"ids", {{"machine_id", batch.machineID}, {"session_id", batch.sessionID}}},
                      {"events", jsonOf(batch.events)}};
    try {
        return withEscapedSolidus(object.dump());
    } catch (const Json::exception& exception) {
        return failure(Error("JSON", exception.id, exception.what()));
    }
}

} // namespace glimmerly
