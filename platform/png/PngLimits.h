#pragma once

#include "base/Geometry.h"

namespace glimmerly {

inline constexpr int maximumPngSide = 65535;
inline constexpr std::int64_t maximumPngPixels = std::int64_t{1} << 28;

/// Whether this program writes and reads PNG files of that many pixels.
[[nodiscard]] constexpr bool isWithinPngLimits(PixelSize size) {
    return size.width >= 1 && size.height >= 1 && size.width <= maximumPngSide &&
           size.height <= maximumPngSide && std::int64_t{size.width} * size.height <= maximumPngPixels;
}

} // namespace glimmerly
