#pragma once

#include "base/Bitmap.h"

#include <algorithm>
#include <random>

namespace glimmerly {

enum class Alpha { opaque, any, undefined };

/// A picture that compresses somewhat: random stretches of one colour, gradients and noise. `undefined` has
/// random alpha bytes over opaque colours, as a server of depth 24 may leave them.
inline Bitmap testPicture(PixelSize size, Alpha alpha, unsigned seed = 7) {
    std::mt19937 random(seed);
    const auto component = [&](Bitmap::Pixel limit) {
        return static_cast<Bitmap::Pixel>(random()) % (limit + 1);
    };
    Bitmap bitmap(size);
    for (int y = 0; y < size.height; ++y) {
        const auto row = bitmap.row(y);
        for (std::size_t x = 0; x < row.size();) {
            const Bitmap::Pixel a = alpha == Alpha::any ? component(255) : 255;
            const Bitmap::Pixel colour = component(a) << 16 | component(a) << 8 | component(a);
            const std::size_t end = std::min(row.size(), x + 1 + random() % 30);
            for (; x < end; ++x)
                row[x] = (alpha == Alpha::undefined ? component(255) : a) << 24 | colour;
        }
    }
    return bitmap;
}

} // namespace glimmerly
