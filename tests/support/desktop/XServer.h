#pragma once

#include "tests/support/desktop/ChildProcess.h"

#include <string>
#include <vector>

namespace glimmerly {

/// An X server of the test's own, on a display number that was free. It ends with this object.
class XServer {
public:
    /// `command` is its program and options; where to announce the display is added.
    explicit XServer(std::vector<std::string> command);

    /// What DISPLAY must be.
    [[nodiscard]] const std::string& display() const { return display_; }
    /// Takes the server away from its clients at once.
    void kill() { process_.reset(); }

private:
    std::optional<ChildProcess> process_;
    std::string display_;
};

/// A display without a screen to look at.
class XvfbServer : public XServer {
public:
    /// `screen` is width × height × depth, as in "1920x1080x24"; `options` are more words of its command
    /// line.
    explicit XvfbServer(const std::string& screen = "1280x1024x24",
                        const std::vector<std::string>& options = {});
};

} // namespace glimmerly
