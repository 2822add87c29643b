#pragma once

#include <chrono>
#include <thread>

namespace glimmerly {

inline constexpr std::chrono::seconds patience{15};

/// Asks `condition` every two milliseconds until it holds; false when it did not within `limit`.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition, std::chrono::milliseconds limit = patience) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace glimmerly
