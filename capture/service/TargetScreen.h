#pragma once

#include "platform/Screens.h"

#include <optional>

namespace glimmerly {

/// The first screen whose frame contains the mouse pointer, else the main screen, else the first; none when
/// the desktop reports no screen at all. Evaluated afresh at each call.
[[nodiscard]] std::optional<Screen> targetScreen(const Screens& screens);

} // namespace glimmerly
