#include "platform/OverlayWindows.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

Overhang overhang(double heightPoints, double backingScale, int nativeHeight) {
    constexpr double tolerance = 1e-6; // pixels: the last digit of a fractional scale must not add a row
    const double height = std::ceil(backingScale * heightPoints - tolerance);
    const int total = std::max(static_cast<int>(height) - nativeHeight, 0);
    return {.top = total / 2, .bottom = total - total / 2};
}

} // namespace glimmerly
