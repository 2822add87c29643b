#pragma once

#include "base/Geometry.h"

#include <optional>

namespace glimmerly {

/// Where the toolbar stands on its canvas: below the selection until the user drags it away, and from then
/// on where the user left it. Everything in the canvas's points; an origin is a bottom-left corner.
class OverlayCanvasToolbarLayout {
public:
    static constexpr double margin = 10;     ///< between the selection's bottom and the toolbar's top
    static constexpr double edgePadding = 8; ///< least distance to every edge of the canvas

    /// The origin of a toolbar of `size` for the selection `anchor`; none: there is nothing to stand at, the
    /// toolbar is to be hidden.
    [[nodiscard]] std::optional<Point> layoutToolbar(Size size, const std::optional<Rect>& anchor,
                                                     const Rect& bounds);

    /// The origin after the user dragged the toolbar from `frame` by a delta. It is kept for every later
    /// layout.
    [[nodiscard]] Point moveToolbarBy(double dx, double dy, const Rect& frame, const Rect& bounds);

    /// The origin nearest to `origin` at which the toolbar keeps its distance to the edges of `bounds`; where
    /// the canvas is too small for that it overhangs the right or top edge.
    [[nodiscard]] static Point clampedToolbarOrigin(Point origin, Size size, const Rect& bounds);

    [[nodiscard]] bool hasMovedBefore() const { return customOrigin_.has_value(); }

private:
    std::optional<Point> customOrigin_;
};

} // namespace glimmerly
