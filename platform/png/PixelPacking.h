#pragma once

#include "base/Bitmap.h"

#include <cstdint>
#include <span>

namespace glimmerly {

/// Red, green and blue of each pixel, 3 bytes each; alpha is not looked at. `out` holds 3 × the pixels.
void packRgb(std::span<const Bitmap::Pixel> pixels, std::uint8_t* out);

/// Red, green, blue and alpha of each pixel, 4 bytes each, no longer premultiplied.
void packRgba(std::span<const Bitmap::Pixel> pixels, std::uint8_t* out);

/// The inverse of `packRgb`; alpha becomes 255.
void unpackRgb(const std::uint8_t* rgb, std::span<Bitmap::Pixel> pixels);

/// Turns pixels that hold the bytes red, green, blue, alpha in this order into premultiplied ones, in place.
void premultiplyRgba(std::span<Bitmap::Pixel> pixels);

/// Whether every alpha is 255.
[[nodiscard]] bool isOpaque(std::span<const Bitmap::Pixel> pixels);

} // namespace glimmerly
