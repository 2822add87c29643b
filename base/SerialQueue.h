#pragma once

#include <cassert>
#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>

namespace glimmerly {

/// A thread that runs tasks one after the other, in the order in which they came. All functions may be called
/// from any thread. A task must not throw. With nothing to do the thread sleeps without waking up.
class SerialQueue {
    class Tasks;
    using Clock = std::chrono::steady_clock;

public:
    using Task = std::move_only_function<void()>;
    /// Run first on the new thread, with the queue's label: gives it its name and priority.
    using ThreadSetup = std::function<void(const std::string& label)>;

    /// A task that waits for its time. Copies speak of the same task; letting go of it does not cancel it.
    class Delayed {
    public:
        Delayed() = default;
        /// The task will not start any more. One that has started, or is over, is left alone.
        void cancel();

    private:
        friend SerialQueue;
        Delayed(std::weak_ptr<Tasks> tasks, std::uint64_t id) : tasks_(std::move(tasks)), id_(id) {}

        std::weak_ptr<Tasks> tasks_;
        std::uint64_t id_ = 0;
    };

    explicit SerialQueue(std::string label, ThreadSetup setup = {});
    /// Waits until every task given to `async` has run, those that they add included; delayed tasks whose
    /// time has not come are dropped. Not to be called on the queue itself.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    [[nodiscard]] const std::string& label() const { return label_; }
    /// True on the queue's own thread.
    [[nodiscard]] bool isCurrent() const { return std::this_thread::get_id() == thread_.get_id(); }

    /// Returns at once.
    void async(Task task);
    /// Runs `work` after every task that came before it and returns its result. On the queue itself it would
    /// wait for itself for ever: a programming error.
    template <std::invocable Work>
    auto sync(Work&& work) -> std::invoke_result_t<Work>;
    /// `task` joins the end of the queue when `delay` is over.
    Delayed asyncAfter(std::chrono::nanoseconds delay, Task task);

private:
    std::string label_;
    std::shared_ptr<Tasks> tasks_;
    std::thread thread_;
};

template <std::invocable Work>
auto SerialQueue::sync(Work&& work) -> std::invoke_result_t<Work> {
    assert(!isCurrent() && "a queue cannot wait for itself");
    std::packaged_task<std::invoke_result_t<Work>()> job(std::forward<Work>(work));
    auto result = job.get_future();
    async(std::move(job));
    return result.get();
}

} // namespace glimmerly
