#include "overlay/drawing/AnnotationDrawing.h"

#include "overlay/drawing/AnnotationTiles.h"
#include "overlay/drawing/QtColor.h"
#include "overlay/model/AnnotationStyle.h"
#include "overlay/model/ArrowGeometry.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

/// A line of an odd number of pixels is centred on pixels and not between them, or both its edges blur.
QRectF crisp(const QRectF& rect, double width) {
    const bool isOdd = std::abs(std::remainder(width - 1, 2)) < 0.01;
    if (!isOdd)
        return rect;
    const auto centred = [](double edge) { return std::floor(edge) + 0.5; };
    return {QPointF(centred(rect.left()), centred(rect.top())),
            QPointF(centred(rect.right()), centred(rect.bottom()))};
}

bool isWhole(double pixels) {
    constexpr double tolerance = 1e-3; // far less than what an eighth of a shade needs
    return std::abs(pixels - std::round(pixels)) < tolerance;
}

void stroke(const PixelSurface& surface, const RectangleShape& rectangle, const PixelMapping& mapping,
            const Color& color) {
    const double width = annotationLineWidth(mapping);
    const QRectF line = crisp(mapping(rectangle.rect).normalized(), width);
    const QRectF outer = line.adjusted(-width / 2, -width / 2, width / 2, width / 2);
    const bool isOnPixels = isWhole(width) && isWhole(outer.left()) && isWhole(outer.top()) &&
                            isWhole(outer.right()) && isWhole(outer.bottom());
    if (!isOnPixels) {
        surface.painter().drawRect(line);
        return;
    }
    const QRect outside = outer.toRect(); // the same pixels, many times faster
    const int thickness = static_cast<int>(std::lround(width));
    for (const QRect& side :
         QRegion(outside) - outside.adjusted(thickness, thickness, -thickness, -thickness))
        surface.fill(side, color);
}

void stroke(const PixelSurface& surface, const ArrowShape& arrow, const PixelMapping& mapping, const Color&) {
    const QPainterPath head = arrowHeadStrokes(arrow, mapping);
    if (head.isEmpty())
        return;
    surface.painter().drawLine(mapping(arrow.start), mapping(arrow.end));
    surface.painter().drawPath(head);
}

void stroke(const PixelSurface&, const TextLabel&, const PixelMapping&, const Color&) {} // drawn by its view

bool isShown(const PixelSurface& surface, const OverlayAnnotation& annotation, const PixelMapping& mapping) {
    return std::ranges::any_of(shapeTiles(annotation, mapping),
                               [&](const QRect& tile) { return surface.shows(tile); });
}

} // namespace

double annotationLineWidth(const PixelMapping& mapping) {
    constexpr double leastWidth = 1;
    return std::max(annotationStyle.lineWidth * mapping.scale, leastWidth);
}

double annotationHeadLength(const PixelMapping& mapping) {
    constexpr double leastLength = 6;
    return std::max(annotationStyle.arrowheadLength * mapping.scale, leastLength);
}

QPainterPath arrowHeadStrokes(const ArrowShape& arrow, const PixelMapping& mapping) {
    const QPointF start = mapping(arrow.start);
    const QPointF end = mapping(arrow.end);
    const auto head = arrowHead({start.x(), start.y()}, {end.x(), end.y()}, annotationHeadLength(mapping));
    if (!head)
        return {};
    QPainterPath strokes({head->left.x, head->left.y});
    strokes.lineTo(end);
    strokes.lineTo(head->right.x, head->right.y);
    return strokes;
}

void drawShape(const PixelSurface& surface, const OverlayAnnotation& annotation, const PixelMapping& mapping,
               double opacity) {
    if (!isShown(surface, annotation, mapping))
        return;
    const bool isArrow = std::holds_alternative<ArrowShape>(annotation.kind);
    const Color color = annotation.color.withAlpha(opacity);
    QPainter& painter = surface.painter();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQColor(color), annotationLineWidth(mapping), Qt::SolidLine, Qt::RoundCap,
                        isArrow ? Qt::RoundJoin : Qt::MiterJoin));
    std::visit([&](const auto& shape) { stroke(surface, shape, mapping, color); }, annotation.kind);
}

void drawAnnotations(const PixelSurface& surface, const AnnotationScene& scene, const PixelMapping& mapping,
                     const QRect& clip) {
    const PixelSurface inside(surface.painter(), surface.exposed().intersected(clip));
    surface.painter().save();
    surface.painter().setClipRect(clip, Qt::IntersectClip);
    for (const auto& annotation : scene.annotations)
        drawShape(inside, annotation, mapping, annotationStyle.committedOpacity);
    if (scene.draft)
        drawShape(inside, *scene.draft, mapping, annotationStyle.draftOpacity);
    surface.painter().restore();
}

} // namespace glimmerly
