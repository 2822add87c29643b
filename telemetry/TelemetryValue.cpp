#include "telemetry/TelemetryValue.h"

#include "base/Iso8601.h"
#include "base/Utf8.h"

#include <chrono>
#include <cmath>

namespace glimmerly {

TelemetryValue::TelemetryValue(double value) {
    if (std::isfinite(value))
        json_ = value;
    else if (std::isnan(value))
        json_ = "nan";
    else
        json_ = value < 0 ? "-inf" : "inf";
}

TelemetryValue::TelemetryValue(WallTime time)
    : json_(formatIso8601(std::chrono::floor<std::chrono::milliseconds>(time), Iso8601Form::milliseconds)) {}

} // namespace glimmerly
