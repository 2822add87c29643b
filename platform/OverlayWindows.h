#pragma once

#include "base/Geometry.h"
#include "base/Overhang.h"
#include "platform/Screens.h"

#include <string_view>

class QWidget;

namespace glimmerly {

/// Puts a borderless widget over a whole display, above panels and pop-up menus, with the keyboard. One at a
/// time. Main thread only.
class OverlayWindows {
public:
    /// Posted just before an overlay is shown.
    static constexpr std::string_view willShowNotification = "GlimmerlyOverlayWillShow";

    virtual ~OverlayWindows() = default;

    /// Makes `window`, which was never shown, a window of the overlay's kind over `screen`, `frame.height`
    /// points tall (see `Overhang`). Its content fills it from the top-left corner; where the scale is no
    /// whole number, it is up to a point larger than what is seen of it on the right and at the bottom.
    virtual void prepare(QWidget& window, const Screen& screen, Rect frame) = 0;
    /// Shows it in front of everything and gives it the keyboard.
    virtual void makeKeyAndOrderFront(QWidget& window) = 0;
    /// Hides it and gives the keyboard back to whoever had it.
    virtual void orderOut(QWidget& window) = 0;
};

} // namespace glimmerly
