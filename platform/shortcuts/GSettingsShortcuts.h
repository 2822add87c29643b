#pragma once

#include "platform/shortcuts/KeyStroke.h"

#include <span>

namespace glimmerly {

/// Shortcuts that the user has made: each in a place of its own.
struct CustomShortcuts {
    const char* listSchema = nullptr;
    const char* listKey = nullptr; ///< the places, as paths or as names below `listPath`
    const char* listPath = "";
    const char* schema = nullptr; ///< of each place
};

/// Which settings of a desktop are shortcuts.
struct ShortcutSchemas {
    std::span<const char* const> schemas; ///< all texts in these that are shortcuts
    CustomShortcuts custom;
};

extern const ShortcutSchemas gnomeShortcutSchemas;
extern const ShortcutSchemas cinnamonShortcutSchemas;
extern const ShortcutSchemas mateShortcutSchemas;

/// The shortcuts in these settings as they are now. What is not installed has none.
[[nodiscard]] std::vector<DesktopShortcut> gsettingsShortcuts(const ShortcutSchemas& schemas);

} // namespace glimmerly
