#pragma once

#include "base/Result.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace glimmerly {

struct XcbFree {
    void operator()(void* reply) const { std::free(reply); }
};

/// Frees what XCB hands out with malloc: replies, errors and events.
template <typename T>
using XcbOwned = std::unique_ptr<T, XcbFree>;

/// A connection of our own to the X server. Each backend that waits for replies or receives events has one to
/// itself, so that no reply swallows another's events and Qt's own connection is never touched.
class X11Connection {
public:
    /// Connects to the display that the environment names.
    [[nodiscard]] static Result<std::unique_ptr<X11Connection>> open();

    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    /// The number for `name`, made if it is new; XCB_ATOM_NONE when the server has gone.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;
    /// Waits until the server has done everything that was asked of it on this connection.
    void sync() const;

private:
    X11Connection(xcb_connection_t* connection, const xcb_screen_t* screen)
        : connection_(connection), screen_(screen) {}

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
};

/// An error of the X server or of the connection to it; `what` names the failed request.
[[nodiscard]] Error x11Error(const xcb_generic_error_t* error, std::string_view what);

} // namespace glimmerly
