#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string>

namespace glimmerly {

/// The whole content of the file `path`. A link in its place, or anything but a regular file, is an error.
[[nodiscard]] Result<std::string> readFile(const std::filesystem::path& path);

} // namespace glimmerly
