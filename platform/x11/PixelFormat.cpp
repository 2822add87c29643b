#include "platform/x11/PixelFormat.h"

#include <bit>
#include <cerrno>
#include <cstring>

namespace glimmerly {

namespace {

constexpr Bitmap::Pixel opaque = 0xff000000;

Error unusable(const char* what) {
    return Error::posix(ENOTSUP, what);
}

} // namespace

static_assert(std::endian::native == std::endian::little, "pixels are read in this order below");

Result<PixelFormat::Component> PixelFormat::component(std::uint32_t mask) {
    constexpr int mostBits = 16;
    const int shift = std::countr_zero(mask);
    const int bits = std::popcount(mask);
    if (mask == 0 || bits > mostBits || bits + shift + std::countl_zero(mask) != 32)
        return failure(unusable("The window server's colour masks"));
    const std::uint32_t highest = (1U << bits) - 1;
    std::vector<std::uint8_t> scaled(highest + 1);
    for (std::uint32_t value = 0; value <= highest; ++value)
        scaled[value] = static_cast<std::uint8_t>((value * 255 + highest / 2) / highest);
    return Component{mask, shift, std::move(scaled)};
}

Result<PixelFormat> PixelFormat::of(const PixelLayout& layout) {
    if (layout.bitsPerPixel != 16 && layout.bitsPerPixel != 24 && layout.bitsPerPixel != 32)
        return failure(unusable("The window server's size of a pixel"));
    PixelFormat format(layout);
    const std::array masks{layout.redMask, layout.greenMask, layout.blueMask};
    for (std::size_t i = 0; i < masks.size(); ++i) {
        auto made = component(masks[i]);
        if (!made)
            return failure(made.error());
        format.components_[i] = std::move(*made);
    }
    return format;
}

std::size_t PixelFormat::bytesPerRow(int width) const {
    const auto bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(layout_.bitsPerPixel / 8);
    return (bytes + layout_.rowAlignment - 1) / layout_.rowAlignment * layout_.rowAlignment;
}

std::uint32_t PixelFormat::read(const std::byte* pixel) const {
    const auto size = static_cast<std::size_t>(layout_.bitsPerPixel / 8);
    std::uint32_t value = 0;
    if (layout_.byteOrder == ByteOrder::leastSignificantFirst) {
        std::memcpy(&value, pixel, size);
        return value;
    }
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8 | std::to_integer<std::uint32_t>(pixel[i]);
    return value;
}

void PixelFormat::convert(const std::byte* row, std::span<Bitmap::Pixel> out) const {
    if (layout_ == PixelLayout{.rowAlignment = layout_.rowAlignment}) { // as nearly every server has it
        std::memcpy(out.data(), row, out.size_bytes());
        for (Bitmap::Pixel& pixel : out)
            pixel |= opaque; // the byte above the colours is whatever was drawn
        return;
    }
    const auto size = static_cast<std::size_t>(layout_.bitsPerPixel / 8);
    for (Bitmap::Pixel& pixel : out) {
        const std::uint32_t value = read(row);
        row += size;
        pixel = opaque;
        int shift = 16;
        for (const Component& part : components_) {
            // NOLINTNEXTLINE(clang-analyzer-core.BitwiseShift): there are three of them
            pixel |= Bitmap::Pixel{part.scaled[(value & part.mask) >> part.shift]} << shift;
            shift -= 8;
        }
    }
}

} // namespace glimmerly
