#pragma once

#include <filesystem>
#include <string>

namespace glimmerly {

/// What usage events say of the computer.
struct SystemInfo {
    std::string osVersion;    ///< for people, as "Debian GNU/Linux 12 (bookworm)"
    std::string architecture; ///< the one this program was built for: "x86_64", "arm64"
    /// The same on every start of this computer's system. It cannot be traced back to the identifier that
    /// other programs see.
    std::string machineID;
};

/// Reads the files below `root` that describe the system.
[[nodiscard]] SystemInfo systemInfo(const std::filesystem::path& root = "/");

} // namespace glimmerly
