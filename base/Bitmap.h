#pragma once

#include "base/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace glimmerly {

/// Pixels in memory, 32 bits each: 0xAARRGGBB in the host's byte order, alpha premultiplied, sRGB, the first
/// row at the top. Copies and views share the pixels; an opaque picture has alpha 255 throughout.
class Bitmap {
public:
    using Pixel = std::uint32_t;

    Bitmap() = default;
    /// New pixels, not initialised. `size` must be at least 1 × 1.
    explicit Bitmap(PixelSize size);
    /// Pixels that `owner` keeps alive; `pixelsPerRow` is the distance between rows in pixels.
    Bitmap(PixelSize size, std::size_t pixelsPerRow, Pixel* pixels, std::shared_ptr<void> owner);

    [[nodiscard]] bool isNull() const { return pixels_ == nullptr; }
    [[nodiscard]] PixelSize size() const { return size_; }
    [[nodiscard]] int width() const { return size_.width; }
    [[nodiscard]] int height() const { return size_.height; }
    [[nodiscard]] std::size_t bytesPerRow() const { return pixelsPerRow_ * sizeof(Pixel); }

    [[nodiscard]] std::span<const Pixel> row(int y) const;
    [[nodiscard]] std::span<Pixel> row(int y);

    /// The part `area`, which must lie within the bitmap, over the same pixels.
    [[nodiscard]] Bitmap view(PixelRect area) const;

    /// A bitmap that is the middle of these pixels, with so many rows of them free above and below it.
    [[nodiscard]] Bitmap leavingRowsFree(int above, int below) const;
    /// This bitmap and so many of the free rows above and below it; null when there are not as many.
    [[nodiscard]] Bitmap withFreeRows(int above, int below) const;

private:
    PixelSize size_;
    std::size_t pixelsPerRow_ = 0;
    Pixel* pixels_ = nullptr;
    std::shared_ptr<void> owner_;
    int freeRowsAbove_ = 0;
    int freeRowsBelow_ = 0;
};

/// True when both have the same size and the same pixels.
[[nodiscard]] bool operator==(const Bitmap& a, const Bitmap& b);

} // namespace glimmerly
