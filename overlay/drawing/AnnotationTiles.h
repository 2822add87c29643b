#pragma once

#include "overlay/drawing/AnnotationDrawing.h"

#include <vector>

namespace glimmerly {

// Where on the overlay's window an annotation leaves paint: rectangles of pixels that together cover it and
// not much else, so that a drag repaints what changed.

/// The shape itself; none for a text, whose view repaints itself.
[[nodiscard]] std::vector<QRect> shapeTiles(const OverlayAnnotation& annotation, const PixelMapping& mapping);

/// What `drawSelectedAnnotationChrome` draws for it.
[[nodiscard]] std::vector<QRect> chromeTiles(const OverlayAnnotation& annotation,
                                             const PixelMapping& mapping);

/// The pixels that may differ between two scenes.
[[nodiscard]] QRegion damageBetween(const AnnotationScene& before, const AnnotationScene& after,
                                    const PixelMapping& mapping);

} // namespace glimmerly
