#pragma once

#include "platform/Workspace.h"
#include "platform/x11/X11ClientWindows.h"

namespace glimmerly {

/// An application by the window that was active in it, remembered with the state of the desktop around it.
class X11RunningApplication : public RunningApplication {
public:
    X11RunningApplication(std::shared_ptr<const X11ClientWindows> windows, xcb_window_t active,
                          std::optional<std::string> bundleIdentifier);

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return bundleIdentifier_; }
    /// While the windows still lie as they did, only the keyboard goes back, to the very window that had it.
    void activateAllWindows() override;

private:
    [[nodiscard]] bool isAsItWas() const;
    void bringForward() const;

    std::shared_ptr<const X11ClientWindows> windows_;
    xcb_window_t active_;
    std::optional<std::string> bundleIdentifier_;
    X11WindowOwner owner_;
    xcb_window_t focus_;
    std::vector<xcb_window_t> stacking_;
};

} // namespace glimmerly
