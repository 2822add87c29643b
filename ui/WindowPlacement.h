#pragma once

#include <QSize>

class QWidget;

namespace glimmerly {

/// Moves `window` to the middle of the display with the mouse, panels left out.
void centerOnDisplayUnderMouse(QWidget& window);
/// Gives a window that is not on the screen its fixed size, in points: `wanted`, where its display has room
/// for that and a title bar, and never less than `least`. A window that fits where it was stays there; any
/// other comes to the middle of its display, or of the one with the mouse where it has none.
void fitOnDisplay(QWidget& window, QSize wanted, QSize least);

} // namespace glimmerly
