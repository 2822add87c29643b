#include "platform/threads/Threads.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

namespace glimmerly {

namespace {

constexpr std::size_t nameCapacity = 16; // the kernel's, with the terminating zero
constexpr int stepBack = 5;              // of niceness

} // namespace

void becomeUtilityThread(const std::string& label) {
    const std::string name = label.substr(label.rfind('.') + 1).substr(0, nameCapacity - 1);
    ::pthread_setname_np(::pthread_self(), name.c_str());
    // On Linux niceness belongs to the thread, not to the process. The main thread's may be other than 0.
    const auto thread = static_cast<id_t>(::gettid());
    ::setpriority(PRIO_PROCESS, thread, ::getpriority(PRIO_PROCESS, thread) + stepBack);
}

std::string threadLabel() {
    if (::gettid() == ::getpid())
        return "main";
    std::array<char, nameCapacity> buffer{};
    ::pthread_getname_np(::pthread_self(), buffer.data(), buffer.size());
    const std::string_view name = buffer.data();
    // A thread that was given no name has its program's.
    const std::string_view program = std::string_view(::program_invocation_short_name);
    if (name.empty() || name == program.substr(0, nameCapacity - 1))
        return "worker";
    return "worker:" + std::string(name);
}

} // namespace glimmerly
