#pragma once

#include "base/Geometry.h"
#include "platform/Screens.h"

class QWidget;

namespace glimmerly {

/// How far an overlay reaches beyond its display, in pixels. It is shared between both edges, so that each
/// frozen pixel lies exactly over the live one.
struct Overhang {
    int top = 0;
    int bottom = 0;

    [[nodiscard]] constexpr int total() const { return top + bottom; }
    constexpr bool operator==(const Overhang&) const = default;
};

/// The overhang of an overlay `heightPoints` tall on a display of `nativeHeight` pixels; none for an overlay
/// that is no taller. An odd number of pixels puts the extra one below.
[[nodiscard]] Overhang overhang(double heightPoints, double backingScale, int nativeHeight);

/// Puts a borderless widget over a whole display, above panels and pop-up menus, with the keyboard. One at a
/// time. Main thread only.
class OverlayWindows {
public:
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
