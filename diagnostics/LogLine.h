#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// One line of the log file: a JSON object whose keys are these fields' names.
struct LogLine {
    std::string ts; ///< ISO 8601, UTC, with milliseconds
    std::string level;
    std::string category;
    std::string message;
    std::string threadName;
    std::optional<std::map<std::string, std::string>> metadata;
    std::optional<std::string> errorSummary;

    bool operator==(const LogLine&) const = default;
};

/// Compact JSON, keys in ascending byte order, the solidus escaped, no line feed at the end. Bytes that are
/// not UTF-8 become U+FFFD.
[[nodiscard]] std::string encodeLogLine(const LogLine& line);

/// None unless `text` is a JSON object with the five plain fields as strings; the optional fields may be
/// missing or null, keys that are not known are ignored.
[[nodiscard]] std::optional<LogLine> decodeLogLine(std::string_view text);

} // namespace glimmerly
