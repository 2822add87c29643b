#pragma once

#include "platform/Alerts.h"

namespace glimmerly {

/// Alerts as message boxes in front of everything, on the display under the mouse.
class QtAlerts : public Alerts {
public:
    /// When the program quits meanwhile, the answer is the last button. A request to stop may come from any
    /// thread.
    int runModal(const Alert& alert) override;
    void beep() override;
};

} // namespace glimmerly
