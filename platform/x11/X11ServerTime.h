#pragma once

#include "platform/x11/X11Connection.h"

namespace glimmerly {

/// The X server's clock now, in milliseconds; 0, its word for "unknown", when the server has gone. The
/// connection must have no other events on their way: they would be lost.
[[nodiscard]] xcb_timestamp_t serverTime(const X11Connection& connection);

} // namespace glimmerly
