#pragma once

#include <atomic>
#include <system_error>
#include <thread>

namespace glimmerly {

/// Calls `worker(index)` once for every index from 0 to `count` - 1, on the calling thread and, where that
/// can help, on one more that lives as long as this call. `makeWorker()` makes the worker of each thread, on
/// the calling thread; workers must not throw.
template <typename MakeWorker>
void forEachOnTwoThreads(int count, MakeWorker makeWorker) {
    std::atomic<int> next = 0;
    const auto work = [&next, count](auto& worker) {
        for (int index = next++; index < count; index = next++)
            worker(index);
    };
    auto own = makeWorker();
    if (count < 2 || std::thread::hardware_concurrency() < 2)
        return work(own);
    auto other = makeWorker();
    std::jthread helper;
    try {
        helper = std::jthread([&] { work(other); });
    } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch)
        // No thread to be had: this one does it all.
    }
    work(own);
}

} // namespace glimmerly
