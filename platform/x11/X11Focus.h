#pragma once

#include "platform/x11/X11Connection.h"

namespace glimmerly {

/// The X server's input focus.
namespace x11_focus {

/// The window that has it; XCB_INPUT_FOCUS_POINTER_ROOT when keys go to the window under the pointer.
[[nodiscard]] xcb_window_t current(const X11Connection& connection);

/// Gives it to `window`, or with XCB_INPUT_FOCUS_POINTER_ROOT to whatever is under the pointer. A window that
/// has gone or is not on screen gets nothing. Waits until it is done.
void set(const X11Connection& connection, xcb_window_t window);

} // namespace x11_focus

} // namespace glimmerly
