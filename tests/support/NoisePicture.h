#pragma once

#include "base/Bitmap.h"

namespace glimmerly {

/// An opaque picture in which every pixel differs from those around it; `seed` tells one from another.
[[nodiscard]] inline Bitmap noisePicture(PixelSize size, std::uint32_t seed = 1) {
    Bitmap picture(size);
    std::uint32_t state = seed * 2654435761U + 1;
    for (int y = 0; y < size.height; ++y) {
        for (auto& pixel : picture.row(y)) {
            state = state * 1664525U + 1013904223U;
            pixel = 0xFF000000U | (state >> 8U);
        }
    }
    return picture;
}

} // namespace glimmerly
