#pragma once

#include "overlay/drawing/AnnotationDrawing.h"

namespace glimmerly {

/// How far, in points, the chrome reaches from the lines and points of its annotation.
inline constexpr double annotationChromeReach = 6;

/// What shows that an annotation is selected: its handles with a dashed outline or a halo, which may lie
/// outside the selection. A text has none, its view draws a frame.
void drawSelectedAnnotationChrome(const PixelSurface& surface, const AnnotationScene& scene,
                                  const PixelMapping& mapping);

} // namespace glimmerly
