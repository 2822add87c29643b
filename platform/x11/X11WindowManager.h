#pragma once

#include "platform/x11/X11Connection.h"

#include <memory>
#include <string>

namespace glimmerly {

/// What the window manager says of itself, at the moment it is asked.
class X11WindowManager {
public:
    explicit X11WindowManager(std::unique_ptr<X11Connection> connection);

    /// UTF-8; empty without a window manager.
    [[nodiscard]] std::string name() const;
    /// The file that Openbox was told to read instead of its usual one; empty for none.
    [[nodiscard]] std::string openboxConfigurationFile() const;

private:
    std::unique_ptr<X11Connection> connection_;
};

} // namespace glimmerly
