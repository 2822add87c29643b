#include "base/NotificationCenter.h"

namespace glimmerly {

Observation NotificationCenter::observe(std::string_view name, std::function<void()> observer) {
    return observers_[std::string(name)].add(std::move(observer));
}

void NotificationCenter::post(std::string_view name) {
    if (const auto found = observers_.find(name); found != observers_.end())
        found->second.announce();
}

} // namespace glimmerly
