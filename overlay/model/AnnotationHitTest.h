#pragma once

#include "overlay/model/OverlayAnnotation.h"

#include <functional>
#include <optional>
#include <span>

namespace glimmerly {

/// Whether the visible part of a text annotation contains a point; the views of the texts know.
using TextContainment = std::function<bool(Point point, const Uuid& id)>;

/// What of `annotations`, the last one topmost, lies under `point`: a handle of any annotation before the
/// body of any. The inside of a rectangle is no part of its body.
[[nodiscard]] std::optional<AnnotationHit> hitTestAnnotation(Point point,
                                                             std::span<const OverlayAnnotation> annotations,
                                                             const TextContainment& textContains);

} // namespace glimmerly
