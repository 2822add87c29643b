#include "base/SerialQueue.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <list>
#include <map>
#include <mutex>
#include <optional>

namespace glimmerly {

/// What waits to be run. Shared with the delayed tasks' handles, which may outlive the queue.
class SerialQueue::Tasks {
public:
    void add(Task task) {
        {
            const std::lock_guard lock(mutex_);
            ready_.push_back({0, std::move(task)});
        }
        changed_.notify_one();
    }

    std::uint64_t addAt(Clock::time_point time, Task task) {
        std::uint64_t id = 0;
        {
            const std::lock_guard lock(mutex_);
            id = nextId_++;
            delayed_.emplace(time, Entry{id, std::move(task)});
        }
        changed_.notify_one();
        return id;
    }

    void cancel(std::uint64_t id) {
        Task dropped; // let go of outside the lock: what it owns may call back
        const std::lock_guard lock(mutex_);
        if (const auto due = due_.extract(id)) {
            dropped = std::move(due.mapped()->task);
            ready_.erase(due.mapped());
            return;
        }
        const auto found = std::ranges::find(delayed_, id, [](const auto& pair) { return pair.second.id; });
        if (found != delayed_.end()) {
            dropped = std::move(found->second.task);
            delayed_.erase(found);
        }
    }

    void stop() {
        {
            const std::lock_guard lock(mutex_);
            stopped_ = true;
        }
        changed_.notify_one();
    }

    /// Runs the tasks until there are none left after `stop`.
    void run() {
        while (auto task = next())
            (*task)();
    }

private:
    struct Entry {
        std::uint64_t id; // 0 for a task that cannot be cancelled
        Task task;
    };

    /// Waits for the next task; none when the queue has stopped.
    std::optional<Task> next() {
        std::unique_lock lock(mutex_);
        for (;;) {
            queueWhatIsDue();
            if (!ready_.empty()) {
                Entry first = std::move(ready_.front());
                ready_.pop_front();
                due_.erase(first.id);
                return std::move(first.task);
            }
            if (stopped_)
                return std::nullopt;
            if (delayed_.empty())
                changed_.wait(lock);
            else
                changed_.wait_until(lock, Clock::time_point(delayed_.begin()->first));
        }
    }

    void queueWhatIsDue() {
        if (delayed_.empty())
            return;
        const auto end = delayed_.upper_bound(Clock::now());
        for (auto due = delayed_.begin(); due != end; ++due) {
            ready_.push_back(std::move(due->second));
            due_.emplace(ready_.back().id, std::prev(ready_.end()));
        }
        delayed_.erase(delayed_.begin(), end);
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::list<Entry> ready_;
    std::map<std::uint64_t, std::list<Entry>::iterator> due_; // the delayed ones in `ready_`: it may be long
    std::multimap<Clock::time_point, Entry> delayed_;         // equal times keep the order in which they came
    std::uint64_t nextId_ = 1;
    bool stopped_ = false;
};

void SerialQueue::Delayed::cancel() {
    if (const auto tasks = tasks_.lock())
        tasks->cancel(id_);
}

SerialQueue::SerialQueue(std::string label, ThreadSetup setup)
    : label_(std::move(label)), tasks_(std::make_shared<Tasks>()),
      thread_([tasks = tasks_, name = label_, setup = std::move(setup)] {
          if (setup)
              setup(name);
          tasks->run();
      }) {}

SerialQueue::~SerialQueue() {
    assert(!isCurrent() && "a queue cannot wait for itself");
    tasks_->stop();
    thread_.join();
}

void SerialQueue::async(Task task) {
    tasks_->add(std::move(task));
}

SerialQueue::Delayed SerialQueue::asyncAfter(std::chrono::nanoseconds delay, Task task) {
    return {tasks_, tasks_->addAt(Clock::now() + delay, std::move(task))};
}

} // namespace glimmerly
