#pragma once

#include "platform/Alerts.h"

#include <functional>
#include <vector>

namespace glimmerly {

/// Keeps every alert and answers with `choice` at once.
class FakeAlerts : public Alerts {
public:
    int runModal(const Alert& alert) override {
        shown.push_back(alert);
        if (onRun)
            onRun();
        return choice;
    }

    std::vector<Alert> shown;
    int choice = 0;
    std::function<void()> onRun; ///< while the alert is open
};

} // namespace glimmerly
