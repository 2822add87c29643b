#include "hotkeys/EventMonitor.h"

#include <utility>

namespace glimmerly {

LocalMonitorState::LocalMonitorState(LocalEvents& events, EventTypeMask mask, LocalEvents::Handler handler)
    : events_(events), mask_(mask), handler_(std::move(handler)) {}

LocalMonitorState::~LocalMonitorState() {
    if (monitor_)
        events_.removeMonitor(*monitor_);
}

EventMonitor::EventMonitor(LocalEvents& events, EventTypeMask mask, LocalEvents::Handler handler)
    : state_(std::make_shared<LocalMonitorState>(events, mask, std::move(handler))) {}

void EventMonitor::start() {
    if (state_->monitor_)
        return;
    state_->monitor_ = state_->events_.addLocalMonitorForEvents(
        state_->mask_, [weakState = std::weak_ptr(state_)](const KeyDownEvent& event) {
            const auto state = weakState.lock();
            return state ? state->handler_(event) : std::optional(event);
        });
}

void EventMonitor::stop() {
    if (const auto installed = std::exchange(state_->monitor_, std::nullopt))
        state_->events_.removeMonitor(*installed);
}

} // namespace glimmerly
