#pragma once

#include "platform/HotkeyService.h"
#include "platform/x11/X11Connection.h"

#include <vector>

namespace glimmerly {

/// Keys of the whole desktop held for us: pressing one of `keycodes` while exactly one of the modifier
/// `variants` is set sends its events to `connection` alone. Ends with its life.
class X11HotkeyGrab {
public:
    X11HotkeyGrab(X11Connection& connection, std::vector<xcb_keycode_t> keycodes,
                  std::vector<std::uint16_t> variants);
    ~X11HotkeyGrab();
    X11HotkeyGrab(const X11HotkeyGrab&) = delete;
    X11HotkeyGrab& operator=(const X11HotkeyGrab&) = delete;

    /// `hotkeyExists` when another client holds any part of it. Anything but success: nothing of use is held.
    [[nodiscard]] HotkeyStatus status() const { return status_; }

private:
    X11Connection& connection_;
    std::vector<xcb_keycode_t> keycodes_;
    std::vector<std::uint16_t> variants_;
    HotkeyStatus status_;
};

} // namespace glimmerly
