#pragma once

#include "base/Geometry.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/XServerProcess.h"

#include <memory>
#include <string>
#include <vector>

namespace glimmerly::e2e {

/// A server with several displays, named DUMMY0, DUMMY1 … in that order: Xorg with a driver that needs no
/// device.
class DummyXorg {
public:
    /// `monitors` are the displays' places on the whole.
    explicit DummyXorg(const std::vector<PixelRect>& monitors);

    [[nodiscard]] XServerProcess& process() { return *server_; }

private:
    void run(const std::vector<std::string>& command) const;

    ScratchDirectory place_;
    std::unique_ptr<XServerProcess> server_;
};

} // namespace glimmerly::e2e
