#pragma once

#include "platform/x11/X11Connection.h"

#include <optional>

// XCB's header names a field after a keyword of C++.
#define explicit explicitModifiers
#include <xcb/xkb.h>
#undef explicit

namespace glimmerly {

/// The server's keyboard extension as one connection uses it.
class X11KeyboardExtension {
public:
    enum class Change { keymap, group };

    /// Has the connection hear when the keys or modifiers are laid out anew, or another group of the layout
    /// becomes current.
    [[nodiscard]] static Result<X11KeyboardExtension> enable(X11Connection& connection);

    /// What `event` says of the keyboard; none when it is about something else.
    [[nodiscard]] std::optional<Change> change(const xcb_generic_event_t& event) const;

private:
    explicit X11KeyboardExtension(std::uint8_t eventType) : eventType_(eventType) {}

    std::uint8_t eventType_;
};

} // namespace glimmerly
