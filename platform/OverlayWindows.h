#pragma once

#include "base/Geometry.h"
#include "platform/Screens.h"

class QWidget;

namespace glimmerly {

/// Puts a borderless widget over a whole display, above panels and pop-up menus, with the keyboard.
class OverlayWindows {
public:
    virtual ~OverlayWindows() = default;

    /// Makes `window`, which was never shown, a window of the overlay's kind covering `frame` (global points,
    /// reaching a little beyond `screen`'s own).
    virtual void prepare(QWidget& window, const Screen& screen, Rect frame) = 0;
    /// Shows it in front of everything and gives it the keyboard.
    virtual void makeKeyAndOrderFront(QWidget& window) = 0;
    /// Hides it and lets go of the keyboard.
    virtual void orderOut(QWidget& window) = 0;
};

} // namespace glimmerly
