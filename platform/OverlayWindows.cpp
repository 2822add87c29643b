#include "platform/OverlayWindows.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

Overhang overhang(double heightPoints, double backingScale, int nativeHeight) {
    const int total = std::max(static_cast<int>(std::ceil(backingScale * heightPoints)) - nativeHeight, 0);
    return {.top = total / 2, .bottom = total - total / 2};
}

} // namespace glimmerly
