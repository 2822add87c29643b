#pragma once

#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace glimmerly {

/// A D-Bus session bus of the test's own. It ends with this object, and with the thread that started it.
class SessionBus {
public:
    SessionBus() {
        int announcement[2];
        if (::pipe(announcement) != 0)
            throw std::runtime_error("no pipe for the bus");
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            ::close(announcement[0]);
            const std::string option = "--print-address=" + std::to_string(announcement[1]);
            ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nosyslog", option.c_str(),
                     static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(announcement[1]);
        pollfd waiting{announcement[0], POLLIN, 0};
        char byte = 0;
        while (::poll(&waiting, 1, 20'000) > 0 && ::read(announcement[0], &byte, 1) == 1 && byte != '\n')
            address_ += byte;
        ::close(announcement[0]);
        if (byte != '\n')
            throw std::runtime_error("the bus did not start");
    }
    ~SessionBus() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// What DBUS_SESSION_BUS_ADDRESS must be.
    [[nodiscard]] const std::string& address() const { return address_; }

private:
    pid_t process_ = 0;
    std::string address_;
};

} // namespace glimmerly
