#pragma once

#include "platform/x11/X11Connection.h"

#include <cstdint>
#include <string>
#include <vector>

namespace glimmerly {

/// Reading what other clients say of their windows. A window that has gone has no properties.
namespace x11_properties {

/// The 32-bit values of `property`, whatever their type; empty when it is missing or of another format.
[[nodiscard]] std::vector<std::uint32_t> values(const X11Connection& connection, xcb_window_t window,
                                                xcb_atom_t property);
/// The first of them; 0 for none.
[[nodiscard]] std::uint32_t value(const X11Connection& connection, xcb_window_t window, xcb_atom_t property);
/// The bytes of `property`; empty when it is missing or of another format.
[[nodiscard]] std::string text(const X11Connection& connection, xcb_window_t window, xcb_atom_t property);

} // namespace x11_properties

} // namespace glimmerly
