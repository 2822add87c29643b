#include "overlay/model/AnnotationEditing.h"

#include "base/Overloaded.h"
#include "overlay/model/ArrowGeometry.h"
#include "overlay/model/RectResizing.h"

namespace glimmerly {

namespace {

constexpr double minimumRectangleSide = 1;
constexpr double minimumArrowLength = 2;
constexpr double minimumResizedSide = 2;

} // namespace

std::optional<OverlayAnnotation> annotationFromDraft(const DraftShapeAnnotation& draft) {
    switch (draft.tool) {
    case SelectionTool::rectangle: {
        const Rect rect = Rect::fromCorners(draft.start, draft.current);
        if (isSmallerThan(rect, minimumRectangleSide))
            return std::nullopt;
        return OverlayAnnotation{draft.id, RectangleShape{rect}, draft.color};
    }
    case SelectionTool::arrow:
        if (distance(draft.start, draft.current) < minimumArrowLength - positionTolerance)
            return std::nullopt;
        return OverlayAnnotation{draft.id, ArrowShape{draft.start, draft.current}, draft.color};
    case SelectionTool::text:
        break; // is created at the click, not drawn out
    }
    return std::nullopt;
}

std::optional<AnnotationUndoAction> makeEditAction(const OverlayAnnotation& oldAnnotation,
                                                   const OverlayAnnotation& newAnnotation) {
    if (oldAnnotation.kind == newAnnotation.kind && oldAnnotation.color == newAnnotation.color)
        return std::nullopt;
    return EditAction{oldAnnotation, newAnnotation};
}

std::optional<OverlayAnnotationKind> resizedKind(const OverlayAnnotationKind& kind,
                                                 const AnnotationHandle& handle, Point point,
                                                 const std::optional<Rect>& startRect, const Rect& bounds) {
    using Resized = std::optional<OverlayAnnotationKind>;
    return std::visit(
        Overloaded{
            [&](const ArrowShape& arrow, ArrowStart) -> Resized { return ArrowShape{point, arrow.end}; },
            [&](const ArrowShape& arrow, ArrowEnd) -> Resized { return ArrowShape{arrow.start, point}; },
            [&](const RectangleShape&, RectangleHandle grip) -> Resized {
                if (!startRect)
                    return std::nullopt;
                return RectangleShape{
                    resizedRect(*startRect, grip.handle, point, bounds, minimumResizedSide)};
            },
            [](const auto&, const auto&) -> Resized { return std::nullopt; }},
        kind, handle);
}

OverlayAnnotationKind movedKind(const OverlayAnnotationKind& kind, Point delta) {
    return std::visit(Overloaded{[&](const RectangleShape& shape) -> OverlayAnnotationKind {
                                     return RectangleShape{
                                         shape.rect.standardized().offsetBy(delta.x, delta.y)};
                                 },
                                 [&](const ArrowShape& arrow) -> OverlayAnnotationKind {
                                     return ArrowShape{arrow.start + delta, arrow.end + delta};
                                 },
                                 [&](const TextLabel& label) -> OverlayAnnotationKind {
                                     return TextLabel{label.anchor + delta, label.text};
                                 }},
                      kind);
}

} // namespace glimmerly
