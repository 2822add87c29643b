#pragma once

#include "base/Bitmap.h"

namespace glimmerly {

/// For what stands beyond a display's edges on the overlay: 2 points in all, at any scale that there is.
inline constexpr int displayBitmapFreeRows = 16;

/// New pixels, not initialised, for a picture as large as a display: as `Bitmap(size)`, but quick to touch,
/// with `displayBitmapFreeRows` above and below it. `size` must be at least 1 × 1. Throws std::bad_alloc when
/// there is no memory.
[[nodiscard]] Bitmap makeDisplayBitmap(PixelSize size);

} // namespace glimmerly
