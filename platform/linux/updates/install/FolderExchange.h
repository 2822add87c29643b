#pragma once

#include "base/Result.h"

#include <filesystem>

namespace glimmerly {

/// Gives each of two folders the other's name, in one step, and forces that to the disk. An error when the
/// file system cannot.
[[nodiscard]] Result<void> exchangeFolders(const std::filesystem::path& one,
                                           const std::filesystem::path& other);

/// Forces the names in `directory` to the disk.
void forceToDisk(const std::filesystem::path& directory);

} // namespace glimmerly
