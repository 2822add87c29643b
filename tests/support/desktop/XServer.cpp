#include "tests/support/desktop/XServer.h"

#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace glimmerly {

namespace {

std::vector<std::string> xvfbCommand(const std::string& screen, const std::vector<std::string>& options) {
    std::vector<std::string> words{"Xvfb", "-screen", "0", screen};
    words.insert(words.end(), options.begin(), options.end());
    return words;
}

/// What the server writes when it is ready; empty when it ends or takes longer than 20 seconds.
std::string readLine(int fd) {
    std::string line;
    pollfd waiting{fd, POLLIN, 0};
    char byte = 0;
    while (::poll(&waiting, 1, 20'000) > 0 && ::read(fd, &byte, 1) == 1 && byte != '\n')
        line += byte;
    return byte == '\n' ? line : std::string();
}

} // namespace

XServer::XServer(std::vector<std::string> command) {
    int announcement[2];
    if (::pipe(announcement) != 0)
        throw std::runtime_error("no pipe for " + command.front());
    command.insert(command.end(),
                   {"-displayfd", std::to_string(announcement[1]), "-noreset", "-nolisten", "tcp"});
    process_.emplace(ChildProcess::Options{.command = command, .beforeExec = [fd = announcement[0]] {
                                               ::close(fd);
                                               ::prctl(PR_SET_PDEATHSIG, SIGTERM); // to take its lock away
                                           }});
    ::close(announcement[1]);
    display_ = ":" + readLine(announcement[0]);
    ::close(announcement[0]);
    if (display_.size() < 2)
        throw std::runtime_error(command.front() + " did not start");
}

XvfbServer::XvfbServer(const std::string& screen, const std::vector<std::string>& options)
    : XServer(xvfbCommand(screen, options)) {}

} // namespace glimmerly
