#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// An X server of the test's own, on a display number that was free. It ends with this object, and with the
/// thread that started it.
class XServerProcess {
public:
    /// `command` is its program and options; where to announce the display is added.
    explicit XServerProcess(std::vector<std::string> command) {
        int announcement[2];
        if (::pipe(announcement) != 0)
            throw std::runtime_error("no pipe for " + command.front());
        command.insert(command.end(),
                       {"-displayfd", std::to_string(announcement[1]), "-noreset", "-nolisten", "tcp"});
        process_ = ::fork();
        if (process_ == 0) {
            ::close(announcement[0]);
            become(command);
        }
        ::close(announcement[1]);
        display_ = ":" + readLine(announcement[0]);
        ::close(announcement[0]);
        if (display_.size() < 2) {
            kill();
            throw std::runtime_error(command.front() + " did not start");
        }
    }
    ~XServerProcess() { kill(); }
    XServerProcess(const XServerProcess&) = delete;
    XServerProcess& operator=(const XServerProcess&) = delete;

    /// What DISPLAY must be.
    [[nodiscard]] const std::string& display() const { return display_; }

    /// Takes the server away from its clients at once.
    void kill() {
        if (process_ <= 0)
            return;
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
        process_ = 0;
    }

private:
    /// Xvfb and Xorg tell standard error about themselves even when all is well.
    [[noreturn]] static void become(std::vector<std::string>& command) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        std::vector<char*> arguments;
        for (auto& word : command)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }

    /// What the server writes when it is ready; empty when it ends or takes longer than 20 seconds.
    static std::string readLine(int fd) {
        std::string line;
        pollfd waiting{fd, POLLIN, 0};
        char byte = 0;
        while (::poll(&waiting, 1, 20'000) > 0 && ::read(fd, &byte, 1) == 1 && byte != '\n')
            line += byte;
        return byte == '\n' ? line : std::string();
    }

    pid_t process_ = 0;
    std::string display_;
};

} // namespace glimmerly
