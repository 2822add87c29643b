#pragma once

#include "overlay/drawing/PixelSurface.h"
#include "overlay/drawing/SelectionScene.h"

namespace glimmerly {

/// Draws `tag`; a point is `scale` pixels.
void drawTag(const PixelSurface& surface, const Tag& tag, double scale);

} // namespace glimmerly
