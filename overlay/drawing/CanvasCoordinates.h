#pragma once

#include "overlay/model/CanvasPixelGrid.h"

#include <QPointF>
#include <QRect>
#include <QRegion>

class QSinglePointEvent;

namespace glimmerly {

// The only passage between the widgets' coordinates (Qt's logical pixels, y down), the overlay window's own
// pixels (y down) and the canvas's points (y up).

/// The canvas point that a mouse event in the overlay window points to.
[[nodiscard]] Point canvasPoint(const QSinglePointEvent& event, const CanvasPixelGrid& grid);

/// The pixel at `position` in a window of `scale` pixels a logical one. A position comes from dividing a
/// whole pixel by the scale, which this undoes exactly.
[[nodiscard]] PixelPoint nativePixel(QPointF position, double scale);

[[nodiscard]] inline QRect toQRect(const PixelRect& pixels) {
    return {pixels.x, pixels.y, pixels.width, pixels.height};
}

/// What a widget must repaint so that every one of `pixels` is. The widget stands at the top-left of its
/// window, which has `scale` pixels a logical one.
[[nodiscard]] QRegion widgetRegion(const QRegion& pixels, double scale);

} // namespace glimmerly
