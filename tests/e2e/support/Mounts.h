#pragma once

#include "tests/support/ScratchDirectory.h"

#include <fmt/format.h>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace glimmerly::e2e {

/// Lets the calling process, which is about to become another program, mount what nobody else sees.
inline void mountForThisProcessOnly() {
    const auto user = geteuid();
    const auto group = getegid();
    if (unshare(CLONE_NEWNS | (user == 0 ? 0 : CLONE_NEWUSER)) != 0)
        _exit(125);
    if (user != 0) {
        writeContent("/proc/self/setgroups", "deny");
        writeContent("/proc/self/uid_map", fmt::format("{0} {0} 1", user));
        writeContent("/proc/self/gid_map", fmt::format("{0} {0} 1", group));
    }
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        _exit(125);
}

} // namespace glimmerly::e2e
