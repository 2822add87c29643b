#include "platform/x11/X11Focus.h"

namespace glimmerly::x11_focus {

xcb_window_t current(const X11Connection& connection) {
    const auto cookie = xcb_get_input_focus(connection.get());
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.get(), cookie, nullptr));
    if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE)
        return XCB_INPUT_FOCUS_POINTER_ROOT;
    return reply->focus;
}

void set(const X11Connection& connection, xcb_window_t window) {
    // The current time: one from an earlier event would lose against any change of focus in between.
    const auto cookie =
        xcb_set_input_focus_checked(connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    const XcbOwned<xcb_generic_error_t> ignored(xcb_request_check(connection.get(), cookie));
}

} // namespace glimmerly::x11_focus
