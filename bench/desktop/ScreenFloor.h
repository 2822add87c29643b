#pragma once

#include "tests/support/desktop/XClient.h"

namespace glimmerly::bench {

/// What the X server itself needs to copy the whole screen into shared memory, and from there onto a window
/// that covers the screen. Nothing that freezes a screen can be faster.
struct ScreenFloor {
    double grab = 0;  ///< milliseconds
    double total = 0; ///< milliseconds, with putting it back
};

[[nodiscard]] ScreenFloor measureScreenFloor(const XClient& client);

} // namespace glimmerly::bench
