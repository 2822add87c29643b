#pragma once

#include "overlay/SelectionScene.h"

class QPainter;

namespace glimmerly {

// All of these draw with a painter whose unit is a pixel of the overlay window, and on whole pixels only, so
// that lines are crisp at every scale.

/// Darkens what is not selected.
void dimOutsideSelection(QPainter& painter, const SelectionFigure& figure);
void drawSelectionFrame(QPainter& painter, const SelectionFigure& figure);
void drawSelectionHandles(QPainter& painter, const SelectionFigure& figure);

} // namespace glimmerly
