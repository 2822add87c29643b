#pragma once

#include "platform/Alerts.h"

#include <vector>

namespace glimmerly {

/// Keeps every alert and answers with `choice` at once.
class FakeAlerts : public Alerts {
public:
    int runModal(const Alert& alert) override {
        shown.push_back(alert);
        return choice;
    }

    std::vector<Alert> shown;
    int choice = 0;
};

} // namespace glimmerly
