#pragma once

#include "platform/x11/X11Connection.h"

#include <array>
#include <cstdint>

namespace glimmerly {

/// Keeps a key that is still down from the application that gets the keyboard next, which would see it
/// repeat: the Escape that closed an overlay must not close a dialog below it too.
class X11HeldKeys {
public:
    using KeySet = std::array<std::uint8_t, 32>; ///< a bit for each keycode

    /// `connection` must outlive this object; its events go to `handle`.
    explicit X11HeldKeys(const X11Connection& connection);

    /// When a key that is no modifier is down, takes the keyboard until none is or another is pressed, which
    /// is lost unless it is a hotkey. Another client that has taken the keyboard already keeps it.
    void swallowUntilReleased();
    /// Gives the keyboard back, if it was taken.
    void letGo();
    void handle(const xcb_generic_event_t& event);

private:
    void handlePress(const xcb_key_press_event_t& event);
    void handleRelease();
    [[nodiscard]] KeySet modifierKeys() const;
    [[nodiscard]] KeySet keysDown() const;
    [[nodiscard]] bool anyKeyDown() const;

    const X11Connection& connection_;
    KeySet heldBefore_{}; ///< when the keyboard was taken
    bool hasKeyboard_ = false;
};

} // namespace glimmerly
