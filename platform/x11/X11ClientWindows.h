#pragma once

#include "platform/x11/X11Connection.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace glimmerly {

/// Which application a window belongs to, as far as it says so.
struct X11WindowOwner {
    std::uint32_t process = 0; ///< 0: unknown
    std::string machine;
    xcb_window_t leader = XCB_WINDOW_NONE;
    std::string application; ///< the desktop file's name, else the window's class; may be empty

    [[nodiscard]] bool isSameApplicationAs(const X11WindowOwner& other) const;
    [[nodiscard]] bool isThisProcess() const;
    bool operator==(const X11WindowOwner&) const = default;
};

/// The top-level windows of the desktop's applications, with and without a window manager. Any window may go
/// away at any moment; what is asked of one that has gone is answered as of a window without properties.
class X11ClientWindows {
public:
    explicit X11ClientWindows(std::unique_ptr<X11Connection> connection);

    /// The one that the user works in; XCB_WINDOW_NONE for none.
    [[nodiscard]] xcb_window_t active() const;
    /// All of them, bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> stacking() const;
    [[nodiscard]] X11WindowOwner owner(xcb_window_t window) const;
    /// False for one that has gone, is iconified or stands on another virtual desktop.
    [[nodiscard]] bool isOnScreen(xcb_window_t window) const;

    /// The window with the keyboard, `window` itself or one in it; XCB_WINDOW_NONE when it is elsewhere.
    [[nodiscard]] xcb_window_t focusWithin(xcb_window_t window) const;
    void setFocus(xcb_window_t window) const;

    void raise(xcb_window_t window) const;
    /// Brings `window` to where it can be worked in, and the keyboard to it.
    void activate(xcb_window_t window) const;

private:
    struct Atoms {
        explicit Atoms(const X11Connection& connection);
        xcb_atom_t supportingCheck, activeWindow, stacking, restack, process, leader, desktopFile,
            gtkApplication;
    };

    [[nodiscard]] bool hasWindowManager() const;
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t parent(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;
    void tellWindowManager(xcb_window_t window, xcb_atom_t message, std::array<std::uint32_t, 3> data) const;

    std::unique_ptr<X11Connection> connection_;
    Atoms atoms_;
};

} // namespace glimmerly
