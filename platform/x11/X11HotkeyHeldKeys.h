#pragma once

#include <xcb/xproto.h>

#include <map>
#include <optional>

namespace glimmerly {

/// Tells a key's press from its repeats.
class X11HotkeyHeldKeys {
public:
    enum class Press { first, repeated };
    /// Whether a press and the releases come in the order in which they happened. On two connections they may
    /// not; then the server's timestamps decide.
    enum class Order { kept, byTime };

    Press press(xcb_keycode_t keycode, xcb_timestamp_t time, Order order);
    /// The key is down already, nobody knows since when.
    void hold(xcb_keycode_t keycode);
    void release(xcb_keycode_t keycode, xcb_timestamp_t time);
    [[nodiscard]] bool anyHeld() const;

private:
    struct Key {
        std::optional<xcb_timestamp_t> lastPress; ///< or repeat; none for a key that was down before
        std::optional<xcb_timestamp_t> released;
    };
    std::map<xcb_keycode_t, Key> keys_;
};

} // namespace glimmerly
