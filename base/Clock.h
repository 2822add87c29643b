#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>

namespace glimmerly {

using WallTime = std::chrono::system_clock::time_point;

/// Where a service reads the wall clock; tests put their own in its place.
using WallClock = std::function<WallTime()>;

[[nodiscard]] inline WallClock systemClock() {
    return [] { return std::chrono::system_clock::now(); };
}

/// The whole milliseconds from `start` to `end`, truncated toward zero and kept within 0 … 86 400 000 (a
/// day), because the wall clock may be set back or forward in between.
[[nodiscard]] inline std::int64_t clampedMilliseconds(WallTime start, WallTime end) {
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(end - start).count();
    return std::clamp<std::int64_t>(elapsed, 0, 86'400'000);
}

} // namespace glimmerly
