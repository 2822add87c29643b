#pragma once

#include "platform/shortcuts/KeyStroke.h"

namespace glimmerly {

/// The key bindings in `rcXml`, an Openbox configuration; of a chain of keys its first. Empty when it is no
/// such file; what stands before an error counts.
[[nodiscard]] std::vector<DesktopShortcut> openboxShortcuts(std::string_view rcXml);

} // namespace glimmerly
