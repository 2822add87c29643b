#pragma once

#include "overlay/PixelSurface.h"
#include "overlay/SelectionScene.h"

namespace glimmerly {

/// Draws `tag`; a point is `scale` pixels.
void drawTag(const PixelSurface& surface, const Tag& tag, double scale);

} // namespace glimmerly
