#pragma once

#include "base/Observers.h"

namespace glimmerly {

class Appearance;

/// Gives every window of the program the colours of the desktop's scheme, now and after each change for
/// as long as the observation lives. Call it once, before the first window.
[[nodiscard]] Observation followAppearance(Appearance& appearance);

} // namespace glimmerly
