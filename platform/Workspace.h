#pragma once

#include <memory>
#include <optional>
#include <string>

namespace glimmerly {

/// Another program that owns windows on this desktop.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    /// None when the desktop cannot tell.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
    /// Brings all its windows forward and gives it the keyboard; does nothing once it has gone.
    virtual void activateAllWindows() = 0;
};

/// Which application the user works in.
class Workspace {
public:
    virtual ~Workspace() = default;

    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
};

} // namespace glimmerly
