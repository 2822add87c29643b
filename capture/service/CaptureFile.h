#pragma once

#include <filesystem>

namespace glimmerly {

/// A new location for one capture: "glimmerly-capture-", an upper-case UUID and ".png" in `directory`, the
/// per-user temporary directory. Creates nothing.
[[nodiscard]] std::filesystem::path makeCaptureFileURL(const std::filesystem::path& directory);

} // namespace glimmerly
