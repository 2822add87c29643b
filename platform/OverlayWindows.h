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
    /// Shows it in front of everything and gives it the keyboard. None of the program's other windows comes
    /// forward with it.
    virtual void makeKeyAndOrderFront(QWidget& window) = 0;
    /// Hides it. Whether it had the keyboard, which then goes back to whoever had it before.
    virtual bool orderOut(QWidget& window) = 0;
};

} // namespace glimmerly
