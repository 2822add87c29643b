#pragma once

#include "platform/x11/X11Connection.h"

#include <array>
#include <cstdint>

namespace glimmerly {

/// Keeps a key that is still down from the application that gets the keyboard next, which would see it
/// repeat: the Escape that closed an overlay must not close a dialog below it too.
class X11HeldKeys {
public:
    /// `connection` must outlive this object; its events go to `handle`.
    explicit X11HeldKeys(const X11Connection& connection);

    /// When a key that is no modifier is down, takes the keyboard until none is. Another client that has
    /// taken it already keeps it.
    void swallowUntilReleased();
    void handle(const xcb_generic_event_t& event);

private:
    using KeySet = std::array<std::uint8_t, 32>; ///< a bit for each keycode

    void handleRelease();
    [[nodiscard]] KeySet modifierKeys() const;
    [[nodiscard]] bool anyKeyDown() const;

    const X11Connection& connection_;
    bool hasKeyboard_ = false;
};

} // namespace glimmerly
