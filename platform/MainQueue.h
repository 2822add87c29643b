#pragma once

#include <functional>

namespace glimmerly {

/// Work for the main thread, run in the order in which it was posted.
class MainQueue {
public:
    virtual ~MainQueue() = default;

    /// From any thread. `task` runs on a later turn of the main loop, never within this call.
    virtual void post(std::function<void()> task) = 0;
};

} // namespace glimmerly
