#include "platform/png/PixelPacking.h"

#include "platform/png/Simd.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace glimmerly {

namespace {

using Pixel = Bitmap::Pixel;
using Octets [[gnu::vector_size(16)]] = std::uint8_t;

constexpr Pixel opaque = 0xff000000;
constexpr std::size_t pixelsPerStep = 4;
/// Whole vectors reach 4 bytes beyond the 12 that 4 packed pixels take; one step more must follow.
constexpr std::size_t pixelsPerStepAndNext = 2 * pixelsPerStep;

Octets loadOctets(const void* from) {
    Octets octets;
    std::memcpy(&octets, from, sizeof octets);
    return octets;
}

void packPixel(Pixel pixel, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>(pixel >> 16);
    out[1] = static_cast<std::uint8_t>(pixel >> 8);
    out[2] = static_cast<std::uint8_t>(pixel);
}

Pixel straight(Pixel component, Pixel alpha) {
    return std::min<Pixel>(255, (component * 255 + alpha / 2) / alpha);
}

Pixel premultiplied(Pixel component, Pixel alpha) {
    return (component * alpha + 127) / 255;
}

} // namespace

static_assert(std::endian::native == std::endian::little, "the shuffles below take the bytes blue first");

GLIMMERLY_SIMD void packRgb(std::span<const Pixel> pixels, std::uint8_t* out) {
    const std::size_t count = pixels.size();
    std::size_t i = 0;
    for (; i + pixelsPerStepAndNext <= count; i += pixelsPerStep) {
        const Octets bgrx = loadOctets(&pixels[i]);
        const Octets rgb =
            __builtin_shufflevector(bgrx, bgrx, 2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 0, 0, 0, 0);
        std::memcpy(out + 3 * i, &rgb, sizeof rgb);
    }
    for (; i < count; ++i)
        packPixel(pixels[i], out + 3 * i);
}

void packRgba(std::span<const Pixel> pixels, std::uint8_t* out) {
    for (const Pixel pixel : pixels) {
        const Pixel alpha = pixel >> 24;
        const Pixel divisor = std::max<Pixel>(alpha, 1);
        packPixel(straight(pixel >> 16 & 255, divisor) << 16 | straight(pixel >> 8 & 255, divisor) << 8 |
                      straight(pixel & 255, divisor),
                  out);
        out[3] = static_cast<std::uint8_t>(alpha);
        out += 4;
    }
}

GLIMMERLY_SIMD void unpackRgb(const std::uint8_t* rgb, std::span<Pixel> pixels) {
    const std::size_t count = pixels.size();
    constexpr Octets full{255};
    std::size_t i = 0;
    for (; i + pixelsPerStepAndNext <= count; i += pixelsPerStep) {
        const Octets packed = loadOctets(rgb + 3 * i);
        const Octets bgra =
            __builtin_shufflevector(packed, full, 2, 1, 0, 16, 5, 4, 3, 16, 8, 7, 6, 16, 11, 10, 9, 16);
        std::memcpy(&pixels[i], &bgra, sizeof bgra);
    }
    for (; i < count; ++i) {
        const std::uint8_t* at = rgb + 3 * i;
        pixels[i] = opaque | Pixel{at[0]} << 16 | Pixel{at[1]} << 8 | at[2];
    }
}

GLIMMERLY_SIMD void premultiplyRgba(std::span<Pixel> pixels) {
    for (Pixel& pixel : pixels) {
        const Pixel alpha = pixel >> 24;
        pixel = alpha << 24 | premultiplied(pixel & 255, alpha) << 16 |
                premultiplied(pixel >> 8 & 255, alpha) << 8 | premultiplied(pixel >> 16 & 255, alpha);
    }
}

GLIMMERLY_SIMD bool isOpaque(std::span<const Pixel> pixels) {
    Pixel common = opaque;
    for (const Pixel pixel : pixels)
        common &= pixel;
    return common == opaque;
}

} // namespace glimmerly
