#include "base/SerialQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <vector>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Clock = std::chrono::steady_clock;

/// Stops the queue it is given to until `open` is called.
class Gate {
public:
    explicit Gate(SerialQueue& queue) {
        queue.async([reached = reached_.get_future().share()] { reached.wait(); });
    }
    void open() { reached_.set_value(); }

private:
    std::promise<void> reached_;
};

TEST(SerialQueue, RunsWhatEachThreadGivesItInOrderAndLosesNothing) {
    constexpr int threads = 8;
    constexpr int tasks = 2000;
    std::array<std::vector<int>, threads> seen; // unguarded: the queue is the guard
    SerialQueue queue("test");
    {
        std::vector<std::jthread> callers;
        for (std::size_t t = 0; t < threads; ++t)
            callers.emplace_back([&, t] {
                for (int i = 0; i < tasks; ++i)
                    queue.async([&, t, i] { seen[t].push_back(i); });
            });
    }
    const auto counts = queue.sync([&] { return seen; });
    for (const auto& numbers : counts) {
        ASSERT_EQ(numbers.size(), tasks);
        EXPECT_TRUE(std::ranges::is_sorted(numbers));
    }
}

TEST(SerialQueue, SyncWaitsForWhatCameBeforeAndReturnsItsResult) {
    SerialQueue queue("test");
    bool ran = false;
    queue.async([&] { ran = true; });
    EXPECT_TRUE(queue.sync([&] { return ran && queue.isCurrent(); }));
    EXPECT_FALSE(queue.isCurrent());
    EXPECT_EQ(*queue.sync([] { return std::make_unique<int>(3); }), 3);
    queue.sync([&] { ran = false; });
    EXPECT_FALSE(ran);
}

TEST(SerialQueue, RunsDelayedTasksInTheOrderOfTheirTimesAndNotBefore) {
    SerialQueue queue("test");
    std::vector<int> order;
    std::promise<void> done;
    const auto start = Clock::now();
    queue.asyncAfter(30ms, [&] {
        order.push_back(3);
        done.set_value();
    });
    queue.asyncAfter(20ms, [&] { order.push_back(2); });
    queue.async([&] { order.push_back(1); });
    ASSERT_EQ(done.get_future().wait_for(30s), std::future_status::ready);
    EXPECT_GE(Clock::now() - start, 30ms);
    EXPECT_THAT(queue.sync([&] { return order; }), ElementsAre(1, 2, 3));
}

TEST(SerialQueue, CancelledTasksDoNotRunAlsoWhenTheirTimeHasCome) {
    const auto owned = std::make_shared<int>();
    std::atomic<int> runs = 0;
    SerialQueue::Delayed outliving;
    {
        SerialQueue queue("test");
        auto waiting = queue.asyncAfter(1h, [&runs, owned] { ++runs; });
        waiting.cancel();
        EXPECT_EQ(owned.use_count(), 1) << "what the task held was let go of";
        waiting.cancel();

        // The second of two tasks that are due is cancelled while the first one runs.
        std::promise<SerialQueue::Delayed> second;
        Gate gate(queue);
        queue.asyncAfter(0ns, [handle = second.get_future().share()] {
            auto other = handle.get();
            other.cancel();
        });
        second.set_value(queue.asyncAfter(0ns, [&] { ++runs; }));
        gate.open();
        queue.sync([] {});
        outliving = queue.asyncAfter(1h, [&] { ++runs; });
    }
    outliving.cancel();
    SerialQueue::Delayed().cancel();
    EXPECT_EQ(runs, 0);
}

TEST(SerialQueue, EndsWithEveryTaskRunButTheDelayedOnes) {
    int runs = 0;
    int lateRuns = 0;
    {
        SerialQueue queue("test");
        Gate gate(queue);
        for (int i = 0; i < 100; ++i)
            queue.async([&] { queue.async([&] { ++runs; }); });
        queue.asyncAfter(1h, [&] { ++lateRuns; });
        gate.open();
    }
    EXPECT_EQ(runs, 100);
    EXPECT_EQ(lateRuns, 0);
}

} // namespace
} // namespace glimmerly
