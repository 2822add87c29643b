#pragma once

#include <numbers>

namespace glimmerly {

/// How annotations look, in points and radians; the screen and the exported picture share it.
struct AnnotationStyle {
    double lineWidth = 3;
    double arrowheadLength = 14; ///< of each of the two head strokes
    double arrowheadHalfAngle = std::numbers::pi / 7;
    double handleRadius = 5;
    double committedOpacity = 1.0;
    double draftOpacity = 0.9;
};
inline constexpr AnnotationStyle annotationStyle;

/// How near, in points, the pointer must come to an annotation to take hold of it.
struct HitTestStyle {
    double lineWidth = 3;
    double tolerance = 7;
    double handleHitRadius = 8;
    double arrowheadLength = 14;

    [[nodiscard]] constexpr double hitTolerance() const { return lineWidth / 2 + tolerance; }
};
inline constexpr HitTestStyle hitTestStyle;

} // namespace glimmerly
