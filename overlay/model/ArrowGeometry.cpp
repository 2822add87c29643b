#include "overlay/model/ArrowGeometry.h"

#include "overlay/model/AnnotationStyle.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

std::optional<ArrowHead> arrowHead(Point start, Point end, double headLength) {
    if (start == end)
        return std::nullopt;
    const double direction = std::atan2(end.y - start.y, end.x - start.x);
    const auto strokeEnd = [&](double angle) {
        return end - Point{headLength * std::cos(angle), headLength * std::sin(angle)};
    };
    return ArrowHead{strokeEnd(direction - annotationStyle.arrowheadHalfAngle),
                     strokeEnd(direction + annotationStyle.arrowheadHalfAngle)};
}

double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double distanceToSegment(Point point, Point a, Point b) {
    const Point along = b - a;
    const double lengthSquared = along.x * along.x + along.y * along.y;
    if (lengthSquared == 0)
        return distance(point, a);
    const Point offset = point - a;
    const double t = std::clamp((offset.x * along.x + offset.y * along.y) / lengthSquared, 0.0, 1.0);
    return distance(point, {a.x + t * along.x, a.y + t * along.y});
}

} // namespace glimmerly
