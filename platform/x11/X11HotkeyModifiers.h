#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace glimmerly {

/// Which of the server's eight modifier bits mean what on the keyboard as it is mapped now.
struct X11HotkeyModifiers {
    std::uint16_t option = 0;                  ///< the bit of the Alt keys; 0: there are none
    std::uint16_t command = 0;                 ///< the bit of the Super keys; 0: there are none
    std::uint16_t ignored = XCB_MOD_MASK_LOCK; ///< the bits of keys that lock or choose a group

    [[nodiscard]] static X11HotkeyModifiers read(xcb_connection_t* connection);

    /// The bits that must be set for a hotkey with the service's modifier flags `carbonFlags`; none when the
    /// keyboard has no key for one of them.
    [[nodiscard]] std::optional<std::uint16_t> required(std::uint32_t carbonFlags) const;
    /// `required` together with each combination of the ignored bits.
    [[nodiscard]] std::vector<std::uint16_t> variants(std::uint16_t required) const;
    /// The bits of an event's `state` that must equal the required ones.
    [[nodiscard]] std::uint16_t relevant(std::uint16_t state) const {
        return static_cast<std::uint16_t>(state & 0xFF & ~ignored);
    }

    bool operator==(const X11HotkeyModifiers&) const = default;
};

} // namespace glimmerly
