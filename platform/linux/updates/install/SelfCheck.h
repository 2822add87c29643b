#pragma once

#include "base/Result.h"

#include <chrono>
#include <filesystem>
#include <stop_token>

namespace glimmerly {

/// Started with this option alone, every version of the program loads its libraries, opens the display, makes
/// what it needs of the desktop, and ends: with status 0 when all of it worked.
inline constexpr auto selfCheckOption = "--self-check";

/// Has `program` check itself on this desktop; an error unless it says within `patience` that it works, and
/// soon after `stop` is requested.
[[nodiscard]] Result<void> runSelfCheck(const std::filesystem::path& program, const std::stop_token& stop,
                                        std::chrono::milliseconds patience = std::chrono::seconds(30));

} // namespace glimmerly
