#pragma once

#include "base/Geometry.h"
#include "platform/x11/X11Connection.h"

#include <QTimer>

#include <chrono>
#include <vector>

namespace glimmerly {

/// How often something is worth doing again against another client that undoes it.
class X11Patience {
public:
    /// True while this happens less than ten times within a second; once it did not, false for good.
    [[nodiscard]] bool lasts();

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point countingSince_;
    int count_ = 0;
};

/// Keeps an open overlay above all other applications' windows, and with the keyboard while the pointer is on
/// it: a window that is raised or takes the focus below it would get keys that the user cannot see arrive.
/// Popups that come later, which no window manager manages, may lie above it.
class X11OverlayKeeper {
public:
    /// `area` is the overlay's on the root window. The connection must outlive this object; its events go to
    /// `handle`.
    X11OverlayKeeper(const X11Connection& connection, xcb_window_t overlay, PixelRect area);
    ~X11OverlayKeeper();
    X11OverlayKeeper(const X11OverlayKeeper&) = delete;
    X11OverlayKeeper& operator=(const X11OverlayKeeper&) = delete;

    void orderFront() const;
    void moveTo(PixelRect area);
    void takeFocus() const;

    void handle(const xcb_generic_event_t& event);

private:
    void settle();
    void selectEvents(std::uint32_t onRoot, std::uint32_t onOverlay) const;
    [[nodiscard]] bool mayHaveFocus(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t ancestorOnRoot(xcb_window_t window) const;
    [[nodiscard]] bool isOurs(xcb_window_t window) const;
    void raiseAboveOthers();
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window) const;
    [[nodiscard]] std::vector<xcb_window_t> coveringWindows() const;
    [[nodiscard]] bool covers(xcb_window_t window) const;
    [[nodiscard]] bool holdsApplicationWindow(xcb_window_t window) const;
    [[nodiscard]] bool hasPointer() const;

    const X11Connection& connection_;
    xcb_atom_t windowState_; ///< the property that a window manager gives each window it manages
    xcb_window_t overlay_;
    PixelRect area_;
    bool stackChanged_ = false;
    bool focusChanged_ = false;
    QTimer settling_; ///< once for all events that came together
    /// Windows that stay above whatever is done, as a compositor's does.
    std::vector<xcb_window_t> unbeatable_;
    X11Patience raising_;
    X11Patience focusing_;
};

} // namespace glimmerly
