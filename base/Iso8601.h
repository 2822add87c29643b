#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// Whether a time is written with its milliseconds: 2026-11-16T17:29:05.123Z or 2026-11-16T17:29:05Z.
enum class Iso8601Form { milliseconds, seconds };

/// A time of the UTC calendar to the millisecond; wide enough for every year that can be written.
using UtcTime = std::chrono::sys_time<std::chrono::milliseconds>;

/// `time`, which must lie in the years 0 to 9999; `seconds` drops the fraction.
[[nodiscard]] std::string formatIso8601(UtcTime time, Iso8601Form form);

/// The time that `text` writes in exactly that form, or none.
[[nodiscard]] std::optional<UtcTime> parseIso8601(std::string_view text, Iso8601Form form);

} // namespace glimmerly
