#include "platform/linux/updates/UpdaterFlags.h"

#include "platform/MainQueue.h"

namespace glimmerly {

void UpdaterFlags::set(UpdaterFlag flag, bool value) {
    Slot& changed = slot(flag);
    if (changed.value == value)
        return;
    changed.value = value;
    std::erase_if(changed.observers, [](const auto& observer) { return observer.expired(); });
    for (const auto& observer : changed.observers)
        deliver(observer, flag);
}

Updater::Observation UpdaterFlags::observe(UpdaterFlag flag, std::function<void(bool)> handler) {
    auto observer = std::make_shared<Handler>(std::move(handler));
    slot(flag).observers.push_back(observer);
    deliver(observer, flag);
    return observer;
}

/// Tells the value of then: an old one, told late to somebody who has changed it since, would change it back.
void UpdaterFlags::deliver(const std::weak_ptr<Handler>& observer, UpdaterFlag flag) {
    mainQueue_.post([observer, slot = std::weak_ptr(slots_[static_cast<std::size_t>(flag)])] {
        const auto handler = observer.lock();
        const auto present = slot.lock();
        if (handler && present)
            (*handler)(present->value);
    });
}

} // namespace glimmerly
