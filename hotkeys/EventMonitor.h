#pragma once

#include "platform/LocalEvents.h"

#include <memory>

namespace glimmerly {

/// A monitor of the program's own events, installed or not. What is installed goes with it.
class LocalMonitorState {
public:
    LocalMonitorState(LocalEvents& events, EventTypeMask mask, LocalEvents::Handler handler);
    ~LocalMonitorState();
    LocalMonitorState(const LocalMonitorState&) = delete;
    LocalMonitorState& operator=(const LocalMonitorState&) = delete;

private:
    friend class EventMonitor;

    LocalEvents& events_;
    EventTypeMask mask_;
    LocalEvents::Handler handler_;
    std::optional<LocalEvents::Monitor> monitor_;
};

/// Has a handler see the program's own events between `start` and `stop`. Copies share one monitor.
class EventMonitor {
public:
    EventMonitor(LocalEvents& events, EventTypeMask mask, LocalEvents::Handler handler);

    void start();
    void stop();

private:
    std::shared_ptr<LocalMonitorState> state_;
};

} // namespace glimmerly
