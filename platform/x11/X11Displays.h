#pragma once

#include "base/Geometry.h"
#include "platform/x11/X11Connection.h"

#include <cstdint>
#include <string>
#include <vector>

namespace glimmerly {

/// A display of the X server: one of RandR's monitors, which is an output as a rule.
struct X11Display {
    std::uint32_t id = 0; ///< the atom of its name: the same whenever a display of that name is there
    std::string name;
    PixelRect area; ///< of the root window

    bool operator==(const X11Display&) const = default;
};

/// The displays as they are now, the primary one first. A server without RandR 1.5 has one, all of the root
/// window. Empty when the server has gone.
[[nodiscard]] std::vector<X11Display> x11Displays(const X11Connection& connection);

/// Has the server tell `connection` of each change of the displays, where it knows RandR.
void selectDisplayChanges(const X11Connection& connection);
[[nodiscard]] bool isDisplayChange(const X11Connection& connection, const xcb_generic_event_t& event);

} // namespace glimmerly
