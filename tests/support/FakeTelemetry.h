#pragma once

#include "telemetry/Telemetry.h"

#include <string>
#include <vector>

namespace glimmerly {

/// Keeps the events it is told of, in order. One thread only.
class FakeTelemetry : public Telemetry {
public:
    struct Event {
        std::string name;
        TelemetryProperties properties;

        bool operator==(const Event&) const = default;
    };

    void track(std::string_view name, TelemetryProperties properties = {}) override {
        events.push_back({std::string(name), std::move(properties)});
    }

    std::vector<Event> events;
};

} // namespace glimmerly
