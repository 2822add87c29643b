#pragma once

#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// An X server of the test's own, without a screen to look at, on a display number that was free. It ends
/// with this object, and with the thread that started it.
class XvfbServer {
public:
    /// `screen` is width × height × depth, as in "1920x1080x24"; `options` are more words of its command
    /// line.
    explicit XvfbServer(const std::string& screen = "1280x1024x24",
                        const std::vector<std::string>& options = {}) {
        int announcement[2];
        if (::pipe(announcement) != 0)
            throw std::runtime_error("no pipe for Xvfb");
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            ::close(announcement[0]);
            const std::string fd = std::to_string(announcement[1]);
            std::vector<std::string> words{"Xvfb", "-displayfd", fd,          "-screen", "0",
                                           screen, "-noreset",   "-nolisten", "tcp"};
            words.insert(words.end(), options.begin(), options.end());
            std::vector<char*> arguments;
            for (auto& word : words)
                arguments.push_back(word.data());
            arguments.push_back(nullptr);
            ::execvp(arguments[0], arguments.data());
            ::_exit(127);
        }
        ::close(announcement[1]);
        display_ = ":" + readLine(announcement[0]);
        ::close(announcement[0]);
        if (display_.size() < 2) {
            kill();
            throw std::runtime_error("Xvfb did not start");
        }
    }
    ~XvfbServer() { kill(); }
    XvfbServer(const XvfbServer&) = delete;
    XvfbServer& operator=(const XvfbServer&) = delete;

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
