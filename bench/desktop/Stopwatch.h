#pragma once

#include <chrono>

namespace glimmerly::bench {

/// Runs from its making on. Wall time, because the log's times are compared with it.
class Stopwatch {
public:
    using Clock = std::chrono::system_clock;

    [[nodiscard]] Clock::time_point start() const { return start_; }
    [[nodiscard]] double milliseconds() const { return millisecondsAt(Clock::now()); }
    [[nodiscard]] double millisecondsAt(Clock::time_point moment) const {
        return std::chrono::duration<double, std::milli>(moment - start_).count();
    }

private:
    Clock::time_point start_ = Clock::now();
};

} // namespace glimmerly::bench
