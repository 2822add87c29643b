#pragma once

#include "platform/MainQueue.h"

#include <cstddef>
#include <deque>

namespace glimmerly {

/// A main queue that the test turns by hand. Posted to from the test's thread only.
class FakeMainQueue : public MainQueue {
public:
    void post(std::function<void()> task) override { tasks_.push_back(std::move(task)); }

    [[nodiscard]] std::size_t pending() const { return tasks_.size(); }
    /// Runs the oldest task; does nothing when there is none.
    void runOne() {
        if (tasks_.empty())
            return;
        const auto task = std::move(tasks_.front());
        tasks_.pop_front();
        task();
    }
    /// Runs every task, those posted meanwhile included.
    void runAll() {
        while (!tasks_.empty())
            runOne();
    }

private:
    std::deque<std::function<void()>> tasks_;
};

} // namespace glimmerly
