#pragma once

#include "base/Geometry.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/XServer.h"

namespace glimmerly {

/// A server with several displays, DUMMY0, DUMMY1 … in that order: Xorg with a driver that needs no device.
class DummyXorg {
public:
    /// `displays` are their places on the whole, within 4000 × 3000.
    explicit DummyXorg(const std::vector<PixelRect>& displays);

    [[nodiscard]] XServer& server() { return server_; }
    /// Places the displays anew; others are switched off.
    void arrange(const std::vector<PixelRect>& displays);

private:
    [[nodiscard]] std::vector<std::string> command() const;
    void run(const std::vector<std::string>& command) const;

    ScratchDirectory place_;
    XServer server_;
    std::size_t outputs_ = 0; ///< in use
    int modes_ = 0;           ///< made so far
};

} // namespace glimmerly
