#include "overlay/AnnotationDrawing.h"

#include "overlay/AnnotationTiles.h"
#include "overlay/QtColor.h"
#include "overlay/model/AnnotationStyle.h"
#include "overlay/model/ArrowGeometry.h"

#include <QPainter>
#include <QPainterPath>

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

void stroke(QPainter& painter, const RectangleShape& rectangle, const PixelMapping& mapping) {
    painter.drawRect(crisp(mapping(rectangle.rect), annotationLineWidth(mapping)));
}

void stroke(QPainter& painter, const ArrowShape& arrow, const PixelMapping& mapping) {
    const QPointF start = mapping(arrow.start);
    const QPointF end = mapping(arrow.end);
    const auto head = arrowHead({start.x(), start.y()}, {end.x(), end.y()}, annotationHeadLength(mapping));
    if (!head)
        return;
    painter.drawLine(start, end);
    QPainterPath strokes({head->left.x, head->left.y});
    strokes.lineTo(end);
    strokes.lineTo(head->right.x, head->right.y);
    painter.drawPath(strokes);
}

void stroke(QPainter&, const TextLabel&, const PixelMapping&) {} // drawn by its view

bool isTouched(const OverlayAnnotation& annotation, const PixelMapping& mapping, const QRect& area) {
    return std::ranges::any_of(shapeTiles(annotation, mapping),
                               [&](const QRect& tile) { return tile.intersects(area); });
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

void drawShape(QPainter& painter, const OverlayAnnotation& annotation, const PixelMapping& mapping,
               double opacity) {
    const bool isArrow = std::holds_alternative<ArrowShape>(annotation.kind);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQColor(annotation.color.withAlpha(opacity)), annotationLineWidth(mapping),
                        Qt::SolidLine, Qt::RoundCap, isArrow ? Qt::RoundJoin : Qt::MiterJoin));
    std::visit([&](const auto& shape) { stroke(painter, shape, mapping); }, annotation.kind);
}

void drawAnnotations(QPainter& painter, const AnnotationScene& scene, const PixelMapping& mapping,
                     const QRect& clip, const QRegion& exposed) {
    painter.save();
    painter.setClipRect(clip, Qt::IntersectClip);
    const QRect area = exposed.boundingRect().intersected(clip);
    for (const auto& annotation : scene.annotations) {
        if (isTouched(annotation, mapping, area))
            drawShape(painter, annotation, mapping, annotationStyle.committedOpacity);
    }
    if (scene.draft)
        drawShape(painter, *scene.draft, mapping, annotationStyle.draftOpacity);
    painter.restore();
}

} // namespace glimmerly
