#pragma once

#include <QPainter>
#include <QRectF>

namespace glimmerly {

/// Switches a painter from points to the pixels it paints on, until destroyed: at a fractional scale a
/// widget's own edges lie between pixels, and lines have to be put on whole ones to be crisp.
class DevicePixels {
public:
    explicit DevicePixels(QPainter& painter);
    ~DevicePixels();
    DevicePixels(const DevicePixels&) = delete;
    DevicePixels& operator=(const DevicePixels&) = delete;

    /// Pixels per point.
    [[nodiscard]] double scale() const { return scale_; }
    [[nodiscard]] QRectF pixels(const QRectF& points) const { return toPixels_.mapRect(points); }
    /// The same with its edges on whole pixels, for a widget's rectangle the very ones that it is clipped to.
    [[nodiscard]] QRectF alignedPixels(const QRectF& points) const;
    /// A line's width in whole pixels, at least one.
    [[nodiscard]] double lineWidth(double points) const;

private:
    QPainter& painter_;
    QTransform toPixels_;
    double scale_;
};

} // namespace glimmerly
