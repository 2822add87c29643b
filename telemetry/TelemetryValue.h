#pragma once

#include "base/Clock.h"
#include "base/Utf8.h"

#include <concepts>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace glimmerly {

/// A property of a usage event: a string, a boolean, an integer or a finite number. Everything else that it
/// is made from becomes a string that describes it; what has no description does not compile.
class TelemetryValue {
public:
    using Json = std::variant<std::string, bool, std::int64_t, double>;

    // NOLINTBEGIN(google-explicit-constructor): properties are written as plain values
    template <std::same_as<bool> T>
    TelemetryValue(T value) : json_(value) {}
    template <std::integral T>
        requires(!std::same_as<T, bool>)
    TelemetryValue(T value) {
        if (std::in_range<std::int64_t>(value))
            json_ = static_cast<std::int64_t>(value);
        else
            json_ = std::to_string(value);
    }
    TelemetryValue(double value);
    TelemetryValue(float value) : TelemetryValue(double{value}) {}
    /// Bytes that are not UTF-8 become U+FFFD.
    template <std::convertible_to<std::string_view> T>
    TelemetryValue(const T& text) : json_(wellFormedUtf8(text)) {}
    /// A date: ISO 8601, UTC, with milliseconds.
    TelemetryValue(WallTime time);
    template <typename T>
        requires requires(const T& value) {
            { value.toString() } -> std::convertible_to<std::string_view>;
        }
    TelemetryValue(const T& value) : TelemetryValue(value.toString()) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] const Json& json() const { return json_; }
    bool operator==(const TelemetryValue&) const = default;

private:
    Json json_;
};

/// Keys in snake_case; durations are whole milliseconds under keys that end in "_ms".
using TelemetryProperties = std::map<std::string, TelemetryValue>;

} // namespace glimmerly
