#include "base/Observers.h"

namespace glimmerly {

Observation Observers::add(std::function<void()> observer) {
    auto added = std::make_shared<std::function<void()>>(std::move(observer));
    observers_.push_back(added);
    return added;
}

void Observers::announce() {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    const auto hearers = observers_; // an observer may add others
    for (const auto& hearer : hearers) {
        if (const auto observer = hearer.lock())
            (*observer)();
    }
}

} // namespace glimmerly
