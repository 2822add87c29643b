#include "overlay/drawing/CanvasCoordinates.h"

#include <QSinglePointEvent>

#include <cmath>

namespace glimmerly {

namespace {

QRect coveringRect(const QRect& pixels, double scale) {
    const auto down = [scale](int edge) { return static_cast<int>(std::floor(edge / scale)); };
    const auto up = [scale](int edge) { return static_cast<int>(std::ceil(edge / scale)); };
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
    QRegion region;
    for (const QRect& rect : pixels)
        region += coveringRect(rect, scale);
    return region;
}

} // namespace glimmerly
