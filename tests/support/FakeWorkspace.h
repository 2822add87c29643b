#pragma once

#include "platform/Workspace.h"

#include <functional>

namespace glimmerly {

/// An application as a test makes it; `onActivate` runs at each activation.
class FakeRunningApplication : public RunningApplication {
public:
    explicit FakeRunningApplication(std::optional<std::string> bundleIdentifier)
        : identifier(std::move(bundleIdentifier)) {}

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return identifier; }
    void activateAllWindows() override {
        ++activations;
        if (onActivate)
            onActivate();
    }

    std::optional<std::string> identifier;
    int activations = 0;
    std::function<void()> onActivate;
};

/// Has `frontmost` in front, or nothing.
class FakeWorkspace : public Workspace {
public:
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmostApplication() const override {
        return frontmost;
    }

    std::shared_ptr<FakeRunningApplication> frontmost;
};

} // namespace glimmerly
