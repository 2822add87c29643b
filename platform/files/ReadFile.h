#pragma once

#include "base/Result.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace glimmerly {

/// The whole content of the file `path`. A link in its place, anything but a regular file, or one of more
/// than `largest` bytes is an error.
[[nodiscard]] Result<std::string> readFile(const std::filesystem::path& path,
                                           std::size_t largest = std::size_t{64} << 20);

/// The same for a file of another program, which may be a link.
[[nodiscard]] Result<std::string> readForeignFile(const std::filesystem::path& path, std::size_t largest);

} // namespace glimmerly
