#include "platform/linux/updates/install/TrialStart.h"

#include "platform/files/ProcessDescriptor.h"
#include "platform/linux/updates/install/FolderExchange.h"
#include "platform/linux/updates/install/UpdateSlot.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace glimmerly {

namespace {

/// False when there is nothing to put back any more.
bool putOlderVersionBack(const InstalledFolder& installed) {
    // Whoever installed this version may still run, and take it back itself.
    auto slot = UpdateSlot::claim(installed.slot(), UpdateSlot::WhenHeld::wait);
    if (!slot || !installed.keepsOlderVersion())
        return false;
    slot->keep();
    if (installed.replaceability() != Replaceability::replaceable)
        return false; // what the user has put there since would be lost
    if (!exchangeFolders(installed.path(), installed.otherVersion()))
        return false;
    std::error_code untold;
    std::filesystem::rename(installed.otherVersion(), installed.failedVersion(), untold);
    return true;
}

[[noreturn]] void watch(const FileDescriptor& process, const InstalledFolder& installed) {
    pollfd ended{process.get(), POLLIN, 0};
    while (::poll(&ended, 1, -1) < 0 && errno == EINTR) {
    }
    const std::string program = installed.executable();
    if (putOlderVersionBack(installed))
        ::execl(program.c_str(), program.c_str(), nullptr);
    ::_exit(1);
}

} // namespace

void TrialStart::begin() {
    if (!installed_.keepsOlderVersion())
        return;
    const FileDescriptor self = openProcess(::getpid());
    if (!self)
        return;
    watcher_ = ::fork();
    if (watcher_ == 0)
        watch(self, installed_);
}

void TrialStart::end() {
    const pid_t watcher = std::exchange(watcher_, 0);
    if (watcher <= 0)
        return;
    ::kill(watcher, SIGKILL);
    ::waitpid(watcher, nullptr, 0);
}

} // namespace glimmerly
