#pragma once

#include "overlay/drawing/PixelSurface.h"
#include "overlay/drawing/SelectionScene.h"

namespace glimmerly {

// All of these draw on whole pixels only, so that lines are crisp at every scale.

/// Darkens what is not selected.
void dimOutsideSelection(const PixelSurface& surface, const SelectionFigure& figure);
void drawSelectionFrame(const PixelSurface& surface, const SelectionFigure& figure);
void drawSelectionHandles(const PixelSurface& surface, const SelectionFigure& figure);

} // namespace glimmerly
