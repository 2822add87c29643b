#pragma once

#include "platform/ScreenRecordingAccess.h"

#include <map>

namespace glimmerly {

/// A window server and settings that answer what the test says; grants at first, with no window on screen.
class FakeScreenRecordingAccess : public ScreenRecordingAccess {
public:
    [[nodiscard]] std::optional<std::vector<ListedWindow>> onScreenWindows() const override {
        return windows;
    }
    [[nodiscard]] std::optional<WindowDescription> description(std::uint32_t number) const override {
        described.push_back(number);
        const auto found = descriptions.find(number);
        return found == descriptions.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] bool preflight() const override {
        ++preflights;
        return granted;
    }
    void openSettingsPage() override { ++settingsOpened; }

    std::optional<std::vector<ListedWindow>> windows = std::vector<ListedWindow>();
    std::map<std::uint32_t, WindowDescription> descriptions;
    bool granted = true; ///< the desktop's own word
    int settingsOpened = 0;
    mutable int preflights = 0;
    mutable std::vector<std::uint32_t> described; ///< in the order of asking
};

} // namespace glimmerly
