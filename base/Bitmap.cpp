#include "base/Bitmap.h"

#include <algorithm>

namespace glimmerly {

Bitmap::Bitmap(PixelSize size) : size_(size), pixelsPerRow_(static_cast<std::size_t>(size.width)) {
    const std::size_t count = pixelsPerRow_ * static_cast<std::size_t>(size.height);
    auto storage = std::make_shared_for_overwrite<Pixel[]>(count);
    pixels_ = storage.get();
    owner_ = std::move(storage);
}

Bitmap::Bitmap(PixelSize size, std::size_t pixelsPerRow, Pixel* pixels, std::shared_ptr<void> owner)
    : size_(size), pixelsPerRow_(pixelsPerRow), pixels_(pixels), owner_(std::move(owner)) {}

std::span<const Bitmap::Pixel> Bitmap::row(int y) const {
    return {pixels_ + static_cast<std::size_t>(y) * pixelsPerRow_, static_cast<std::size_t>(size_.width)};
}

std::span<Bitmap::Pixel> Bitmap::row(int y) {
    return {pixels_ + static_cast<std::size_t>(y) * pixelsPerRow_, static_cast<std::size_t>(size_.width)};
}

Bitmap Bitmap::view(PixelRect area) const {
    Pixel* first = pixels_ + static_cast<std::size_t>(area.y) * pixelsPerRow_ + area.x;
    return {area.size(), pixelsPerRow_, first, owner_};
}

Bitmap Bitmap::leavingRowsFree(int above, int below) const {
    Bitmap middle = view({0, above, size_.width, size_.height - above - below});
    middle.freeRowsAbove_ = above;
    middle.freeRowsBelow_ = below;
    return middle;
}

Bitmap Bitmap::withFreeRows(int above, int below) const {
    if (above > freeRowsAbove_ || below > freeRowsBelow_)
        return {};
    const auto first = pixels_ - static_cast<std::size_t>(above) * pixelsPerRow_;
    return {{size_.width, size_.height + above + below}, pixelsPerRow_, first, owner_};
}

bool operator==(const Bitmap& a, const Bitmap& b) {
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        if (!std::ranges::equal(a.row(y), b.row(y)))
            return false;
    }
    return true;
}

} // namespace glimmerly
