#pragma once

#include "base/Bitmap.h"
#include "base/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace glimmerly {

enum class ByteOrder { leastSignificantFirst, mostSignificantFirst };

/// How a window server writes pixels.
struct PixelLayout {
    int bitsPerPixel = 32; ///< 16, 24 or 32
    ByteOrder byteOrder = ByteOrder::leastSignificantFirst;
    std::uint32_t redMask = 0xff0000;
    std::uint32_t greenMask = 0xff00;
    std::uint32_t blueMask = 0xff;
    std::size_t rowAlignment = 4; ///< bytes

    bool operator==(const PixelLayout&) const = default;
};

/// Turns a server's pixels into opaque ones of ours. Colours of other than 8 bits are scaled, to the nearest.
class PixelFormat {
public:
    /// Fails for pixels of any other size and for masks that are empty or not in one piece.
    [[nodiscard]] static Result<PixelFormat> of(const PixelLayout& layout);

    /// From the start of one row of `width` pixels to that of the next.
    [[nodiscard]] std::size_t bytesPerRow(int width) const;
    /// Reads as many pixels as `out` takes.
    void convert(const std::byte* row, std::span<Bitmap::Pixel> out) const;

private:
    /// One colour within a pixel: where it is, and what each of its values is in 8 bits.
    struct Component {
        std::uint32_t mask = 0;
        int shift = 0;
        std::vector<std::uint8_t> scaled;
    };
    explicit PixelFormat(const PixelLayout& layout) : layout_(layout) {}

    [[nodiscard]] static Result<Component> component(std::uint32_t mask);
    [[nodiscard]] std::uint32_t read(const std::byte* pixel) const;

    PixelLayout layout_;
    std::array<Component, 3> components_; // red, green, blue
};

} // namespace glimmerly
