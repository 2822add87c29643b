#pragma once

#include "platform/SymbolicHotKeys.h"

#include <functional>
#include <string>

namespace glimmerly {

class KeyboardLayout;

/// What the window manager that runs says of itself; empty where it says nothing.
struct RunningWindowManager {
    std::string name;
    std::string configurationFile; ///< when it was started with one that is not its usual one
};

/// The shortcuts of the desktop that XDG_CURRENT_DESKTOP names and of the window manager that runs, from
/// their own settings.
class DesktopShortcuts : public SymbolicHotKeys {
public:
    /// `layout` tells where the keys are that the settings name by what they print.
    DesktopShortcuts(const KeyboardLayout& layout, std::function<RunningWindowManager()> windowManager);

    [[nodiscard]] std::vector<SymbolicHotKey> copySymbolicHotKeys() const override;

private:
    const KeyboardLayout& layout_;
    std::function<RunningWindowManager()> windowManager_;
};

} // namespace glimmerly
