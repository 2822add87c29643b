#include "overlay/CanvasCoordinates.h"

#include <QPointerEvent>
#include <QSinglePointEvent>

#include <cmath>

namespace glimmerly {

namespace {

/// The least number of logical pixels that is a whole number of pixels; none below 64 for odd scales.
std::optional<int> logicalStep(double scale) {
    constexpr int largestStep = 64;
    for (int step = 1; step <= largestStep; ++step) {
        const double pixels = step * scale;
        if (std::abs(pixels - std::round(pixels)) < pixelTolerance * step)
            return step;
    }
    return std::nullopt;
}

QRect coveringRect(const QRect& pixels, double scale, int step) {
    const auto down = [&](int edge) { return static_cast<int>(std::floor(edge / scale / step)) * step; };
    const auto up = [&](int edge) { return static_cast<int>(std::ceil(edge / scale / step)) * step; };
    const QPoint topLeft(down(pixels.left()), down(pixels.top()));
    const QPoint bottomRight(up(pixels.right() + 1), up(pixels.bottom() + 1));
    return {topLeft, bottomRight - QPoint(1, 1)};
}

} // namespace

Point canvasPoint(const QSinglePointEvent& event, const CanvasPixelGrid& grid) {
    return grid.pointerPoint(nativePixel(event.scenePosition(), grid.scale()));
}

PixelPoint nativePixel(QPointF position, double scale) {
    return {static_cast<int>(std::lround(position.x() * scale)),
            static_cast<int>(std::lround(position.y() * scale))};
}

QRegion widgetRegion(const QRegion& pixels, double scale) {
    // Qt 6.4 scales each rectangle of a region by rounding its position and its size separately, so that two
    // that touch may end up a pixel apart. On coordinates that are whole pixels nothing is rounded; failing
    // that, one rectangle has no neighbour to part from.
    const auto step = logicalStep(scale);
    if (!step)
        return coveringRect(pixels.boundingRect(), scale, 1);
    QRegion region;
    for (const QRect& rect : pixels)
        region += coveringRect(rect, scale, *step);
    return region;
}

} // namespace glimmerly
