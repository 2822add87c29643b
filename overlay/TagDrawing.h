#pragma once

#include "overlay/SelectionScene.h"

class QPainter;

namespace glimmerly {

/// Draws `tag` with a painter whose unit is a pixel; a point is `scale` of them.
void drawTag(QPainter& painter, const Tag& tag, double scale);

} // namespace glimmerly
