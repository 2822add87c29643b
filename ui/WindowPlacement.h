#pragma once

#include <QSize>

class QWidget;

namespace glimmerly {

/// Moves `window` to the middle of the display with the mouse, panels left out.
void centerOnDisplayUnderMouse(QWidget& window);
/// The largest content that a window on that display may have, in points, with room for a title bar.
[[nodiscard]] QSize largestContentOnDisplayUnderMouse();

} // namespace glimmerly
