#pragma once

#include "base/Bitmap.h"

namespace glimmerly {

/// New pixels, not initialised, for a picture as large as a display: as `Bitmap(size)`, but quick to touch.
/// `size` must be at least 1 × 1. Throws std::bad_alloc when there is no memory.
[[nodiscard]] Bitmap makeDisplayBitmap(PixelSize size);

} // namespace glimmerly
