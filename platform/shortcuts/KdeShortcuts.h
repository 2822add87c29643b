#pragma once

#include "platform/shortcuts/KeyStroke.h"

namespace glimmerly {

/// The shortcuts in `configuration`, the content of kglobalshortcutsrc: each entry's own, else, disabled,
/// what it has by default.
[[nodiscard]] std::vector<DesktopShortcut> kdeShortcuts(std::string_view configuration);

} // namespace glimmerly
