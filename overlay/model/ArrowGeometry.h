#pragma once

#include "base/Geometry.h"

#include <optional>

namespace glimmerly {

/// The far ends of the two strokes that leave an arrow's tip.
struct ArrowHead {
    Point left;
    Point right;
};

/// The head of an arrow from `start` to `end` with strokes `headLength` long; none for an arrow of no length.
[[nodiscard]] std::optional<ArrowHead> arrowHead(Point start, Point end, double headLength);

[[nodiscard]] double distance(Point a, Point b);

/// From `point` to the nearest point of the segment from `a` to `b`.
[[nodiscard]] double distanceToSegment(Point point, Point a, Point b);

} // namespace glimmerly
