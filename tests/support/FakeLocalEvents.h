#pragma once

#include "platform/LocalEvents.h"

#include <map>

namespace glimmerly {

/// Keys that the test presses in the program's windows.
class FakeLocalEvents : public LocalEvents {
public:
    Monitor addLocalMonitorForEvents(EventTypeMask mask, Handler handler) override {
        lastMask = mask;
        monitors_.emplace(++lastMonitor_, std::move(handler));
        return lastMonitor_;
    }
    void removeMonitor(Monitor monitor) override { monitors_.erase(monitor); }

    /// True when the press reached its window.
    bool press(const KeyDownEvent& event) {
        std::optional<KeyDownEvent> passing = event;
        for (const auto& [id, handler] : std::map(monitors_)) {
            if (passing)
                passing = handler(*passing);
        }
        return passing.has_value();
    }
    [[nodiscard]] std::size_t monitorCount() const { return monitors_.size(); }

    EventTypeMask lastMask = 0;

private:
    std::map<Monitor, Handler> monitors_;
    Monitor lastMonitor_ = 0;
};

} // namespace glimmerly
