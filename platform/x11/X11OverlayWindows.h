#pragma once

#include "platform/OverlayWindows.h"
#include "platform/x11/X11EventSource.h"
#include "platform/x11/X11HeldKeys.h"
#include "platform/x11/X11OverlayKeeper.h"

#include <memory>
#include <optional>
#include <string>

namespace glimmerly {

/// Overlays as windows that no window manager manages. They neither grab the keyboard nor the pointer,
/// because a grab would shut out hotkeys, ours among them, and keep the session from being locked. An open
/// overlay keeps its size and goes where its display goes, or to the first one when that is unplugged.
class X11OverlayWindows : public OverlayWindows {
public:
    explicit X11OverlayWindows(std::unique_ptr<X11Connection> connection);

    void prepare(QWidget& window, const Screen& screen, Rect frame) override;
    void makeKeyAndOrderFront(QWidget& window) override;
    bool orderOut(QWidget& window) override;

private:
    void place(xcb_window_t window, PixelRect area, PixelSize sizeForQt);
    void handle(const xcb_generic_event_t& event);
    void followDisplay();

    std::unique_ptr<X11Connection> connection_;
    PixelRect area_;          ///< of the overlay on the root window
    std::string displayName_; ///< of the display that it is for
    int rowsAboveDisplay_ = 0;
    std::optional<X11OverlayKeeper> keeper_;
    X11HeldKeys heldKeys_;
    xcb_window_t focusBefore_ = XCB_INPUT_FOCUS_POINTER_ROOT;
    X11EventSource events_;
};

} // namespace glimmerly
