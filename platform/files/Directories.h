#pragma once

#include "base/BundleIdentifier.h"
#include "base/Result.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace glimmerly {

/// `$XDG_DATA_HOME`, else `~/.local/share`; it may not exist yet. A relative value counts as unset, here and
/// below. None without a home directory.
[[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory();

/// `$XDG_CONFIG_HOME`, else `~/.config`; it may not exist yet. None without a home directory.
[[nodiscard]] std::optional<std::filesystem::path> configurationDirectory();

/// Where the configuration of programs is looked for, the most important place first: the one above, then
/// those of `$XDG_CONFIG_DIRS`, else `/etc/xdg`.
[[nodiscard]] std::vector<std::filesystem::path> configurationSearchPath();

/// Where the user's files lie that live for seconds: `$XDG_RUNTIME_DIR/app.glimmerly.Glimmerly`, without that
/// variable `${TMPDIR:-/tmp}/app.glimmerly.Glimmerly-<uid>`. It may not exist yet.
[[nodiscard]] std::filesystem::path temporaryDirectoryLocation();

/// The directory there, made when missing; no other user can enter it. An error when it cannot be made or
/// what stands there is a link or another user's or, in the shared place, open to others.
[[nodiscard]] Result<std::filesystem::path> temporaryDirectory();

/// Makes `path` and what is missing above it, each with mode 0700 whatever the umask. Links on the way are
/// followed; what exists stays as it is.
[[nodiscard]] Result<void> makeDirectories(const std::filesystem::path& path);

/// Makes the directory `path`, whose parent exists, with mode 0700 whatever the umask. One that exists is
/// closed to others; another user's, or a link in its place, is an error.
[[nodiscard]] Result<void> makePrivateDirectory(const std::filesystem::path& path);

} // namespace glimmerly
