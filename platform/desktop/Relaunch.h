#pragma once

#include "base/Error.h"

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>

namespace glimmerly {

class SingleInstance;

/// Starts this program anew and gives it the right to be the running one.
class Relaunch {
public:
    /// `instance`, which must outlive this, is none in a program that could not claim the right.
    explicit Relaunch(SingleInstance* instance) : instance_(instance) {}

    /// `completion` runs when the new process has the right and waits for this one's end, or with the error
    /// that kept it from starting; never when it started but ended before. While one is starting, nothing
    /// happens.
    void start(std::function<void(std::optional<Error>)> completion);

private:
    [[nodiscard]] bool isStarting() const;

    SingleInstance* instance_;
    pid_t process_ = 0; ///< 0: none was started
    std::chrono::steady_clock::time_point started_;
};

} // namespace glimmerly
