#pragma once

#include "base/Bitmap.h"
#include "base/Geometry.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glimmerly {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

/// A look at an X server from outside the program under test, through a connection of its own.
class XClient {
public:
    /// `display` may be empty for that of DISPLAY.
    explicit XClient(const std::string& display);
    ~XClient();
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] int depth() const { return screen_->root_depth; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] PixelSize size() const { return {screen_->width_in_pixels, screen_->height_in_pixels}; }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const;
    [[nodiscard]] xcb_window_t selectionOwner(std::string_view selection) const;
    /// The first window that the property of `window` names.
    [[nodiscard]] std::optional<xcb_window_t> windowProperty(xcb_window_t window,
                                                             std::string_view name) const;
    [[nodiscard]] std::string propertyBytes(xcb_window_t window, std::string_view name) const;
    /// The windows on the screen that are visible, the lowest first.
    [[nodiscard]] std::vector<xcb_window_t> visibleWindows() const { return visibleChildren(root()); }
    /// Every visible window, however deep, that has the property.
    [[nodiscard]] std::vector<xcb_window_t> windowsWith(std::string_view property) const;
    /// The windows that the window manager names in a property of the root.
    [[nodiscard]] std::vector<xcb_window_t> managedWindows(std::string_view list = "_NET_CLIENT_LIST") const;
    [[nodiscard]] PixelRect areaOf(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t focusedWindow() const;

    /// What the displays show, opaque; the mouse pointer is not in it.
    [[nodiscard]] Bitmap pixels(PixelRect area) const;
    [[nodiscard]] Bitmap pixels() const { return pixels({0, 0, size().width, size().height}); }
    /// Puts `picture`, as large as all displays, behind every window.
    void setBackground(const Bitmap& picture) const;

    /// The next event that was asked for; null when none comes within `limit`.
    [[nodiscard]] Reply<xcb_generic_event_t> nextEvent(std::chrono::milliseconds limit) const;
    /// Waits until the server has carried out every request so far.
    void sync() const;

private:
    /// The visible windows within `parent`, the lowest first.
    [[nodiscard]] std::vector<xcb_window_t> visibleChildren(xcb_window_t parent) const;

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
};

} // namespace glimmerly
