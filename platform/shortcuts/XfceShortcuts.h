#pragma once

#include "platform/shortcuts/KeyStroke.h"

#include <span>
#include <string>

namespace glimmerly {

/// The shortcuts in `channels`, the contents of the channel's files (xfce4-keyboard-shortcuts.xml), the
/// system's before the user's: what stands in a later one holds. The default ones are disabled once the user
/// has a set of his own.
[[nodiscard]] std::vector<DesktopShortcut> xfceShortcuts(std::span<const std::string> channels);

} // namespace glimmerly
