#include "platform/x11/X11HotkeyGrab.h"

namespace glimmerly {

namespace {

/// The server's answer to one grab.
HotkeyStatus answerTo(xcb_connection_t* connection, xcb_void_cookie_t request) {
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(connection, request));
    if (xcb_connection_has_error(connection))
        return hotkey_status::serviceUnavailable;
    if (!error)
        return hotkey_status::success;
    return error->error_code == XCB_ACCESS ? hotkey_status::hotkeyExists : hotkey_status::hotkeyInvalid;
}

} // namespace

X11HotkeyGrab::X11HotkeyGrab(X11Connection& connection, std::vector<xcb_keycode_t> keycodes,
                             std::vector<std::uint16_t> variants)
    : connection_(connection), keycodes_(std::move(keycodes)), variants_(std::move(variants)),
      status_(hotkey_status::success) {
    std::vector<xcb_void_cookie_t> requests;
    for (const xcb_keycode_t keycode : keycodes_) {
        for (const std::uint16_t modifiers : variants_) {
            requests.push_back(xcb_grab_key_checked(connection_.get(), 0, connection_.root(), modifiers,
                                                    keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    // All are sent before the first answer is awaited: one round trip, however many variants.
    for (const auto request : requests) {
        const HotkeyStatus answer = answerTo(connection_.get(), request);
        if (status_ == hotkey_status::success)
            status_ = answer;
    }
}

X11HotkeyGrab::~X11HotkeyGrab() {
    // Letting go of what another client holds does nothing. Sent at the end of the main loop's turn: with
    // what is grabbed instead, as a rule the same keys, so that the server sees both at once and no press
    // falls between.
    for (const xcb_keycode_t keycode : keycodes_) {
        for (const std::uint16_t modifiers : variants_)
            xcb_ungrab_key(connection_.get(), keycode, connection_.root(), modifiers);
    }
}

} // namespace glimmerly
