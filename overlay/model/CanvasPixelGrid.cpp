#include "overlay/model/CanvasPixelGrid.h"

#include "base/Overhang.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

/// Where an extent of `inner` pixels starts when centred in `outer`; half a pixel is rounded down.
int centredStart(int outer, int inner) {
    return static_cast<int>(std::floor((outer - inner) / 2.0));
}

/// `position` along a display's pixels from `first`, as an edge between pixels.
int pointedEdge(int position, int first, int length) {
    const int last = first + length - 1;
    return position >= last ? last + 1 : std::max(position, first);
}

} // namespace

Rect centredRect(Size pointSize, const Rect& bounds) {
    return {bounds.midX() - pointSize.width / 2, bounds.midY() - pointSize.height / 2, pointSize.width,
            pointSize.height};
}

CanvasPixelGrid::CanvasPixelGrid(const Rect& bounds, double scale, PixelSize display,
                                 std::optional<PixelSize> picture)
    : scale_(scale > 0 ? scale : 1) {
    const Overhang beyond = overhang(bounds.height, scale_, display.height);
    window_ = {display.width, display.height + beyond.total()};
    display_ = {0, beyond.top, display.width, display.height};
    const PixelSize shown = picture.value_or(window_);
    picture_ = {centredStart(window_.width, shown.width), centredStart(window_.height, shown.height),
                shown.width, shown.height};
    const Rect area = centredRect({shown.width / scale_, shown.height / scale_}, bounds);
    topLeft_ = {area.minX() - picture_.x / scale_, area.maxY() + picture_.y / scale_};
}

Point CanvasPixelGrid::point(PixelPoint pixel) const {
    return {topLeft_.x + pixel.x / scale_, topLeft_.y - pixel.y / scale_};
}

Point CanvasPixelGrid::pointerPoint(PixelPoint pixel) const {
    return point({pointedEdge(pixel.x, display_.x, display_.width),
                  pointedEdge(pixel.y, display_.y, display_.height)});
}

PixelRect CanvasPixelGrid::pixels(const Rect& rect) const {
    const auto pixel = [this](double length) { return static_cast<int>(std::lround(length * scale_)); };
    const int left = pixel(rect.minX() - topLeft_.x);
    const int right = pixel(rect.maxX() - topLeft_.x);
    const int top = pixel(topLeft_.y - rect.maxY());
    const int bottom = pixel(topLeft_.y - rect.minY());
    return {left, top, right - left, bottom - top};
}

int CanvasPixelGrid::pixels(double length) const {
    return std::max(1, static_cast<int>(std::lround(length * scale_)));
}

} // namespace glimmerly
