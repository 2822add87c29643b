#pragma once

#include "platform/Updates.h"

#include <array>
#include <vector>

namespace glimmerly {

class MainQueue;

/// The four values of an updater that others can observe.
class UpdaterFlags {
public:
    /// `mainQueue` must outlive this.
    explicit UpdaterFlags(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    [[nodiscard]] bool value(UpdaterFlag flag) const { return slot(flag).value; }
    void set(UpdaterFlag flag, bool value);
    [[nodiscard]] Updater::Observation observe(UpdaterFlag flag, std::function<void(bool)> handler);

private:
    using Handler = std::function<void(bool)>;
    struct Slot {
        bool value = false;
        std::vector<std::weak_ptr<Handler>> observers;
    };
    [[nodiscard]] Slot& slot(UpdaterFlag flag) const { return *slots_[static_cast<std::size_t>(flag)]; }
    void deliver(const std::weak_ptr<Handler>& observer, UpdaterFlag flag);

    MainQueue& mainQueue_;
    std::array<std::shared_ptr<Slot>, 4> slots_{std::make_shared<Slot>(), std::make_shared<Slot>(),
                                                std::make_shared<Slot>(), std::make_shared<Slot>()};
};

} // namespace glimmerly
