#pragma once

#include "base/Geometry.h"
#include "overlay/model/SelectionHandle.h"

namespace glimmerly {

/// Two positions nearer than this, in points, are one: at fractional scales a pixel's position is no exact
/// binary fraction, and the difference of two such positions may come out a hair too small.
inline constexpr double positionTolerance = 1e-6;

/// Whether the standardised `rect` is narrower or lower than `minimum` points.
[[nodiscard]] bool isSmallerThan(const Rect& rect, double minimum);

/// `start` with the edges that belong to `handle` moved to `point`: standardised, so that dragging past the
/// opposite edge flips it, and kept within `bounds` unless it comes out smaller than `minimumSize`.
[[nodiscard]] Rect resizedRect(const Rect& start, SelectionHandle handle, Point point, const Rect& bounds,
                               double minimumSize);

/// `rect` cut to `bounds` and then widened again to `minimumSize`, away from a bound it touches. A rectangle
/// already smaller than that comes back unchanged.
[[nodiscard]] Rect clampRectToBounds(const Rect& rect, const Rect& bounds, double minimumSize);

} // namespace glimmerly
