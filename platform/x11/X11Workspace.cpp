#include "platform/x11/X11Workspace.h"

#include "platform/x11/X11RunningApplication.h"

namespace glimmerly {

X11Workspace::X11Workspace(std::unique_ptr<X11Connection> connection,
                           std::optional<std::string> bundleIdentifier)
    : windows_(std::make_shared<const X11ClientWindows>(std::move(connection))),
      bundleIdentifier_(std::move(bundleIdentifier)) {}

std::shared_ptr<RunningApplication> X11Workspace::frontmostApplication() const {
    const xcb_window_t active = windows_->active();
    if (active == XCB_WINDOW_NONE)
        return nullptr;
    const X11WindowOwner owner = windows_->owner(active);
    std::optional<std::string> identifier;
    if (owner.isThisProcess())
        identifier = bundleIdentifier_;
    else if (!owner.application.empty())
        identifier = owner.application;
    return std::make_shared<X11RunningApplication>(windows_, active, std::move(identifier));
}

} // namespace glimmerly
