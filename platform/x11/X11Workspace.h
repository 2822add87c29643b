#pragma once

#include "platform/Workspace.h"
#include "platform/x11/X11ClientWindows.h"

namespace glimmerly {

/// The application in front: the one whose window the window manager calls active, and without a window
/// manager the one whose window has the keyboard.
class X11Workspace : public Workspace {
public:
    /// `bundleIdentifier` is this program's own.
    X11Workspace(std::unique_ptr<X11Connection> connection, std::optional<std::string> bundleIdentifier);

    [[nodiscard]] std::shared_ptr<RunningApplication> frontmostApplication() const override;

private:
    std::shared_ptr<const X11ClientWindows> windows_;
    std::optional<std::string> bundleIdentifier_;
};

} // namespace glimmerly
