#include "overlay/toolbar/OverlayCanvasToolbarLayout.h"

#include <algorithm>

namespace glimmerly {
namespace {

/// `start` kept within `padding` of both ends of a span, the low end first when it does not fit.
double clampedStart(double start, double length, double spanMin, double spanMax, double padding) {
    const double low = spanMin + padding;
    const double high = std::max(low, spanMax - length - padding);
    return std::clamp(start, low, high);
}

} // namespace

std::optional<Point> OverlayCanvasToolbarLayout::layoutToolbar(Size size, const std::optional<Rect>& anchor,
                                                               const Rect& bounds) {
    if (!anchor)
        return std::nullopt;
    if (customOrigin_)
        return customOrigin_ = clampedToolbarOrigin(*customOrigin_, size, bounds);
    const Point belowRightAligned{anchor->maxX() - size.width, anchor->minY() - margin - size.height};
    return clampedToolbarOrigin(belowRightAligned, size, bounds);
}

Point OverlayCanvasToolbarLayout::moveToolbarBy(double dx, double dy, const Rect& frame, const Rect& bounds) {
    const Point proposed = frame.origin() + Point{dx, dy};
    customOrigin_ = clampedToolbarOrigin(proposed, frame.size(), bounds);
    return *customOrigin_;
}

Point OverlayCanvasToolbarLayout::clampedToolbarOrigin(Point origin, Size size, const Rect& bounds) {
    return {clampedStart(origin.x, size.width, bounds.minX(), bounds.maxX(), edgePadding),
            clampedStart(origin.y, size.height, bounds.minY(), bounds.maxY(), edgePadding)};
}

} // namespace glimmerly
