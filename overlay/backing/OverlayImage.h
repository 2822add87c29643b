#pragma once

#include "base/Bitmap.h"

#include <optional>

namespace glimmerly {

/// A picture as the canvas shows it: its pixels, and its size in points.
struct OverlayImage {
    Bitmap bitmap;
    Size size;
};

/// None for a picture without pixels.
[[nodiscard]] inline std::optional<PixelSize> imagePixelSize(const OverlayImage& image) {
    if (image.bitmap.isNull() || image.bitmap.width() < 1 || image.bitmap.height() < 1)
        return std::nullopt;
    return image.bitmap.size();
}

} // namespace glimmerly
