#include "ui/DevicePixels.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

DevicePixels::DevicePixels(QPainter& painter)
    : painter_(painter), toPixels_(painter.deviceTransform()), scale_(toPixels_.m11()) {
    painter_.save();
    painter_.setTransform(toPixels_.inverted(), true);
}

DevicePixels::~DevicePixels() {
    painter_.restore();
}

QRectF DevicePixels::alignedPixels(const QRectF& points) const {
    return pixels(points).toRect(); // as Qt rounds the edges of a widget
}

double DevicePixels::lineWidth(double points) const {
    return std::max(1.0, std::floor(points * scale_));
}

} // namespace glimmerly
