#pragma once

#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/ChildProcess.h"
#include "tests/support/desktop/WaitUntil.h"

namespace glimmerly {

/// A D-Bus session bus of the test's own. It ends with this object.
class SessionBus {
public:
    SessionBus() {
        if (!waitUntil([this] { return exists(socket_); }))
            throw std::runtime_error("the bus did not start");
    }

    /// What DBUS_SESSION_BUS_ADDRESS must be.
    [[nodiscard]] std::string address() const { return "unix:path=" + socket_.string(); }

private:
    ScratchDirectory place_;
    std::filesystem::path socket_ = place_.path() / "bus";
    ChildProcess process_{{.command = {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                                       "--address=" + address()}}};
};

} // namespace glimmerly
