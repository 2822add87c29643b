#pragma once

#include "base/Iso8601.h"

#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// A log file's text after pruning, and the earliest time in it.
struct PrunedLog {
    std::string text;
    UtcTime oldest = UtcTime::max(); ///< of an empty text, the end of time
};

/// The lines of `text` that are whole log lines not older than `cutoff`, trimmed but otherwise as they are,
/// each with a line feed. None when `text` is empty or not UTF-8.
[[nodiscard]] std::optional<PrunedLog> pruneLog(std::string_view text, UtcTime cutoff);

} // namespace glimmerly
