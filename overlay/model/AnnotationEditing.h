#pragma once

#include "overlay/model/OverlayAnnotation.h"

#include <optional>

namespace glimmerly {

/// The annotation that `draft` becomes when the mouse is released; none while it is too small (a rectangle
/// below 1 × 1 point, an arrow shorter than 2 points) and for the text tool.
[[nodiscard]] std::optional<OverlayAnnotation> annotationFromDraft(const DraftShapeAnnotation& draft);

/// The history entry for a change; none when kind and colour are the same.
[[nodiscard]] std::optional<AnnotationUndoAction> makeEditAction(const OverlayAnnotation& oldAnnotation,
                                                                 const OverlayAnnotation& newAnnotation);

/// `kind` with `handle` dragged to `point`. `startRect` is the standardised rectangle at the beginning of the
/// drag. None when the handle is not one of this kind.
[[nodiscard]] std::optional<OverlayAnnotationKind> resizedKind(const OverlayAnnotationKind& kind,
                                                               const AnnotationHandle& handle, Point point,
                                                               const std::optional<Rect>& startRect,
                                                               const Rect& bounds);

/// `kind` moved by `delta`, wherever that leads.
[[nodiscard]] OverlayAnnotationKind movedKind(const OverlayAnnotationKind& kind, Point delta);

} // namespace glimmerly
