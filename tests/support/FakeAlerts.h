#pragma once

#include "platform/Alerts.h"

#include <functional>
#include <vector>

namespace glimmerly {

/// Keeps every alert, answers with `choice` at once, and counts the sounds.
class FakeAlerts : public Alerts {
public:
    int runModal(const Alert& alert) override {
        shown.push_back(alert);
        if (onRun)
            onRun();
        return choice;
    }
    void beep() override { ++beeps; }

    std::vector<Alert> shown;
    int choice = 0;
    int beeps = 0;
    std::function<void()> onRun; ///< while the alert is open
};

} // namespace glimmerly
