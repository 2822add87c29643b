#pragma once

#include "platform/SavePanel.h"

#include <functional>
#include <vector>

namespace glimmerly {

/// Answers at once what the test has set, and keeps what was asked.
class FakeSavePanel : public SavePanel {
public:
    SavePanelAnswer runModal(const SavePanelRequest& request) override {
        requests.push_back(request);
        if (onRun)
            onRun();
        return answer;
    }

    SavePanelAnswer answer;
    std::vector<SavePanelRequest> requests;
    std::function<void()> onRun;
};

} // namespace glimmerly
