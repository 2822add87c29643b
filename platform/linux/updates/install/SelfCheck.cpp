#include "platform/linux/updates/install/SelfCheck.h"

#include "platform/files/ProcessDescriptor.h"

#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace glimmerly {

namespace {

Result<pid_t> start(const std::filesystem::path& program) {
    std::string path = program.string();
    std::string option = selfCheckOption;
    std::array<char*, 3> arguments{path.data(), option.data(), nullptr};
    pid_t process = 0;
    if (const int error = ::posix_spawn(&process, path.c_str(), nullptr, nullptr, arguments.data(), environ);
        error != 0)
        return failure(Error::posix(error, "Starting " + path));
    return process;
}

/// True once the process has ended; false when that took too long or is not waited for any more.
bool waitForEnd(pid_t process, const std::stop_token& stop, std::chrono::milliseconds patience) {
    const FileDescriptor ended = openProcess(process);
    const FileDescriptor stopped(::eventfd(0, EFD_CLOEXEC));
    if (!ended || !stopped)
        return false;
    const std::stop_callback wakeUp(stop, [&] { (void)::eventfd_write(stopped.get(), 1); });
    std::array events{pollfd{ended.get(), POLLIN, 0}, pollfd{stopped.get(), POLLIN, 0}};
    int count = 0;
    do {
        count = ::poll(events.data(), events.size(), static_cast<int>(patience.count()));
    } while (count < 0 && errno == EINTR);
    return (events[0].revents & POLLIN) != 0;
}

} // namespace

Result<void> runSelfCheck(const std::filesystem::path& program, const std::stop_token& stop,
                          std::chrono::milliseconds patience) {
    const auto process = start(program);
    if (!process)
        return failure(process.error());
    const bool hasEnded = waitForEnd(*process, stop, patience);
    if (!hasEnded)
        ::kill(*process, SIGKILL);
    int status = 0;
    while (::waitpid(*process, &status, 0) < 0 && errno == EINTR) {
    }
    if (!hasEnded)
        return failure(
            Error::posix(stop.stop_requested() ? ECANCELED : ETIMEDOUT, "Checking " + program.string()));
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return failure(
            Error("GlimmerlyUpdate", 5,
                  program.string() + " ended with the wait status " + std::to_string(status) + "."));
    return {};
}

} // namespace glimmerly
