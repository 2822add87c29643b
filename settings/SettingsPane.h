#pragma once

#include "settings/SettingsText.h"

#include <array>
#include <string_view>

namespace glimmerly {

enum class SettingsPane { general, about };

/// A pane as the sidebar lists it.
struct SettingsPaneEntry {
    SettingsPane pane;
    std::string_view identifier; ///< stays the same whatever the label says
    std::string_view label;      ///< UTF-8
    std::string_view symbol;
};

/// In the sidebar's order.
inline constexpr std::array settingsPanes{
    SettingsPaneEntry{SettingsPane::general, "general", settings_text::general, "gearshape"},
    SettingsPaneEntry{SettingsPane::about, "about", settings_text::about, "info.circle"},
};

} // namespace glimmerly
