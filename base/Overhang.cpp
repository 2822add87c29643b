#include "base/Overhang.h"

#include "base/Geometry.h"

#include <cmath>

namespace glimmerly {

Overhang overhang(double heightPoints, double backingScale, int nativeHeight) {
    constexpr double mostRows = 1 << 24;
    const double missing = std::ceil(heightPoints * backingScale - pixelTolerance) - nativeHeight;
    if (!(missing > 0 && missing < mostRows))
        return {};
    const int total = static_cast<int>(missing);
    return {.top = total / 2, .bottom = total - total / 2};
}

} // namespace glimmerly
