#include "overlay/model/AnnotationHitTest.h"

#include "base/Overloaded.h"
#include "overlay/model/AnnotationStyle.h"
#include "overlay/model/ArrowGeometry.h"

#include <ranges>

namespace glimmerly {

namespace {

std::optional<AnnotationHandle> handleAt(Point point, const OverlayAnnotationKind& kind) {
    using Found = std::optional<AnnotationHandle>;
    const double radius = hitTestStyle.handleHitRadius;
    return std::visit(Overloaded{[&](const RectangleShape& shape) -> Found {
                                     const auto handle = hitTestSelectionHandle(point, shape.rect, radius);
                                     if (!handle)
                                         return std::nullopt;
                                     return RectangleHandle{*handle};
                                 },
                                 [&](const ArrowShape& arrow) -> Found {
                                     if (distance(point, arrow.start) <= radius)
                                         return ArrowStart{};
                                     if (distance(point, arrow.end) <= radius)
                                         return ArrowEnd{};
                                     return std::nullopt;
                                 },
                                 [](const TextLabel&) -> Found { return std::nullopt; }},
                      kind);
}

bool outlineContains(const Rect& rect, Point point) {
    const Rect outline = rect.standardized();
    if (!outline.insetBy(-hitTestStyle.hitTolerance()).contains(point))
        return false;
    const Rect inner = outline.insetBy(hitTestStyle.hitTolerance());
    const bool hasInside = inner.width > 0 && inner.height > 0;
    return !hasInside || !inner.contains(point);
}

bool arrowContains(const ArrowShape& arrow, Point point) {
    const double tolerance = hitTestStyle.hitTolerance();
    if (distanceToSegment(point, arrow.start, arrow.end) <= tolerance)
        return true;
    const auto head = arrowHead(arrow.start, arrow.end, hitTestStyle.arrowheadLength);
    return head && (distanceToSegment(point, arrow.end, head->left) <= tolerance ||
                    distanceToSegment(point, arrow.end, head->right) <= tolerance);
}

bool bodyContains(const OverlayAnnotation& annotation, Point point, const TextContainment& textContains) {
    return std::visit(
        Overloaded{[&](const RectangleShape& shape) { return outlineContains(shape.rect, point); },
                   [&](const ArrowShape& arrow) { return arrowContains(arrow, point); },
                   [&](const TextLabel&) { return textContains && textContains(point, annotation.id); }},
        annotation.kind);
}

} // namespace

std::optional<AnnotationHit> hitTestAnnotation(Point point, std::span<const OverlayAnnotation> annotations,
                                               const TextContainment& textContains) {
    for (const auto& annotation : std::views::reverse(annotations)) {
        if (const auto handle = handleAt(point, annotation.kind))
            return ResizeHit{annotation.id, *handle};
    }
    for (const auto& annotation : std::views::reverse(annotations)) {
        if (bodyContains(annotation, point, textContains))
            return MoveHit{annotation.id};
    }
    return std::nullopt;
}

} // namespace glimmerly
