#pragma once

#include "overlay/model/Color.h"

#include <QRegion>

#include <utility>

class QPainter;

namespace glimmerly {

/// A picture that is being painted, or painted anew in part: the overlay's window or an exported crop.
class PixelSurface {
public:
    /// The painter's unit is a pixel. `exposed` is what has to be painted; the rest may be left as it is.
    PixelSurface(QPainter& painter, QRegion exposed) : painter_(painter), exposed_(std::move(exposed)) {}

    [[nodiscard]] QPainter& painter() const { return painter_; }
    [[nodiscard]] const QRegion& exposed() const { return exposed_; }
    [[nodiscard]] bool shows(const QRect& rect) const { return exposed_.intersects(rect); }

    void fill(const QRect& rect, const Color& color) const;

private:
    QPainter& painter_;
    QRegion exposed_;
};

} // namespace glimmerly
