#include "platform/x11/X11RunningApplication.h"

namespace glimmerly {

X11RunningApplication::X11RunningApplication(std::shared_ptr<const X11ClientWindows> windows,
                                             xcb_window_t active, std::optional<std::string> bundleIdentifier)
    : windows_(std::move(windows)), active_(active), bundleIdentifier_(std::move(bundleIdentifier)),
      owner_(windows_->owner(active)), focus_(windows_->focusWithin(active)),
      stacking_(windows_->stacking()) {}

void X11RunningApplication::activateAllWindows() {
    if (windows_->owner(active_) != owner_)
        return; // gone, and another client may have got its number since
    if (isAsItWas())
        windows_->setFocus(focus_);
    else
        bringForward();
}

bool X11RunningApplication::isAsItWas() const {
    return focus_ != XCB_WINDOW_NONE && windows_->isOnScreen(active_) && windows_->stacking() == stacking_;
}

void X11RunningApplication::bringForward() const {
    for (const xcb_window_t window : windows_->stacking()) {
        if (window != active_ && windows_->owner(window).isSameApplicationAs(owner_))
            windows_->raise(window);
    }
    windows_->raise(active_);
    windows_->activate(active_);
}

} // namespace glimmerly
