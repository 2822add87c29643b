#pragma once

#include "overlay/drawing/PixelSurface.h"
#include "overlay/model/OverlayAnnotation.h"

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <algorithm>
#include <optional>
#include <vector>

namespace glimmerly {

/// How canvas points lie on the pixels of a picture, y down: on the overlay's window or on the exported crop.
struct PixelMapping {
    Point topLeft;    ///< the canvas point at the picture's top-left corner
    double scale = 1; ///< pixels per point

    [[nodiscard]] QPointF operator()(Point p) const {
        return {(p.x - topLeft.x) * scale, (topLeft.y - p.y) * scale};
    }
    [[nodiscard]] QRectF operator()(const Rect& rect) const {
        return {(*this)(Point{rect.minX(), rect.maxY()}), (*this)(Point{rect.maxX(), rect.minY()})};
    }
};

/// The shapes that the canvas draws itself; texts are drawn by their views.
struct AnnotationScene {
    std::vector<OverlayAnnotation> annotations; ///< in stacking order
    std::optional<OverlayAnnotation> draft;     ///< what the drag under way would become
    std::optional<Uuid> selectedID;

    bool operator==(const AnnotationScene&) const = default;
};

/// nullptr without a selected annotation, and while it is not in the list.
[[nodiscard]] inline const OverlayAnnotation* selectedAnnotation(const AnnotationScene& scene) {
    const auto found = std::ranges::find_if(
        scene.annotations, [&](const OverlayAnnotation& each) { return scene.selectedID == each.id; });
    return found == scene.annotations.end() ? nullptr : &*found;
}

/// The width of annotations' lines in pixels.
[[nodiscard]] double annotationLineWidth(const PixelMapping& mapping);
/// The length of an arrowhead's strokes in pixels.
[[nodiscard]] double annotationHeadLength(const PixelMapping& mapping);

/// The two strokes of an arrow's head in pixels, one path; empty for an arrow of no length.
[[nodiscard]] QPainterPath arrowHeadStrokes(const ArrowShape& arrow, const PixelMapping& mapping);

/// Draws a rectangle or an arrow; texts are left out. `opacity` takes
/// the place of the colour's own. The screen and the exported picture are both drawn by this.
void drawShape(const PixelSurface& surface, const OverlayAnnotation& annotation, const PixelMapping& mapping,
               double opacity);

/// Draws all shapes and the draft inside `clip`, in pixels.
void drawAnnotations(const PixelSurface& surface, const AnnotationScene& scene, const PixelMapping& mapping,
                     const QRect& clip);

} // namespace glimmerly
